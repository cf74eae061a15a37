/* Language packs: the texts that a pack holds by its NULs are there, and a refused one changes what it should. */
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "lang/language.h"

#include <algorithm>

static constexpr std::string_view MARK = "\xEF\xBB\xBF";

static std::vector<std::string> current_texts()
{
    std::vector<std::string> texts;
    for (int i = -1; i <= TEXT_COUNT; i++)
        texts.push_back(ml_str(i));
    return texts;
}

/* What the texts of `pack` are by its layout. */
static std::vector<std::string> texts_of(std::string_view pack)
{
    const std::string body(pack.substr(MARK.size(), LANGUAGE_PACK_BYTES));
    std::vector<std::string> texts(TEXT_COUNT + 2);
    if (std::ranges::count(body, '\0') < TEXT_COUNT - 1)
        return texts;
    size_t at = 0;
    for (int i = 0; i < TEXT_COUNT; i++) {
        texts[static_cast<size_t>(i) + 1] = body.c_str() + at;
        at = body.find('\0', at) + 1;
    }
    return texts;
}

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(LANGUAGE_EN);
    const int id = in.number(-1, LANGUAGE_KR + 1);
    const std::vector<std::string> before = current_texts();
    const std::string pack = in.rest();
    router.files[std::string("/sbin/lcd_ml/_auto_lang_/") + get_lang_file_by_id(id)] = pack;
    load_language(id);

    const bool known = id >= 0 && id <= LANGUAGE_KR;
    const bool taken = known && pack.starts_with(MARK);
    require(current_texts() == (taken ? texts_of(pack) : before), "the texts are those of the pack in force");
    require(get_current_language() == (taken ? id : LANGUAGE_EN), "the language is that of the pack in force");

    /* The next input finds the made pack again. */
    router.files.clear();
    if (taken)
        load_language(LANGUAGE_EN);
}
