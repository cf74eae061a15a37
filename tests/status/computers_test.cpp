#include "status/computers.h"

#include "tests/status/traffic_root.h"

#include <algorithm>
#include <cstring>
#include <random>

using namespace std::string_literals;

static std::string lease(int host, std::string name)
{
    name.resize(40);
    return std::string(16, '\x11') + "\xC0\xA8\x01" + static_cast<char>(host) + std::string(4, '\x07') + name;
}

static std::string random_bytes(std::mt19937 &random, size_t size)
{
    std::string bytes(size, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

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
    struct LeaseCase {
        std::string file;
        int host;
        size_t size;
        const char *name;
    };
    const std::string full(40, 'n');
    const std::string two = lease(6, "six") + lease(7, "seven");
    const LeaseCase cases[] = {
        {two, 7, 100, "seven"},
        {two, 7, 6, "seven"},
        {two, 7, 5, "seve"},
        {two, 7, 1, ""},
        {two, 7, 0, nullptr},
        {two, 8, 100, nullptr},
        {two.substr(0, 127), 7, 100, nullptr},
        {two.substr(1), 6, 100, nullptr},
        {"", 7, 100, nullptr},
        {lease(7, full) + two, 7, 100, full.c_str()},
        {lease(7, "a\0b"s), 7, 100, "a"},
        {lease(254, "last"), 254, 100, "last"},
        {lease(0, "zero"), 0, 100, nullptr},
        {lease(255, "broadcast"), 255, 100, nullptr},
        {lease(44, "x"), 300, 100, nullptr},
        {lease(255, "broadcast"), -1, 100, nullptr},
    };
    const TestRoot root;
    char name[100];
    EXPECT_EQ(lookup_lease_name(7, name, sizeof name), nullptr) << "no file";
    for (const LeaseCase &test : cases) {
        root.write("/var/udhcpd.leases", test.file);
        EXPECT_EQ(lookup_lease_name(test.host, nullptr, test.size), nullptr);
        memset(name, '#', sizeof name);
        EXPECT_EQ(lookup_lease_name(test.host, name, test.size), test.name ? name : nullptr) << test.host;
        EXPECT_STREQ(test.name ? name : nullptr, test.name);
        EXPECT_EQ(std::count(name + test.size, std::end(name), '#'), std::end(name) - name - test.size);
    }
}

TEST(Computers, TheFirstOfManyLeasesNamesAComputer)
{
    const TestRoot root;
    std::mt19937 random;
    const std::string leases = random_bytes(random, 64 * 200 + 63);
    root.write("/var/udhcpd.leases", leases);
    for (int host = 1; host <= 254; host++) {
        size_t at = 0;
        while (at + 64 <= leases.size() && leases[at + 19] != static_cast<char>(host))
            at += 64;
        char name[41];
        if (at + 64 > leases.size())
            EXPECT_EQ(lookup_lease_name(host, name, sizeof name), nullptr) << host;
        else
            EXPECT_STREQ(lookup_lease_name(host, name, sizeof name), leases.substr(at + 24, 40).c_str()) << host;
    }
}

TEST(Computers, ListsTheLinesOfAFile)
{
    struct LinesCase {
        ComputerKind kind;
        std::string lines, listed;
    };
    const LinesCase cases[] = {
        {COMPUTER_SPEED, "", ""},
        {COMPUTER_SPEED, "7 2048\n8 0\n", "PC.7  2k|PC.8  0k|"},
        {COMPUTER_SPEED, "7\n8 -5\n9\t2048\n10 x\n11 ", "PC.7  0k|PC.8  0k|PC.9  0k|PC.10  0k|PC.11  0k|"},
        {COMPUTER_SPEED, "0 5\n-3 5\nabc 5\n\n \n300 1572864\n", "PC.300  1.500M|"},
        {COMPUTER_SPEED, "7  4096\r\n 8 5000", "PC.7  4k|PC.8  1k|"},
        {COMPUTER_SPEED, "99999999999 99999999999", "PC.2147483647  2047.999M|"},
        {COMPUTER_SPEED, "7 " + std::string(97, '0') + "8 4096\n9 1", "PC.7  0k|PC.8  4k|PC.9  1k|"},
        {COMPUTER_SPEED, "7 2048\0 9\n\0 8 1\n9\0 4096\n"s, "PC.7  2k|PC.9  0k|"},
        {COMPUTER_SPEED, std::string(1 << 20, '\0') + "\n7 1\n", "PC.7  1k|"},
        {COMPUTER_USAGE, "7 1610612736\n8 0\n9\n10 \n", "PC.7  1.500GB|PC.8  1kB|PC.9  0kB|PC.10  0kB|"},
        {COMPUTER_USAGE, "7 " + std::string(97, '9') + "8 4096", "PC.7  931322GB|PC.8  4kB|"},
    };
    const char *const files[] = {"pcs", "total_pc_data"};
    const TrafficRoot root;
    for (const LinesCase &test : cases) {
        EXPECT_EQ(rows(test.kind), "") << "no file";
        root.write_speed(files[test.kind], test.lines);
        EXPECT_EQ(rows(test.kind), test.listed) << test.lines.substr(0, 80);
        std::filesystem::remove_all(root.path("/tmp/lcd/network_status/speed"));
    }
}

TEST(Computers, ListsNoMoreThanTheTableHolds)
{
    const TrafficRoot root;
    const auto listed = [&](const std::string &lines) {
        root.write_speed("pcs", lines);
        return rows(COMPUTER_SPEED);
    };
    std::string lines, expected;
    for (int i = 1; i <= 300; i++) {
        lines += std::to_string(i) + " 2048\n";
        if (i <= MAX_COMPUTERS)
            expected += "PC." + std::to_string(i) + "  2k|";
    }
    EXPECT_EQ(listed(lines), expected);
    EXPECT_EQ(listed("7 1"), "PC.7  1k|") << "the rows of a shorter list";
    std::string many;
    for (int i = 0; i < 1000000; i++)
        many += "x\n";
    EXPECT_EQ(listed(many + lines), expected);
}

TEST(Computers, NamesAComputerByItsLease)
{
    struct NameCase {
        std::string name, label; // beside the value "2k" a label has 97 pixels, 82 when it is cut
    };
    const NameCase cases[] = {
        {"desk", "desk"},
        {"sixteen-letters.", "sixteen-letters."},
        {"abc.defg.hijklmno", "abc.defg.hijklmno"},
        {"abc.defghijklmno.", "abc.defghijklm..."},
        {std::string(17, 'w'), std::string(13, 'w') + "..."},
        {std::string(40, 'w'), std::string(13, 'w') + "..."},
        {"", "PC.7"},
        {"caf\xC3\xA9", "PC.7"},
        {"a\x7F", "a\x7F"},
        {"\x80", "PC.7"},
    };
    const TrafficRoot root;
    root.write_speed("pcs", "7 2048\n300 2048\n");
    for (const NameCase &test : cases) {
        root.write("/var/udhcpd.leases", lease(44, "other") + lease(7, test.name));
        EXPECT_EQ(rows(COMPUTER_SPEED), test.label + "  2k|PC.300  2k|");
    }
}

TEST(Computers, ShowsTheMarkAloneWithoutRoom)
{
    const std::string unit(30, 'M');
    const TrafficRoot root(unit);
    root.write("/var/udhcpd.leases", lease(7, "desk"));
    root.write_speed("pcs", "7 1048576\n");
    EXPECT_EQ(rows(COMPUTER_SPEED), "...  1.000" + unit + "|");
}

TEST(Computers, SurvivesAnyFiles)
{
    const TrafficRoot root;
    std::mt19937 random;
    for (int round = 0; round < 20; round++) {
        root.write("/var/udhcpd.leases", random_bytes(random, random() % 5000));
        std::string lines = random_bytes(random, random() % 5000);
        for (char &byte : lines)
            if (random() % 4)
                byte = "0123456789 \n"[random() % 12];
        root.write_speed("pcs", lines);
        root.write_speed("total_pc_data", lines);
        for (const ComputerKind kind : {COMPUTER_SPEED, COMPUTER_USAGE}) {
            build_computer_rows(kind);
            const InfoRow *row = computer_rows;
            for (; *row->value; row++)
                EXPECT_TRUE(*row->label && strlen(row->label) <= 43 && strlen(row->value) < 16 && *row->prefix);
            EXPECT_LE(row - computer_rows, MAX_COMPUTERS);
        }
    }
}
