/* The router's WPS service: answers a push-button pairing. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace sim {

class WpsService {
public:
    /* Of the router at `root`. */
    explicit WpsService(const std::filesystem::path &root) : root_(root) {}

    /* A tick of the router's: takes a pairing that was asked for, and `seconds` later ends it with `outcome`
     * ("success", "stop", "overlap", "error"; "none": never). What it did, in words; "" when it did nothing. */
    std::string tick(uint64_t tick, const std::string &outcome, unsigned long seconds);

    /* Forgets a pairing that runs. */
    void power_on() { asked_at_.reset(); }

private:
    bool take_request() const;

    const std::filesystem::path root_;
    std::optional<uint64_t> asked_at_; // tick
};

} // namespace sim
