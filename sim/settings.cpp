#include "sim/settings.h"

#include "platform/desk/settings_file.h"
#include "platform/escaped_text.h"
#include "sim/fd.h"
#include "sim/files.h"

#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sstream>

namespace sim {

static constexpr const char *RUNNING_FILE = "nvram/running";
static constexpr const char *COMMITTED_FILE = "nvram/committed";

struct Setting {
    const char *key;
    const char *value;
};

/* A router that has been set up, in a home that works. */
static constexpr Setting default_settings[] = {
    {"language", "en"},
    {"language_lcd", "en"},
    {"lan_ipaddr", "192.168.1.1"},
    {"lcd_power_save_mode", "off"},
    {"time_daylight", "0"},
    {"time_zone", "GMT+0:0:1"},
    {"wan_ifname", "wan0"},
    {"wan_mode", "dhcp"},
    {"wifi_bandwidth", "0"},
    {"wifi_channel", "auto"},
    {"wifi_dot11_mode", "7"},
    {"wifi_gacable", "0"},
    {"wifi_gssid", "Home guests"},
    {"wifi_if_on", "0"},
    {"wifi_psk_guest_pwd", ""},
    {"wifi_security", "psk2"},
    {"wifi_ssid", "Home network"},
    {"wifi_wsc_enable", "1"},
};

void restore_settings(const std::filesystem::path &root)
{
    const Fd folder(open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        fail(root);
    const SettingsFile committed = {folder.get(), COMMITTED_FILE};
    for (const Setting &setting : default_settings) {
        const std::unique_ptr<char, decltype(&std::free)> kept(settings_get(committed, setting.key), std::free);
        if (!kept && settings_set(committed, setting.key, setting.value) < 0)
            fail(root / COMMITTED_FILE);
    }
    if (settings_copy(committed, {folder.get(), RUNNING_FILE}) < 0)
        fail(root / RUNNING_FILE);
}

std::map<std::string, std::string> read_settings(const std::filesystem::path &root)
{
    std::map<std::string, std::string> settings;
    std::istringstream lines(read_file(root / RUNNING_FILE).value_or(""));
    for (std::string line; std::getline(lines, line);) {
        const size_t equals = line.find('=');
        if (equals == std::string::npos || equals == 0)
            continue;
        std::string value = line.substr(equals + 1);
        const ssize_t length = unescape_text(value.data(), value.size());
        if (length >= 0)
            settings.emplace(line.substr(0, equals), value.substr(0, static_cast<size_t>(length)));
    }
    return settings;
}

} // namespace sim
