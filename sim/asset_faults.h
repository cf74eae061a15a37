/* Faults of the daemon's installed files: some are missing or hold something else. */
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sim {

class AssetFaults {
public:
    /* Of the router at `root`: none. */
    explicit AssetFaults(const std::filesystem::path &root);

    /* Lets the picture `name` be missing, and no other; "": none is. The lines of a scenario script that do the same.
     * Throws std::system_error, as cut_pack. */
    std::vector<std::string> remove_picture(const std::string &name);

    /* Cuts the language pack of `language` ("en"), and no other; "": all are whole. */
    std::vector<std::string> cut_pack(const std::string &language);

    /* The lines that make a router with whole files this one. */
    std::vector<std::string> lines() const;

private:
    std::optional<std::string> installed(const std::string &path) const;
    std::vector<std::string> spoil(const std::string &folder, const std::string &name,
                                   const std::optional<std::string> &content);

    const std::filesystem::path root_;
    std::map<std::string, std::string> spoilt_; // line of the script, by the file's path
};

} // namespace sim
