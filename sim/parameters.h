/* The values that the simulation itself holds, by the ids of their inputs. Any thread may ask and change. */
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace sim {

class Parameters {
public:
    void set(std::string_view id, const std::string &value)
    {
        const std::lock_guard lock(mutex_);
        values_.insert_or_assign(std::string(id), value);
    }

    /* Throws std::out_of_range when `id` was never set. */
    std::string text(std::string_view id) const
    {
        const std::lock_guard lock(mutex_);
        return values_.at(std::string(id));
    }

    unsigned long number(std::string_view id) const { return std::stoul(text(id)); }

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::string> values_;
};

} // namespace sim
