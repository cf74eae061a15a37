#include "lang/language.h"

#include "core/file.h"
#include "platform/nvram.h"

#include <array>
#include <cstdio>
#include <cstring>

static constexpr const char *PACK_FOLDER = "/sbin/lcd_ml";
static constexpr const char *PACK_SUBFOLDER = "_auto_lang_";
static constexpr const char *PANEL_LANGUAGE_KEY = "language_lcd";
static constexpr const char *WEB_LANGUAGE_KEY = "language";

struct LanguageEntry {
    const char *file;
    const char *nvram_code;
    int id;
};

static const LanguageEntry language_table[] = {
    {"_auto_language_en", "en", LANGUAGE_EN}, {"_auto_language_tc", "tc", LANGUAGE_TC},
    {"_auto_language_jp", "jp", LANGUAGE_JP}, {"_auto_language_kr", "kr", LANGUAGE_KR},
    {"_auto_language_fr", "fr", LANGUAGE_FR}, {"_auto_language_it", "it", LANGUAGE_IT},
    {"_auto_language_es", "es", LANGUAGE_ES}, {"_auto_language_de", "de", LANGUAGE_DE},
    {"_auto_language_du", "du", LANGUAGE_DU},
};

/* The current pack. One byte more than a pack fills ends its last text. */
static char language_text[LANGUAGE_PACK_BYTES + 1];
static int current_language;
const char *ml_local_str[TEXT_COUNT];

static const LanguageEntry *find_language(int id)
{
    for (const LanguageEntry &entry : language_table)
        if (entry.id == id)
            return &entry;
    return nullptr;
}

int get_lang_id_by_nvram(const char *code)
{
    for (const LanguageEntry &entry : language_table)
        if (code && strcmp(entry.nvram_code, code) == 0)
            return entry.id;
    return 0;
}

int get_stored_language()
{
    return get_lang_id_by_nvram(Setting(PANEL_LANGUAGE_KEY).text());
}

const char *get_lang_nvram_value_by_id(int id)
{
    const LanguageEntry *entry = find_language(id);
    return entry ? entry->nvram_code : "en";
}

void store_language(int id)
{
    const char *code = get_lang_nvram_value_by_id(id);
    nvram_set(PANEL_LANGUAGE_KEY, code);
    nvram_set(WEB_LANGUAGE_KEY, code);
    nvram_commit();
}

const char *get_lang_file_by_id(int id)
{
    const LanguageEntry *entry = find_language(id);
    return entry ? entry->file : "unknown";
}

int get_current_language()
{
    return current_language;
}

bool is_wide_language()
{
    return current_language >= LANGUAGE_TC && current_language <= LANGUAGE_KR;
}

const char *ml_str(int index)
{
    if (index < 0 || index >= TEXT_COUNT || !ml_local_str[index])
        return "";
    return ml_local_str[index];
}

/* Points at the texts in the first `length` bytes of language_text. Only terminators of the file itself count. */
static bool split_texts(size_t length)
{
    int count = 0;
    ml_local_str[count++] = language_text;
    for (size_t i = 0; i < length && count < TEXT_COUNT; i++)
        if (language_text[i] == '\0')
            ml_local_str[count++] = language_text + i + 1;
    return count == TEXT_COUNT;
}

void load_language(int id)
{
    if (!find_language(id)) {
        printf("lcd load_language, invalid language id %d\n", id);
        return;
    }
    char path[64];
    snprintf(path, sizeof path, "%s/%s/%s", PACK_FOLDER, PACK_SUBFOLDER, get_lang_file_by_id(id));
    const File pack(path);
    if (!pack) {
        printf("lcd load_language, failed to open file %s for read\n", path);
        return;
    }
    static constexpr std::array<unsigned char, 3> UTF8_MARK = {0xEF, 0xBB, 0xBF};
    std::array<unsigned char, 3> mark = {};
    pack.read_full(mark.data(), mark.size());
    if (mark != UTF8_MARK) {
        printf("lcd load_language, not utf-8 format file %s\n", path);
        return;
    }
    memset(language_text, 0, sizeof language_text);
    if (!split_texts(pack.read_full(language_text, LANGUAGE_PACK_BYTES))) {
        printf("error load language %s, string number not enough\n", get_lang_nvram_value_by_id(id));
        memset(ml_local_str, 0, sizeof ml_local_str);
    }
    current_language = id;
}
