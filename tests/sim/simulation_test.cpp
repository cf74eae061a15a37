#include "sim/computers.h"
#include "sim/traffic.h"
#include "tests/sim/simulator.h"

#include <cmath>
#include <set>
#include <sstream>

static constexpr unsigned SECONDS = 1200;

TEST(Traffic, EachPatternKeepsToItsRange)
{
    const struct {
        const char *name;
        double least, most, step; // of the line's load, and of its change in a second
    } patterns[] = {
        {"idle", 0, 0.002, 0.0004}, {"steady", 0.4, 0.9, 0.04}, {"bursts", 0.01, 1, 0.25}, {"glitch", 0.3, 0.8, 0.04}};
    for (const auto &[name, least, most, step] : patterns) {
        double low = 1, high = 0;
        for (unsigned second = 0; second < SECONDS; ++second) {
            const double load = sim::line_load(name, 7, 1, second);
            EXPECT_LE(std::abs(sim::line_load(name, 7, 1, second + 1) - load), step) << name;
            low = std::min(low, load);
            high = std::max(high, load);
        }
        EXPECT_TRUE(low >= least && high <= most && high - low > 0.7 * (most - least)) << name << low << " " << high;
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

/* A glitch is what pc_monitor should never write. */
TEST(Traffic, TheComputersShareItWhateverAGlitchSays)
{
    const sim::TrafficPlan plan = {
        .pattern = "glitch", .seed = 1, .down = 1000000, .up = 100000, .computers = 40, .come_and_go = true};
    sim::Traffic traffic;
    std::map<unsigned, uint64_t> before = figures(traffic.pass(plan, 0).at("total_pc_data"));
    std::set<size_t> counts;
    std::set<std::string> glitches;
    for (unsigned second = 1; second < SECONDS; ++second) {
        auto files = traffic.pass(plan, second);
        auto speeds = figures(files.at("pcs"));
        const auto totals = figures(files.at("total_pc_data"));
        const std::string down = files.at("down");
        counts.insert(speeds.size());
        EXPECT_LE(traffic.wireless_computers(), speeds.size());
        EXPECT_EQ(totals.size(), plan.computers);
        uint64_t sum = 0;
        for (const auto &[host, total] : totals) {
            EXPECT_EQ(total, before.at(host) + speeds[host]);
            sum += speeds[host];
        }
        if (down.size() > 8 || down[0] == '-')
            glitches.insert(down);
        else
            EXPECT_LE(sum, std::stoul(down));
        before = totals;
    }
    EXPECT_GT(counts.size(), 5u) << "they come and go";
    EXPECT_EQ(glitches, (std::set<std::string>{"-1\n", "1500000000\n", "99999999999999999999\n"}));
}

TEST(Computers, HaveLeasesInTheServersForm)
{
    const std::string leases = sim::lease_file(253, 3);
    ASSERT_EQ(leases.size(), 250u * 64);
    std::set<std::string> names;
    for (unsigned i = 0; i < 250; ++i) {
        EXPECT_EQ(leases.substr(64 * i + 16, 4), std::string("\xc0\xa8\x01") + static_cast<char>(sim::FIRST_HOST + i));
        names.insert(leases.substr(64 * i + 24, 40));
    }
    EXPECT_EQ(names.size(), 250u);
    EXPECT_EQ(sim::lease_file(3, 253), "");
}
