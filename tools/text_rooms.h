/* Where the texts stand and the room that they have there. */
#pragma once

#include <span>

enum class RoomKind {
    FIXED,          // one line that is not drawn, or covers something, when it is wider
    SCROLLS,        // one line that scrolls when it is wider
    TITLE,          // one line; a TAB sends what follows to the right end, and then both parts must fit
    PAGE,           // wrapped into lines, page by page
    PAGE_OVER_LINE, // the same over a bottom line, which takes a row from each page
};

/* Whether texts are wrapped there. */
bool is_page(RoomKind kind);

/* Texts as a screen composes them: "{14-25} 30" is each of the texts 14 to 25 with " 30" behind, "{33,34}" either. */
struct TextRoom {
    const char *pattern;
    RoomKind kind;
    int narrow; // pixels; 0: the text does not stand there
    int wide;   // the same in Traditional Chinese, Japanese and Korean
    int bytes;  // what the buffer of its screen or widget holds, without the terminator
};

/* Every text that a pack holds stands in at least one room. */
std::span<const TextRoom> text_rooms();
