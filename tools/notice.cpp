#include "tools/notice.h"

#include "tools/problems.h"

#include <fstream>
#include <iterator>
#include <optional>

namespace fs = std::filesystem;

static constexpr const char *INTRODUCTION =
    "Notice for the glyph files of the front panel\n"
    "\n"
    "The glyphs were converted at build time from bitmap fonts of these Debian packages.\n"
    "Their licences follow.\n";

/* What the licence of a font under the GPL asks of those who pass its glyphs on. */
static constexpr const char *CHINESE_PACKAGE = "xfonts-wqy";
static constexpr const char *CHINESE_SOURCE =
    "\n"
    "Glyphs of Chinese characters were taken from xfonts-wqy, which is under the GNU General Public\n"
    "License with a font exception. Whoever receives them may have the source of the font, the Debian\n"
    "source package xfonts-wqy, and of the program panel-make-glyphs that converted them, from whoever\n"
    "passed the glyphs on.\n";

struct Document {
    const char *package;
    const char *file;
};

/* Notices that a package's list of copyrights does not repeat. */
static constexpr Document further_documents[] = {
    {"xfonts-efont-unicode", "README.baekmuk"},
    {"xfonts-efont-unicode", "README.shinonome"},
};

static void add_document(std::string &notice, const fs::path &documents, const Document &document, Problems &problems)
{
    const fs::path path = documents / document.package / document.file;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        problems.error(path, std::string("missing; the Debian package ") + document.package + " brings it");
    notice += std::string("\n==== ") + document.package + ", " + document.file + " ====\n\n";
    notice.append(std::istreambuf_iterator<char>(in), {});
}

std::string notice_text(const std::set<std::string> &packages, const fs::path &documents, Problems &problems)
{
    std::string notice = INTRODUCTION;
    if (packages.contains(CHINESE_PACKAGE))
        notice += CHINESE_SOURCE;
    for (const std::string &package : packages) {
        add_document(notice, documents, {package.c_str(), "copyright"}, problems);
        for (const Document &document : further_documents) {
            if (document.package == package)
                add_document(notice, documents, document, problems);
        }
    }
    return notice;
}
