#include "core/actions.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "tests/support/test_root.h"

#include <map>
#include <vector>

/* Texts of letters alone, so that every character of a line is as wide as the next. */
struct MenuCase {
    int language;
    int view_rows, room; // of the view, and characters in a row of it
    int title, bottom_line;
    std::vector<int> labels; // characters
};

/* The glyph loads of measuring a text: its first character's metrics, then each character. */
static int measured(int characters)
{
    return characters == 0 ? 0 : 1 + characters;
}

/* Those of drawing a line: its first character's metrics, its width, and each character twice. */
static int drawn(int characters)
{
    return characters == 0 ? 0 : 1 + measured(characters) + 2 * characters;
}

/* Those of a line in its place, which `room` characters fill, after `redraws` have moved it on. */
static int line_loads(int characters, int room, int redraws)
{
    if (characters <= room)
        return measured(characters) + drawn(characters);
    int loads = measured(characters);
    if (redraws > 0)
        loads += measured(characters - (redraws - 1)); // has its end been in view?
    for (int shown = characters - redraws; shown >= room; shown--)
        loads += measured(shown); // is this much of it too wide?
    return loads + drawn(room);
}

static int menu_loads(const MenuCase &menu, int redraws)
{
    const int hint = 4;                   // up-and-down key, "+", "OK"
    const int heights = 3;                // of title, bottom line and rows
    int loads = heights + measured(hint); // what it leaves of the title's room
    for (const int characters : {hint, menu.title, menu.bottom_line})
        loads += line_loads(characters, menu.room, redraws);
    for (int row = 0; row < menu.view_rows; row++)
        loads += line_loads(menu.labels[row], menu.room, redraws);
    return loads;
}

static int count_loads(const std::string &messages)
{
    static constexpr std::string_view MISS = "no bitmap for ";
    int count = 0;
    for (size_t at = messages.find(MISS); at != std::string::npos; at = messages.find(MISS, at + 1))
        count++;
    return count;
}

static void load_texts(const TestRoot &root, const MenuCase &menu)
{
    std::map<int, std::string> texts = {{TEXT_MENU_TITLE, std::string(menu.title, 'T')},
                                        {TEXT_MENU_BOTTOM_LINE, std::string(menu.bottom_line, 'B')},
                                        {TEXT_OK_KEY, "OK"}};
    static constexpr TextId label_texts[] = {TEXT_SECURITY_TITLE, TEXT_WIRELESS_TITLE, TEXT_ROUTER_INFO_TITLE,
                                             TEXT_HELP_TITLE, TEXT_POWER_SAVE_ITEM};
    for (size_t i = 0; i < std::size(label_texts); i++)
        texts[label_texts[i]] = std::string(menu.labels[i], static_cast<char>('a' + i));
    std::string pack = "\xEF\xBB\xBF";
    for (int text = 0; text < TEXT_COUNT; text++)
        pack += texts[text] + '\0';
    root.write(std::string("/sbin/lcd_ml/_auto_lang_/") + get_lang_file_by_id(menu.language), pack);
    load_language(menu.language);
}

/* No glyph has a file: each load leaves a line. A walk over a text that nobody needs costs a router's slow flash three
 * system calls a character. */
TEST(LoadCount, ARedrawOfTheMenuLoadsWhatItsStepsNeed)
{
    const MenuCase cases[] = {
        {7, 2, 9, 4, 5, {12, 8, 30, 6, 7}},
        {0, 3, 19, 9, 18, {16, 14, 18, 13, 20}}, // the fifth is out of view
        {0, 3, 19, 9, 18, {22, 14, 23, 13, 30}}, // two marquees
        {0, 3, 19, 1, 1, {0, 1, 0, 1, 1}},
    };
    for (const MenuCase &menu : cases) {
        SCOPED_TRACE(&menu - cases);
        TestRoot root;
        printed([&] { load_texts(root, menu); });
        /* Coming from itself the menu opens on its first item, whatever an earlier test has left. */
        printed([] { switch_screen("menu"); });
        for (int redraws = 0; redraws <= 2; redraws++) {
            const std::string messages = printed([&] {
                if (redraws == 0)
                    switch_screen("menu");
                else
                    current_screen->handler(nullptr, ACTION_TICK);
            });
            EXPECT_EQ(count_loads(messages), menu_loads(menu, redraws)) << "after " << redraws << " redraws";
            tick_count += 6;
        }
    }
}
