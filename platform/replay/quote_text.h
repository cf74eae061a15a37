/* Texts as scripts and traces write them. */
#pragma once

#include <string>
#include <string_view>

/* `text` escaped and in double quotes. */
std::string quote_text(std::string_view text);
