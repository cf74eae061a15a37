/* The desk's settings store, of any bytes: what is set can be read, and no other setting changes. */
#include "platform/desk/settings_file.h"

#include "fuzz/fuzz.h"

#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>

static std::optional<std::string> value_of(const SettingsFile &file, const char *key)
{
    const std::unique_ptr<char, decltype(&free)> value(settings_get(file, key), free);
    return value ? std::optional<std::string>(value.get()) : std::nullopt;
}

void fuzz(Input &in)
{
    const std::string path = scratch_folder() + "/store", copy_path = scratch_folder() + "/copy";
    const SettingsFile store = {AT_FDCWD, path.c_str()}, copy = {AT_FDCWD, copy_path.c_str()};
    const std::vector<char> key = exact(in.text()), value = exact(in.text()), other = exact(in.text());
    write_scratch(path, in.rest());

    const std::string name = key.data();
    const bool possible = !name.empty() && name.find_first_of("=\n") == name.npos;
    const auto expected = possible ? value.data() : value_of(store, key.data());
    const auto other_before = value_of(store, other.data());
    require((settings_set(store, key.data(), value.data()) == 0) == possible, "a possible key can be set");
    require(value_of(store, key.data()) == expected, "what is set can be read");
    /* A key with "=" in it may name a part of another one's value. */
    if (name != other.data() && std::string_view(other.data()).find('=') == std::string_view::npos)
        require(value_of(store, other.data()) == other_before, "no other setting changes");
    require(settings_copy(store, copy) == 0 && value_of(copy, key.data()) == expected, "a copy holds the same");
}
