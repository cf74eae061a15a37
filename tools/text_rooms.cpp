#include "tools/text_rooms.h"

#include "gfx/frame_buffer.h"
#include "lang/language.h"

static constexpr int LIST_WIDTH = LCD_WIDTH - 1;
static constexpr int SCROLLED_LIST_WIDTH = 117; // beside a scroll bar
static constexpr int VALUE_WIDTH = 72;          // most of a table's row that a value may take
static constexpr int NAME_WIDTH = 74;           // of a row that a usual value leaves
static constexpr int SCROLLED_NAME_WIDTH = 64;  // the same beside a scroll bar

static constexpr int TITLE_BYTES = 127;
static constexpr int SCROLL_BYTES = 299; // no text of one line may be longer
static constexpr int ROW_BYTES = 100;    // a field of a table's row
static constexpr int LINE_BYTES = 99;    // a line that a screen composes for itself

static constexpr int NETWORK_NAME_BYTES = 32;
static constexpr int PASSWORD_BYTES = 63;

static constexpr TextRoom rooms[] = {
    // Titles. Over that of a list that does not fit stands the ok key's name; only the wide languages need it for 65.
    {"{1,3,43,45,47-50,53,61,65,67,72,76,78,80,83,84,96,98,134,136,141-144,148}", RoomKind::TITLE, LCD_WIDTH, LCD_WIDTH,
     TITLE_BYTES},
    {"{50,98}\t\x12+{69}", RoomKind::TITLE, LCD_WIDTH, LCD_WIDTH, TITLE_BYTES},
    {"{65}\t\x12+{69}", RoomKind::TITLE, 0, LCD_WIDTH, TITLE_BYTES},
    {"{68}\t\x12+{69}", RoomKind::TITLE, LCD_WIDTH, LCD_WIDTH, LINE_BYTES},
    {"{32,58,95}\t{33,34}", RoomKind::TITLE, LCD_WIDTH, LCD_WIDTH, TITLE_BYTES},
    {"{66}\t {33,34}", RoomKind::TITLE, LCD_WIDTH, LCD_WIDTH, TITLE_BYTES},
    {"{132}\t2:00", RoomKind::TITLE, LCD_WIDTH, LCD_WIDTH, TITLE_BYTES},

    // Bottom lines, and the lines of the home screen.
    {"{28,44,46,70,75,77}", RoomKind::SCROLLS, LCD_WIDTH, LCD_WIDTH, SCROLL_BYTES},
    {"{73}: 1", RoomKind::SCROLLS, LCD_WIDTH, LCD_WIDTH, LINE_BYTES},
    {"{74}: 253", RoomKind::SCROLLS, LCD_WIDTH, LCD_WIDTH, LINE_BYTES},

    // Items of lists. A list of three has a scroll bar in the wide languages alone.
    {"{47-50,53,57,65-67,99-106,108}", RoomKind::SCROLLS, SCROLLED_LIST_WIDTH, SCROLLED_LIST_WIDTH, SCROLL_BYTES},
    {"{31,35,36,42,43,61,95,96,116-118,132}", RoomKind::SCROLLS, LIST_WIDTH, SCROLLED_LIST_WIDTH, SCROLL_BYTES},
    {"{59,60}", RoomKind::SCROLLS, LIST_WIDTH, LIST_WIDTH, SCROLL_BYTES},

    // Rows of tables, with the longest value that is usual; a network's name and password may be much longer.
    {"{85,86}: 192.168.100.100", RoomKind::SCROLLS, LIST_WIDTH, SCROLLED_LIST_WIDTH, ROW_BYTES},
    {"{87}: {88-94}", RoomKind::SCROLLS, LIST_WIDTH, SCROLLED_LIST_WIDTH, ROW_BYTES},
    {"{119}: 153", RoomKind::SCROLLS, LIST_WIDTH, SCROLLED_LIST_WIDTH, ROW_BYTES},
    {"{120}: {122-127}", RoomKind::SCROLLS, LIST_WIDTH, SCROLLED_LIST_WIDTH, ROW_BYTES},
    {"{121}: 20 / 40", RoomKind::SCROLLS, LIST_WIDTH, SCROLLED_LIST_WIDTH, ROW_BYTES},
    {"{29}: ", RoomKind::SCROLLS, LIST_WIDTH, LIST_WIDTH, ROW_BYTES - NETWORK_NAME_BYTES},
    {"{30}: ", RoomKind::SCROLLS, LIST_WIDTH, LIST_WIDTH, ROW_BYTES - PASSWORD_BYTES},
    {"{0}.254", RoomKind::SCROLLS, NAME_WIDTH, SCROLLED_NAME_WIDTH, ROW_BYTES},
    {"4095.999{5}", RoomKind::FIXED, VALUE_WIDTH, VALUE_WIDTH, ROW_BYTES},
    {"9999.9{4,5}B", RoomKind::FIXED, VALUE_WIDTH, VALUE_WIDTH, ROW_BYTES},
    {"999{6}B", RoomKind::FIXED, VALUE_WIDTH, VALUE_WIDTH, ROW_BYTES},

    // The dials: beside the arc of the large one and inside it, inside the download dial and below the upload dial.
    {"{109}", RoomKind::FIXED, 35, 35, SCROLL_BYTES},
    {"{110,111}", RoomKind::FIXED, 34, 34, SCROLL_BYTES},
    {"{112}", RoomKind::FIXED, 84, 81, SCROLL_BYTES},
    {"{113}", RoomKind::FIXED, 54, 54, SCROLL_BYTES},
    {"{114}", RoomKind::FIXED, 40, 40, SCROLL_BYTES},

    // The clock: its digits begin at column 69. Date and marker share the top row of the wide languages, which alone
    // have 145 to 147.
    {"{7-13}", RoomKind::FIXED, 64, 126, SCROLL_BYTES},
    {"{14-25} 30", RoomKind::FIXED, 64, 0, SCROLL_BYTES},
    {"{26,27}", RoomKind::FIXED, 58, 58, SCROLL_BYTES},
    {"{14-25}{146}30{147}\t{26,27}", RoomKind::TITLE, 0, 124, SCROLL_BYTES},
    {"2026{145}", RoomKind::FIXED, 64, 64, SCROLL_BYTES},
    {"{146,147}", RoomKind::SCROLLS, LCD_WIDTH, LCD_WIDTH, SCROLL_BYTES},

    // Pages, and the mark that another one follows, which takes its room from a line of text.
    {"{37,40,41,51,52,54,55,64,79,130,131,138,139,149}", RoomKind::PAGE_OVER_LINE, SCROLLED_LIST_WIDTH,
     SCROLLED_LIST_WIDTH, LANGUAGE_PACK_BYTES},
    {"{38,39,56,62,63,71,81,82,97,128,129,133,135,137}", RoomKind::PAGE, SCROLLED_LIST_WIDTH, SCROLLED_LIST_WIDTH,
     LANGUAGE_PACK_BYTES},
    {"{140}", RoomKind::FIXED, 40, 40, SCROLL_BYTES},
};

bool is_page(RoomKind kind)
{
    return kind == RoomKind::PAGE || kind == RoomKind::PAGE_OVER_LINE;
}

std::span<const TextRoom> text_rooms()
{
    return rooms;
}
