#include "tools/po_file.h"

#include "tools/problems.h"

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gettext-po.h>
#include <map>
#include <memory>
#include <string_view>

/* Where each context stands; entries of one context in their order. */
using ContextLines = std::multimap<std::string, std::size_t>;

/* Module state: the library hands its callbacks no argument of ours. */
static Problems *reading_problems;
static std::string reading_file;

#ifdef __SANITIZE_ADDRESS__
/* The library keeps what it read for as long as the program runs. */
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libgettextpo\n";
}

extern "C" const char *__lsan_default_options()
{
    return "print_suppressions=0";
}
#endif

static void report(int severity, po_message_t, const char *filename, std::size_t line, std::size_t, int,
                   const char *text)
{
    std::string reason = text;
    reason.erase(reason.find_last_not_of('\n') + 1);
    const bool has_line = filename != nullptr && line != static_cast<std::size_t>(-1);
    const std::string place = has_line ? place_of(filename, line) : reading_file;
    if (severity == PO_SEVERITY_WARNING)
        reading_problems->warning(place, reason);
    else
        reading_problems->error(place, reason);
    /* The library must not go on, and unwinding through its C code is not safe everywhere. */
    if (severity == PO_SEVERITY_FATAL_ERROR)
        std::exit(EXIT_FAILURE);
}

/* A message entered twice: what the library says of the first one has no place. */
static void report_pair(int severity, po_message_t message, const char *filename, std::size_t line, std::size_t column,
                        int multiline, const char *text, po_message_t, const char *, std::size_t, std::size_t, int,
                        const char *)
{
    report(severity, message, filename, line, column, multiline, text);
}

static constexpr po_xerror_handler handler = {report, report_pair};

/* Whether what follows a backslash stands for the character NUL: up to three octal or any hexadecimal digits. */
static bool is_nul_escape(std::string_view code)
{
    const bool hexadecimal = code.starts_with('x');
    const std::string_view digits = hexadecimal ? code.substr(1) : code.substr(0, 3);
    unsigned value = 1;
    std::from_chars(digits.begin(), digits.end(), value, hexadecimal ? 16 : 8);
    return value == 0;
}

static bool has_nul(std::string_view line)
{
    if (line.find('\0') != std::string_view::npos)
        return true;
    for (std::size_t i = line.find('\\'); i < line.size(); i = line.find('\\', i + 2)) {
        if (is_nul_escape(line.substr(i + 1)))
            return true;
    }
    return false;
}

/* The lines of each context. The library tells no line of a message, and ends a text at a NUL: refused here. */
static ContextLines scan_lines(const std::filesystem::path &path, std::istream &in, Problems &problems)
{
    constexpr std::string_view keyword = "msgctxt \"";
    ContextLines lines;
    std::string line;
    for (std::size_t number = 1; std::getline(in, line); ++number) {
        if (line.starts_with(keyword))
            lines.emplace(line.substr(keyword.size(), line.find('"', keyword.size()) - keyword.size()), number);
        if (!line.starts_with('#') && has_nul(line))
            problems.error(place_of(path, number), "a text cannot hold the character NUL");
    }
    return lines;
}

/* The place of the first entry of `context` that was not asked for yet. */
static std::string take_place(ContextLines &lines, const std::filesystem::path &path, const std::string &context)
{
    const auto line = lines.lower_bound(context);
    if (line == lines.end() || line->first != context)
        return path.string();
    return place_of(path, lines.extract(line).mapped());
}

static std::string string_or_empty(const char *text)
{
    return text == nullptr ? "" : text;
}

std::vector<PoEntry> read_po_file(const std::filesystem::path &path, Problems &problems)
{
    std::vector<PoEntry> entries;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        problems.error(path, std::string("cannot be opened: ") + std::strerror(errno));
        return entries;
    }
    ContextLines lines = scan_lines(path, in, problems);
    reading_problems = &problems;
    reading_file = path.string();
    const std::unique_ptr<po_file, decltype(&po_file_free)> file(po_file_read(path.c_str(), &handler), po_file_free);
    if (!file)
        return entries;
    const std::unique_ptr<struct po_message_iterator, decltype(&po_message_iterator_free)> iterator(
        po_message_iterator(file.get(), nullptr), po_message_iterator_free);
    while (po_message_t message = po_next_message(iterator.get())) {
        const std::string context = string_or_empty(po_message_msgctxt(message));
        const std::string id = string_or_empty(po_message_msgid(message));
        const bool header = context.empty() && id.empty();
        if (header || po_message_is_obsolete(message) != 0)
            continue;
        const std::string place = take_place(lines, path, context);
        const bool fuzzy = po_message_is_fuzzy(message) != 0;
        entries.push_back({context, id, string_or_empty(po_message_msgstr(message)), fuzzy, place});
    }
    if (entries.empty())
        problems.error(path, "holds no texts");
    return entries;
}
