#include "sim/computers.h"

#include "sim/noise.h"

#include <array>

namespace sim {

static constexpr size_t RECORD_SIZE = 64, ADDRESS_AT = 16, NAME_AT = 24, NAME_SIZE = RECORD_SIZE - NAME_AT;
static constexpr uint32_t PRESENCE_STREAM = 1000; // of the noise, one stream a computer from here on
static constexpr double PRESENCE_PERIOD = 90;     // seconds
static constexpr double PRESENT_ABOVE = 0.3;

/* A long one, which the panel cuts, and one that is not plain ASCII, which it does not show, are among them. */
static constexpr std::array<const char *, 20> names = {
    "office-desktop", "kitchen-tablet", "Annas-laptop",  "living-room-tv", "printer",      "media-server",
    "Zo\xc3\xab-phone",   "games-console",  "Bens-phone",    "the-old-laptop-in-the-guest-room-upstairs",
    "backup-disk",    "doorbell",       "thermostat",    "Claras-laptop",  "work-laptop",  "hall-camera",
    "radio",          "Davids-tablet",  "weather-board", "spare-phone",
};

std::string computer_name(unsigned index)
{
    const std::string name = names[index % names.size()];
    const std::string number = index < names.size() ? "" : "-" + std::to_string(index / names.size() + 1);
    return name.substr(0, NAME_SIZE - number.size()) + number;
}

std::string lease_file(unsigned count, unsigned nameless)
{
    std::string leases;
    for (unsigned index = 0; index + nameless < count; ++index) {
        std::string record(RECORD_SIZE, '\0');
        const char host = static_cast<char>(FIRST_HOST + index);
        record.replace(0, 6, {'\x02', '\x00', '\x5e', '\x10', '\x00', host});
        record.replace(ADDRESS_AT, 4, {'\xc0', '\xa8', '\x01', host}); // 192.168.1.x
        const std::string name = computer_name(index);
        record.replace(NAME_AT, name.size(), name);
        leases += record;
    }
    return leases;
}

bool is_wireless(unsigned index)
{
    return index % 3 != 0;
}

bool is_there(uint32_t seed, unsigned index, uint64_t second)
{
    return noise(seed, PRESENCE_STREAM + index, static_cast<double>(second) / PRESENCE_PERIOD) > PRESENT_ABOVE;
}

} // namespace sim
