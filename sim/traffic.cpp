#include "sim/traffic.h"

#include "sim/noise.h"

#include <algorithm>
#include <vector>

namespace sim {

static constexpr uint32_t COMMON_STREAM = 0, DOWN_STREAM = 1, UP_STREAM = 2, SHARE_STREAM = 2000, HISTORY_STREAM = 3000;

static constexpr double SHARE_PERIOD = 20;    // seconds in which a computer's part of the traffic changes
static constexpr uint64_t GLITCH_PERIOD = 6;  // seconds from one impossible reading to the next
static constexpr double HISTORY_BITS = 34;    // totals of years past: up to 2 to this, in bytes

static constexpr const char *glitches[] = {"1500000000", "-1", "99999999999999999999"};

struct Pattern {
    std::string_view name;
    double period; // seconds from one level to the next
    double (*level)(double chance);
};

static constexpr Pattern patterns[] = {
    {"idle", 8, [](double chance) { return 0.002 * chance; }},
    {"steady", 20, [](double chance) { return 0.4 + 0.5 * chance; }},
    /* Most of the time at an end of the scale. */
    {"bursts", 25, [](double chance) { return std::clamp((chance - 0.4) / 0.25, 0.01, 1.0); }},
    {"glitch", 20, [](double chance) { return 0.3 + 0.5 * chance; }},
};

double line_load(std::string_view pattern, uint32_t seed, uint32_t stream, uint64_t second)
{
    const auto found = std::ranges::find(patterns, pattern, &Pattern::name);
    const double time = static_cast<double>(second) / found->period;
    /* Who loads much sends much: what both directions have in common outweighs their own. */
    return found->level(0.6 * noise(seed, COMMON_STREAM, time) + 0.4 * noise(seed, stream, time));
}

static uint64_t speed_of(uint32_t line, const TrafficPlan &plan, uint32_t stream, uint64_t second)
{
    return static_cast<uint64_t>(line * line_load(plan.pattern, plan.seed, stream, second));
}

static std::string reading(uint64_t speed, const TrafficPlan &plan, uint64_t second)
{
    const bool fails = plan.pattern == "glitch" && second % GLITCH_PERIOD == GLITCH_PERIOD - 1;
    return (fails ? glitches[second / GLITCH_PERIOD % std::size(glitches)] : std::to_string(speed)) + "\n";
}

/* The computers' parts of the traffic, 0 for who is away; a few have most of it. */
static std::vector<double> shares(const TrafficPlan &plan, uint64_t second)
{
    std::vector<double> parts(plan.computers);
    for (unsigned i = 0; i < plan.computers; ++i)
        if (!plan.come_and_go || is_there(plan.seed, i, second)) {
            const double level = noise(plan.seed, SHARE_STREAM + i, static_cast<double>(second) / SHARE_PERIOD);
            parts[i] = 0.001 + std::pow(level, 6);
        }
    double sum = 0;
    for (const double part : parts)
        sum += part;
    for (double &part : parts)
        part /= std::max(sum, 1e-9);
    return parts;
}

std::map<std::string, std::string> Traffic::pass(const TrafficPlan &plan, uint64_t second)
{
    const uint64_t down = speed_of(plan.down, plan, DOWN_STREAM, second);
    const uint64_t up = speed_of(plan.up, plan, UP_STREAM, second);
    const std::vector<double> parts = shares(plan, second);
    std::string speeds, totals;
    wireless_computers_ = 0;
    for (unsigned i = 0; i < plan.computers; ++i) {
        const std::string host = std::to_string(FIRST_HOST + i) + " ";
        const auto speed = static_cast<uint64_t>(static_cast<double>(down) * parts[i]);
        const auto history = static_cast<uint64_t>(std::exp2(HISTORY_BITS * chance(plan.seed, HISTORY_STREAM, i)));
        totals_[i] += speed;
        totals += host + std::to_string(history + totals_[i]) + "\n";
        if (parts[i] > 0) {
            speeds += host + std::to_string(speed) + "\n";
            wireless_computers_ += is_wireless(i);
        }
    }
    return {{"down", reading(down, plan, second)},
            {"up", reading(up, plan, second)},
            {"pcs", speeds},
            {"total_pc_data", totals}};
}

} // namespace sim
