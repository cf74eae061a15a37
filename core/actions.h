/* What a screen can be told: the action codes that handlers receive, and the ids of the router's events. */
#pragma once

enum Action {
    ACTION_ENTER = 0, // the screen is being entered
    ACTION_TICK = 1,  // every pass of the main loop without another action
    ACTION_UP = 2,
    ACTION_DOWN = 3,
    ACTION_LEFT = 4,
    ACTION_RIGHT = 5,
    ACTION_OK = 6,
    ACTION_MENU = 7,
    ACTION_EVENT = 8, // a router event: get_lcd_event_id tells which
    ACTION_NONE = 9,  // no action; handlers ignore it and all above
};

enum EventId {
    EVENT_LOST_LINK = 0,
    EVENT_LOST_INTERNET = 1,
    EVENT_RESTORE_INTERNET = 2,
    EVENT_SAVE_CONFIG_START = 3,
    EVENT_SAVE_CONFIG_END = 4,
    EVENT_SETUP_WIZARD_START = 5,
    EVENT_SETUP_WIZARD_END = 6,
    EVENT_INFO = 7,
    EVENT_NONE = 8,
};
