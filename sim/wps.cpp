#include "sim/wps.h"

#include "sim/files.h"
#include "sim/router_files.h"
#include "sim/router_time.h"

#include <cstring>

namespace sim {

static constexpr const char *OUTCOME_PREFIX = "var/wps_";
static constexpr const char *NO_OUTCOME = "none";

/* The record that starts a pairing: the number 1 in the processor's own byte order, then zeros. */
static constexpr size_t RECORD_SIZE = 16;

static std::string start_record()
{
    std::string record(RECORD_SIZE, '\0');
    const uint32_t start = 1;
    std::memcpy(record.data(), &start, sizeof start);
    return record;
}

/* Takes a record out of the driver's entry. False when no whole one is there. */
bool WpsService::take_request() const
{
    const std::filesystem::path entry = root_ / PAIRING_FILE;
    std::error_code none;
    if (std::filesystem::file_size(entry, none) < RECORD_SIZE || none)
        return false;
    const bool is_start = read_file(entry) == start_record();
    std::filesystem::resize_file(entry, 0);
    return is_start;
}

std::string WpsService::tick(uint64_t tick, const std::string &outcome, unsigned long seconds)
{
    if (take_request()) {
        asked_at_ = tick;
        return "wps: pairing asked for";
    }
    if (!asked_at_ || outcome == NO_OUTCOME || tick - *asked_at_ < seconds * TICKS_PER_SECOND)
        return "";
    asked_at_.reset();
    write_file(root_ / (OUTCOME_PREFIX + outcome), "1\n");
    return "wps: " + outcome;
}

} // namespace sim
