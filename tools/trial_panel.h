/* A panel on which texts are tried: the daemon's own code measures them and lays them out. */
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/* A row of a page as the panel draws it. */
struct PageRow {
    std::string text;
    std::string hidden; // what the text has behind it that no row shows
};

struct PageLayout {
    int page_rows;             // of the screen
    std::vector<PageRow> rows; // page by page
};

class TrialPanel
{
public:
    /* A panel with `pack` as its language `code` and the glyph files in `bitmaps`. There is one at a time, since the
     * daemon's code knows of one only. Throws when it cannot be set up. */
    TrialPanel(const std::string &code, std::string_view pack, const std::filesystem::path &bitmaps);
    ~TrialPanel();
    TrialPanel(const TrialPanel &) = delete;
    TrialPanel &operator=(const TrialPanel &) = delete;

    /* Whether the language is laid out in the taller rows of Traditional Chinese, Japanese and Korean. */
    bool is_wide() const;

    /* Whether the language parts its words by blanks. */
    bool has_blanks() const;

    /* The width of a line of text in pixels. */
    int width(const std::string &text) const;

    /* The pages of a text, below a title, and over a bottom line if it has one. */
    PageLayout lay_out(const std::string &text, bool bottom_line) const;

private:
    TrialPanel();

    std::filesystem::path root_;
};
