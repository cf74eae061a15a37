/* What the router's links are to be: the companion network_status makes the status files of it. */
#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace sim {

class Links {
public:
    /* All links of the router at `root` on, two wireless clients. */
    explicit Links(const std::filesystem::path &root);

    /* Puts the link `name` into `state`. False when there is no such link or state. */
    bool set(const std::string &name, const std::string &state);

    /* Sets the number of wireless clients. False when `count` is no number of up to three digits. */
    bool set_clients(const std::string &count);

    /* The name and the state of each link. */
    std::vector<std::pair<std::string, std::string>> states() const;

    /* The number of wireless clients. */
    std::string clients() const;

private:
    void publish() const;

    const std::filesystem::path root_;
    mutable std::mutex mutex_;
    std::vector<std::pair<std::string, std::string>> states_;
    std::string clients_ = "2";
};

} // namespace sim
