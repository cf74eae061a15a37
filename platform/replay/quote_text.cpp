#include "platform/replay/quote_text.h"

#include "platform/escaped_text.h"

std::string quote_text(std::string_view text)
{
    std::string escaped(escape_text({}, text) + 1, '\0');
    escape_text(escaped, text);
    escaped.back() = '"';
    return '"' + escaped;
}
