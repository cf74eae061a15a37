#include "sim/asset_faults.h"

#include "sim/files.h"
#include "sim/recorder.h"
#include "sim/router_files.h"

namespace fs = std::filesystem;

namespace sim {

static constexpr const char *PICTURES_FOLDER = "/_auto_bitmap_/";
static constexpr const char *PACKS_FOLDER = "/_auto_lang_/";
static constexpr const char *PACK_PREFIX = "_auto_language_";

AssetFaults::AssetFaults(const fs::path &root) : root_(root)
{
    fs::remove_all(root_ / SPOILT_FOLDER);
}

std::optional<std::string> AssetFaults::installed(const std::string &path) const
{
    return read_file(root_.string() + path);
}

/* Makes the file `name` of a `folder` of assets hold `content` (nothing: it is missing) and all others whole. */
std::vector<std::string> AssetFaults::spoil(const std::string &folder, const std::string &name,
                                            const std::optional<std::string> &content)
{
    const std::string below = "/" + std::string(ASSETS_FOLDER) + folder, path = below + name;
    std::vector<std::string> script;
    std::erase_if(spoilt_, [&](const auto &old) {
        const bool is_repaired = old.first.starts_with(below);
        if (is_repaired)
            script.push_back(file_line(old.first, installed(old.first)));
        return is_repaired;
    });
    const fs::path stands = root_ / SPOILT_FOLDER / path.substr(1);
    fs::remove_all(stands.parent_path());
    if (name.empty() || !installed(path))
        return script;
    fs::create_directories(stands.parent_path());
    if (content)
        write_file(stands, *content);
    else
        fs::create_symlink(stands.filename(), stands); // which leads nowhere
    script.push_back(spoilt_[path] = file_line(path, content));
    return script;
}

std::vector<std::string> AssetFaults::remove_picture(const std::string &name)
{
    return spoil(PICTURES_FOLDER, name, std::nullopt);
}

std::vector<std::string> AssetFaults::cut_pack(const std::string &language)
{
    const std::string name = language.empty() ? "" : PACK_PREFIX + language;
    const std::string whole = installed("/" + std::string(ASSETS_FOLDER) + PACKS_FOLDER + name).value_or("");
    return spoil(PACKS_FOLDER, name, whole.substr(0, whole.size() / 2));
}

std::vector<std::string> AssetFaults::lines() const
{
    std::vector<std::string> script;
    script.reserve(spoilt_.size());
    for (const auto &[path, line] : spoilt_)
        script.push_back(line);
    return script;
}

} // namespace sim
