#include "sim/computers.h"
#include "sim/traffic.h"
#include "tests/sim/simulator.h"

#include <cmath>
#include <cstring>
#include <set>
#include <sstream>

static constexpr sim::TrafficPlan home = {
    .pattern = "steady", .seed = 1, .down = 1000000, .up = 100000, .computers = 40, .come_and_go = true};
static constexpr unsigned SECONDS = 1200;

struct Pattern {
    const char *name;
    double least, most, step; // of the line's load, and of its change in a second
};

TEST(Traffic, EachPatternKeepsToItsRange)
{
    const Pattern patterns[] = {
        {"idle", 0, 0.002, 0.0004}, {"steady", 0.4, 0.9, 0.04}, {"bursts", 0.01, 1, 0.25}, {"glitch", 0.3, 0.8, 0.04}};
    for (const Pattern &pattern : patterns) {
        double low = 1, high = 0;
        for (unsigned second = 0; second < SECONDS; ++second) {
            const double load = sim::line_load(pattern.name, 7, 1, second);
            EXPECT_LE(std::abs(sim::line_load(pattern.name, 7, 1, second + 1) - load), pattern.step) << pattern.name;
            low = std::min(low, load);
            high = std::max(high, load);
        }
        EXPECT_GE(low, pattern.least) << pattern.name;
        EXPECT_LE(high, pattern.most) << pattern.name;
        EXPECT_GT(high - low, 0.7 * (pattern.most - pattern.least)) << pattern.name << " moves";
    }
}

/* The lines of a file: host number and figure. */
static std::map<unsigned, uint64_t> figures(const std::string &text)
{
    std::map<unsigned, uint64_t> result;
    std::istringstream lines(text);
    for (unsigned host; lines >> host;)
        lines >> result[host];
    return result;
}

TEST(Traffic, TheComputersShareIt)
{
    sim::Traffic traffic;
    std::map<unsigned, uint64_t> before = figures(traffic.pass(home, 0).at("total_pc_data"));
    std::set<size_t> counts;
    for (unsigned second = 1; second < SECONDS; ++second) {
        auto files = traffic.pass(home, second);
        const auto speeds = figures(files.at("pcs")), totals = figures(files.at("total_pc_data"));
        counts.insert(speeds.size());
        uint64_t sum = 0;
        EXPECT_EQ(totals.size(), home.computers);
        for (const auto &[host, total] : totals) {
            const uint64_t speed = speeds.contains(host) ? speeds.at(host) : 0;
            EXPECT_EQ(total, before.at(host) + speed);
            sum += speed;
        }
        EXPECT_LE(sum, std::stoul(files.at("down")));
        EXPECT_LE(traffic.wireless_computers(), speeds.size());
        before = totals;
    }
    EXPECT_GT(counts.size(), 5u) << "they come and go";
}

/* What pc_monitor should never write is what a glitch is. */
TEST(Traffic, AGlitchIsNoSpeed)
{
    sim::TrafficPlan plan = home;
    plan.pattern = "glitch";
    sim::Traffic traffic;
    std::set<std::string> readings;
    for (unsigned second = 0; second < 60; ++second) {
        const std::string down = traffic.pass(plan, second).at("down");
        if (down.size() > 8 || down[0] == '-')
            readings.insert(down);
    }
    EXPECT_EQ(readings, (std::set<std::string>{"-1\n", "1500000000\n", "99999999999999999999\n"}));
}

TEST(Computers, HaveLeasesInTheServersForm)
{
    const std::string leases = sim::lease_file(253, 3);
    ASSERT_EQ(leases.size(), 250u * 64);
    std::set<std::string> names;
    for (unsigned i = 0; i < 250; ++i) {
        const std::string record = leases.substr(64 * i, 64);
        EXPECT_EQ(record.substr(16, 3), "\xc0\xa8\x01");
        EXPECT_EQ(static_cast<unsigned char>(record[19]), sim::FIRST_HOST + i);
        const std::string name(&record[24], strnlen(&record[24], 40));
        EXPECT_EQ(name, sim::computer_name(i));
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 250u);
    EXPECT_EQ(sim::lease_file(3, 253), "");
}
