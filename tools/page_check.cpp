#include "tools/page_check.h"

#include "gfx/widget.h"
#include "tools/charset.h"
#include "tools/composition.h"
#include "tools/panel_text.h"
#include "tools/problems.h"
#include "tools/text_rooms.h"
#include "tools/trial_panel.h"

#include <algorithm>
#include <span>

static constexpr std::u32string_view NEVER_FIRST = U",.:;!?)]}”»、。，．：；！？）」』】〉》";

namespace
{
/* One text that fills pages. */
struct PageText {
    const Composition &text;
    const PageLayout &layout;
    const TrialPanel &panel;
    Problems &problems;
};
} // namespace

static std::string page_place(const PageText &page, std::size_t row)
{
    const auto page_rows = static_cast<std::size_t>(page.layout.page_rows);
    return "text " + page.text.numbers + ", page " + std::to_string(row / page_rows + 1) + ", row " +
           std::to_string(row % page_rows + 1);
}

static std::string in_quotes(const std::string &text)
{
    return '"' + visible_text(text) + '"';
}

/* What keeps hidden words off the panel, where the translator can see it. */
static std::string hiding_cause(const PageText &page, const std::string &hidden)
{
    const std::string word = hidden.substr(0, hidden.find_first_of(" \n\f"));
    const int width = page.panel.width(word);
    if (page.panel.has_blanks() && width > ROW_RIGHT_BESIDE_BAR)
        return ", whose first word is " + std::to_string(width) + " pixels wide: there is room for " +
               std::to_string(ROW_RIGHT_BESIDE_BAR);
    if (page.layout.rows.size() == MAX_PAGE_LINES)
        return ": there is room for " + std::to_string(MAX_PAGE_LINES) + " rows";
    return "";
}

static void check_row(const PageText &page, std::size_t number)
{
    const PageRow &row = page.layout.rows[number];
    const std::string place = page_place(page, number);
    if (!row.hidden.empty())
        page.problems.error(page.text.place, place + ": nothing shows what follows, " + in_quotes(row.hidden) +
                                                 hiding_cause(page, row.hidden));
    const std::u32string text = decode_utf8(row.text).value_or(U"");
    if (!text.empty() && NEVER_FIRST.find(text[0]) != std::u32string_view::npos)
        page.problems.warning(page.text.place, place + " begins with punctuation: " + in_quotes(row.text));
}

/* Whether the page that begins with row number `first` holds no other row of text. */
static bool is_lone(const PageText &page, std::size_t first)
{
    const auto rows = std::span(page.layout.rows).subspan(first);
    const auto others = rows.first(std::min<std::size_t>(rows.size(), page.layout.page_rows)).subspan(1);
    return std::ranges::all_of(others, &std::string::empty, &PageRow::text);
}

static void check_page_text(const PageText &page)
{
    const std::size_t rows = page.layout.rows.size();
    const auto page_rows = static_cast<std::size_t>(page.layout.page_rows);
    for (std::size_t row = 0; row < rows; ++row)
        check_row(page, row);
    for (std::size_t row = 0; rows > page_rows && row < rows; row += page_rows) {
        if (is_lone(page, row))
            page.problems.warning(page.text.place, page_place(page, row) + " stands alone on its page: " +
                                                       in_quotes(page.layout.rows[row].text));
    }
}

void check_pages(const PackTexts &texts, const TrialPanel &panel, Problems &problems)
{
    for (const TextRoom &room : text_rooms()) {
        if (!is_page(room.kind))
            continue;
        for (const Composition &text : compose(room.pattern, texts)) {
            const PageLayout layout = panel.lay_out(text.text, room.kind == RoomKind::PAGE_OVER_LINE);
            check_page_text({text, layout, panel, problems});
        }
    }
}
