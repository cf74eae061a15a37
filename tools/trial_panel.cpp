#include "tools/trial_panel.h"

#include "core/actions.h"
#include "gfx/info.h"
#include "gfx/widget.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/replay/replay.h"
#include "tools/output.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace fs = std::filesystem;

static constexpr int FONT = 1;
static constexpr const char *BLANK_LINE = " "; // as high as every title and bottom line

TrialPanel::TrialPanel()
{
    std::string pattern = (fs::temp_directory_path() / "trial-panel-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), "cannot make " + pattern);
    root_ = pattern;
}

TrialPanel::TrialPanel(const std::string &code, std::string_view pack, const fs::path &bitmaps) : TrialPanel()
{
    const fs::path assets = root_ / "sbin/lcd_ml";
    const int language = get_lang_id_by_nvram(code.c_str());
    write_file(assets / "_auto_lang_" / get_lang_file_by_id(language), pack);
    fs::create_directory_symlink(fs::absolute(bitmaps), assets / "_auto_bitmap_");
    if (!replay_open_root(root_))
        throw std::system_error(errno, std::generic_category(), "cannot open " + root_.string());
    load_language(language);
}

TrialPanel::~TrialPanel()
{
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

bool TrialPanel::is_wide() const
{
    return is_wide_language();
}

bool TrialPanel::has_blanks() const
{
    return get_current_language() != LANGUAGE_TC && get_current_language() != LANGUAGE_JP;
}

int TrialPanel::width(const std::string &text) const
{
    return getStringWidth(FONT, text.c_str(), 0);
}

static int rows_of_page(const char *text, const char *bottom_line)
{
    FrameScroll scroll{};
    const WidgetFrame frame = drawWidgetFrame(FONT, BLANK_LINE, bottom_line, &scroll, ACTION_ENTER);
    return visibleRows(frame, lineMetrics(FONT, text));
}

/* The line that begins at `start` as the panel draws it in `width` pixels. Where it ends. */
static std::size_t draw_line(const std::string &text, std::size_t start, int width, std::string &drawn)
{
    std::array<char, LINE_BUFFER_BYTES> line{};
    /* What a form feed begins is never drawn: it fills its page up. */
    if (text[start] == '\f')
        return start;
    const int consumed = fitLine(FONT, text.c_str() + start, line.data(), width);
    drawn = line.data();
    return start + static_cast<std::size_t>(consumed);
}

/* What is in the text from `start` to `end`, less the breaks and blanks around it. */
static std::string words_between(const std::string &text, std::size_t start, std::size_t end)
{
    constexpr const char *blanks = " \r\n\f";
    const std::string part = start < end ? text.substr(start, end - start) : "";
    const std::size_t first = part.find_first_not_of(blanks);
    return first == std::string::npos ? "" : part.substr(first, part.find_last_not_of(blanks) + 1 - first);
}

PageLayout TrialPanel::lay_out(const std::string &text, bool bottom_line) const
{
    const char *const bottom = bottom_line ? BLANK_LINE : nullptr;
    WidgetState state{};
    drawInfo(FONT, BLANK_LINE, bottom, text.c_str(), &state, ACTION_ENTER);

    PageLayout layout = {rows_of_page(text.c_str(), bottom), {}};
    const int right_edge = state.lineCount > layout.page_rows ? ROW_RIGHT_BESIDE_BAR : ROW_RIGHT;
    std::vector<std::size_t> starts(state.lineStart, state.lineStart + state.lineCount);
    starts.push_back(text.size());
    for (int i = 0; i < state.lineCount; ++i) {
        const bool more = (i + 1) % layout.page_rows == 0 && i + 1 < state.lineCount;
        PageRow row{};
        const std::size_t end =
            draw_line(text, starts[i], right_edge - (more ? width(ml_str(TEXT_MORE)) : 0), row.text);
        row.hidden = words_between(text, end, starts[i + 1]);
        layout.rows.push_back(row);
    }
    if (layout.rows.empty())
        layout.rows.push_back({"", words_between(text, 0, text.size())});
    return layout;
}
