/* The language packs: the text of the current one by number, and the languages by id, nvram code and file. */
#pragma once

constexpr int TEXT_COUNT = 150;           // texts of a pack
constexpr int LANGUAGE_PACK_BYTES = 8344; // bytes of a pack's texts, terminators included

enum LanguageId {
    LANGUAGE_EN,
    LANGUAGE_ES,
    LANGUAGE_FR,
    LANGUAGE_DE,
    LANGUAGE_IT,
    LANGUAGE_DU, // Dutch
    LANGUAGE_TC, // Traditional Chinese
    LANGUAGE_JP, // Japanese
    LANGUAGE_KR, // Korean
};

/* Where each text of the current pack begins; null when none is loaded. Other programs know it by this name. */
extern const char *ml_local_str[TEXT_COUNT];

/* Loads the pack of language `id` (a LanguageId). A failure is reported on standard output: an unknown id, a missing
 * file or a file without byte-order mark leave the language as it was; a pack with too few texts becomes current and
 * empty. */
void load_language(int id);

/* Text number `index` of the current pack; "" when there is none. Valid until the next load_language. Never null. */
const char *ml_str(int index);

/* LanguageId of the pack last loaded, LANGUAGE_EN at start. */
int get_current_language();

/* Whether the current language is written in the tall wide glyphs (Traditional Chinese, Japanese, Korean). */
bool is_wide_language();

/* The id of an nvram code ("en"); 0 for null and unknown codes. */
int get_lang_id_by_nvram(const char *code);

/* The id that the settings store names. */
int get_stored_language();

/* Makes `id` the language of the settings store, of the panel and of the router's web pages. */
void store_language(int id);

/* The nvram code of an id; "en" when unknown. */
const char *get_lang_nvram_value_by_id(int id);

/* The pack's file name of an id; "unknown" when unknown. */
const char *get_lang_file_by_id(int id);
