#include "lang/language.h"

#include "tests/support/test_root.h"

static const std::string MARK = "\xEF\xBB\xBF";
static const char *const ENGLISH = "/sbin/lcd_ml/_auto_lang_/_auto_language_en";

/* `count` texts "t0", "t1", ...; the last without a terminator. */
static std::string pack(int count)
{
    std::string text = MARK;
    for (int i = 0; i < count; i++)
        text += (i ? std::string(1, '\0') : "") + "t" + std::to_string(i);
    return text;
}

TEST(Language, LoadsAllTexts)
{
    const TestRoot root;
    root.write(ENGLISH, pack(150));
    EXPECT_EQ(printed([] { load_language(0); }), "");
    EXPECT_STREQ(ml_str(0), "t0");
    EXPECT_STREQ(ml_str(149), "t149");
    EXPECT_STREQ(ml_str(150), "");
    EXPECT_STREQ(ml_str(-1), "");
}

TEST(Language, AFullBlockEndsItsLastText)
{
    const TestRoot root;
    std::string text = pack(150);
    text.resize(MARK.size() + LANGUAGE_PACK_BYTES + 100, 'x');
    root.write(ENGLISH, text);
    load_language(0);
    EXPECT_EQ(ml_str(149) + strlen(ml_str(149)), ml_str(0) + LANGUAGE_PACK_BYTES);
    root.write(ENGLISH, MARK + std::string(LANGUAGE_PACK_BYTES - 149, 'a') + std::string(149, '\0'));
    load_language(0);
    EXPECT_STREQ(ml_str(149), "");
}

TEST(Language, RefusesBadPacks)
{
    struct BadPack {
        const char *what;
        std::string bytes, message;
        bool kept; // the former texts stay
    };
    const std::string path = ENGLISH;
    const BadPack cases[] = {
        {"148 terminators", pack(149), "error load language en, string number not enough\n", false},
        {"no mark", "no mark", "lcd load_language, not utf-8 format file " + path + "\n", true},
        {"cut mark", "\xEF\xBB", "lcd load_language, not utf-8 format file " + path + "\n", true},
        {"empty", "", "lcd load_language, not utf-8 format file " + path + "\n", true},
        {"terminators behind the block", MARK + std::string(LANGUAGE_PACK_BYTES, 'a') + std::string(149, '\0'),
         "error load language en, string number not enough\n", false},
    };
    for (const BadPack &test : cases) {
        const TestRoot root;
        root.write(ENGLISH, pack(150));
        load_language(0);
        root.write(ENGLISH, test.bytes);
        EXPECT_EQ(printed([] { load_language(0); }), test.message) << test.what;
        EXPECT_STREQ(ml_str(7), test.kept ? "t7" : "") << test.what;
    }
}

TEST(Language, KeepsItsTextsWhenTheNextOneIsMissing)
{
    const TestRoot root;
    root.write(ENGLISH, pack(150));
    load_language(0);
    EXPECT_EQ(printed([] { load_language(8); }),
              "lcd load_language, failed to open file /sbin/lcd_ml/_auto_lang_/_auto_language_kr for read\n");
    EXPECT_EQ(printed([] { load_language(9); }), "lcd load_language, invalid language id 9\n");
    EXPECT_EQ(printed([] { load_language(-1); }), "lcd load_language, invalid language id -1\n");
    EXPECT_EQ(get_current_language(), 0);
    EXPECT_STREQ(ml_str(3), "t3");
}

TEST(Language, CodesFilesAndIds)
{
    const char *const codes[] = {"en", "es", "fr", "de", "it", "du", "tc", "jp", "kr"};
    for (int id = 0; id < 9; id++) {
        EXPECT_EQ(get_lang_id_by_nvram(codes[id]), id);
        EXPECT_STREQ(get_lang_nvram_value_by_id(id), codes[id]);
        EXPECT_EQ(get_lang_file_by_id(id), std::string("_auto_language_") + codes[id]);
    }
    for (const char *unknown : {"EN", "", "e", "eng"})
        EXPECT_EQ(get_lang_id_by_nvram(unknown), 0) << unknown;
    EXPECT_EQ(get_lang_id_by_nvram(nullptr), 0);
    EXPECT_STREQ(get_lang_nvram_value_by_id(42), "en");
    EXPECT_STREQ(get_lang_file_by_id(-1), "unknown");
}
