/* What the router's firmware does with the panel while it replaces itself. */
#pragma once

#include <cstdint>
#include <optional>

namespace sim {

struct UpgradeStep {
    unsigned second;  // of router time, from the begin on
    const char *info; // what the info file then tells; null: the router starts again
    bool announced;   // with the event
};

class Upgrade {
public:
    void begin(uint64_t tick);
    void end() { next_ = nullptr; }

    /* The step that is due at `tick`; null: none. */
    const UpgradeStep *step(uint64_t tick);

private:
    uint64_t began_ = 0;
    const UpgradeStep *next_ = nullptr; // null: no upgrade runs
};

} // namespace sim
