#include "sim/links.h"

#include "sim/files.h"
#include "sim/router_files.h"

#include <algorithm>

namespace sim {

static constexpr const char *CLIENTS_NAME = "wireless_client";
static constexpr size_t MOST_CLIENT_DIGITS = 3;

Links::Links(const std::filesystem::path &root) : root_(root)
{
    for (const char *name : {"internet", "wan", "lan", "wireless", "security", "power"})
        states_.emplace_back(name, "on");
    publish();
}

bool Links::set(const std::string &name, const std::string &state)
{
    const std::lock_guard lock(mutex_);
    const auto link = std::find_if(states_.begin(), states_.end(), [&](const auto &row) { return row.first == name; });
    if (link == states_.end() || (state != "on" && state != "off" && state != "blink"))
        return false;
    link->second = state;
    publish();
    return true;
}

bool Links::set_clients(const std::string &count)
{
    const bool digits = std::all_of(count.begin(), count.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (count.empty() || count.size() > MOST_CLIENT_DIGITS || !digits)
        return false;
    const std::lock_guard lock(mutex_);
    clients_ = count;
    publish();
    return true;
}

std::vector<std::pair<std::string, std::string>> Links::states() const
{
    const std::lock_guard lock(mutex_);
    return states_;
}

std::string Links::clients() const
{
    const std::lock_guard lock(mutex_);
    return clients_;
}

void Links::publish() const
{
    std::string text = std::string(CLIENTS_NAME) + " " + clients_ + "\n";
    for (const auto &[name, state] : states_)
        text += name + " " + state + "\n";
    write_file(root_ / LINKS_FILE, text);
}

} // namespace sim
