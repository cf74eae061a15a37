#include "sim/upgrade.h"

#include "sim/router_time.h"

namespace sim {

/* The page would give way to others two minutes after its event: a longer step announces itself again. */
static constexpr UpgradeStep steps[] = {
    {0, "Upgrading Firmware", true},  // the image is checked and the old one erased
    {60, "Upgrading Firmware", true}, // the new one is written
    {110, "Restarting Router", false},
    {120, nullptr, false},
};

void Upgrade::begin(uint64_t tick)
{
    began_ = tick;
    next_ = steps;
}

const UpgradeStep *Upgrade::step(uint64_t tick)
{
    if (!next_ || tick < began_ + uint64_t{next_->second} * TICKS_PER_SECOND)
        return nullptr;
    const UpgradeStep *due = next_;
    next_ = due->info ? due + 1 : nullptr;
    return due;
}

} // namespace sim
