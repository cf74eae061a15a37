/* Texts as the screens put them together. */
#pragma once

#include "tools/language_pack.h"

struct Composition {
    std::string text;
    std::string numbers; // of the texts it is made of: "32, 33"
    std::string place;   // where the first of them was written

    /* The text as messages name it: its numbers, and itself with its control characters made visible. */
    std::string shown() const;
};

/* Everything that a pattern stands for: "{14-25} 30" is each of the texts 14 to 25 followed by " 30". */
std::vector<Composition> compose(std::string_view pattern, const PackTexts &texts);
