/* The pages of the screen "router event". Other programs of the firmware know the table by this name. */
#pragma once

extern int (*const eventHandlers[5])(int action);
