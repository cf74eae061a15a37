#include "status/computers.h"

#include "tests/gfx/glyph_root.h"

#include <cstring>

using namespace std::string_literals;

static std::string lease(int host, std::string name)
{
    name.resize(40);
    return std::string(16, '\x11') + "\xC0\xA8\x01" + static_cast<char>(host) + std::string(4, '\x07') + name;
}

static const char *const lists[] = {"/tmp/lcd/network_status/speed/pcs", "/tmp/lcd/network_status/speed/total_pc_data"};

/* The rows built of what the files hold, one after the other. */
static std::string rows(ComputerKind kind)
{
    build_computer_rows(kind);
    std::string text;
    for (const InfoRow *row = computer_rows; *row->label || *row->value || *row->prefix; row++)
        text += std::string(row->label) + row->prefix + row->value + "|";
    return text;
}

TEST(Computers, LooksUpALease)
{
    std::string many;
    for (int i = 0; i < 70; i++)
        many += lease(100 + i, "many");
    const std::string two = lease(6, "six") + lease(7, "seven");
    const struct {
        std::string file;
        int host;
        size_t size;
        const char *name;
    } cases[] = {
        {two, 7, 6, "seven"},
        {two, 7, 1, ""},
        {two, 8, 100, nullptr},
        {two.substr(0, 127), 7, 100, nullptr},
        {many + two, 7, 100, "seven"},
        {lease(7, "first") + two, 7, 100, "first"},
        {lease(7, "0123456789012345678901234567890123456789"), 7, 100, "0123456789012345678901234567890123456789"},
        {lease(255, "broadcast"), 255, 100, nullptr},
        {lease(44, "x"), 300, 100, nullptr},
    };
    const TestRoot root;
    char name[100];
    EXPECT_EQ(lookup_lease_name(7, name, sizeof name), nullptr) << "no file";
    for (const auto &test : cases) {
        root.write("/var/udhcpd.leases", test.file);
        memset(name, '#', sizeof name);
        EXPECT_STREQ(lookup_lease_name(test.host, name, test.size), test.name) << test.host;
        EXPECT_EQ(std::string(name + test.size, std::end(name)), std::string(sizeof name - test.size, '#'));
    }
}

TEST(Computers, ListsTheLinesOfAFile)
{
    std::string lines, all;
    for (int i = 1; i <= 300; i++) {
        lines += std::to_string(i) + " 2048\n";
        if (i <= MAX_COMPUTERS)
            all += "PC." + std::to_string(i) + "  2k|";
    }
    const struct {
        ComputerKind kind;
        std::string lines, listed;
    } cases[] = {
        {COMPUTER_SPEED, lines, all}, // no more than the table holds
        {COMPUTER_SPEED, "7\n8 -5\n9\t2048\n10 x\n11 ", "PC.7  0k|PC.8  0k|PC.9  0k|PC.10  0k|PC.11  0k|"},
        {COMPUTER_SPEED, "0 5\n-3 5\nabc 5\n\n \n300 1572864\n", "PC.300  1.500M|"},
        {COMPUTER_SPEED, "99999999999 99999999999", "PC.2147483647  2047.999M|"},
        {COMPUTER_SPEED, "7 " + std::string(97, '0') + "8 4096\n9 1", "PC.7  0k|PC.8  4k|PC.9  1k|"},
        {COMPUTER_SPEED, "7 2048\0 9\n\0 8 1\n9\0 4096\n"s, "PC.7  2k|PC.9  0k|"},
        {COMPUTER_USAGE, "7 1610612736\n8 0\n9\n10 \n", "PC.7  1.500GB|PC.8  1kB|PC.9  0kB|PC.10  0kB|"},
    };
    const GlyphRoot root;
    EXPECT_EQ(rows(COMPUTER_SPEED), "") << "no file";
    for (const auto &test : cases) {
        root.write(lists[test.kind], test.lines);
        EXPECT_EQ(rows(test.kind), test.listed) << test.lines.substr(0, 80);
    }
}

TEST(Computers, NamesAComputerByItsLease)
{
    const struct {
        std::string name, label; // beside the value "2k" a label has 97 pixels, 82 when it is cut
    } cases[] = {
        {"abc.defghijklmno.", "abc.defghijklm..."},
        {std::string(40, 'w'), std::string(13, 'w') + "..."},
        {"caf\xC3\xA9", "PC.7"},
    };
    const GlyphRoot root;
    root.write(lists[COMPUTER_SPEED], "7 2048\n300 2048\n");
    for (const auto &test : cases) {
        root.write("/var/udhcpd.leases", lease(44, "other") + lease(7, test.name));
        EXPECT_EQ(rows(COMPUTER_SPEED), test.label + "  2k|PC.300  2k|");
    }
    const std::string unit(30, 'M');
    root.use_language(0, {{TEXT_UNIT_MEGA, unit}});
    root.write(lists[COMPUTER_SPEED], "7 1048576\n");
    root.write("/var/udhcpd.leases", lease(7, "desk"));
    EXPECT_EQ(rows(COMPUTER_SPEED), "...  1.000" + unit + "|") << "the mark alone without room";
}
