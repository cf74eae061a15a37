/* The settings store as the simulator sees it. */
#include "sim/settings.h"

#include "fuzz/fuzz.h"

#include <sys/stat.h>

static std::string running_store()
{
    mkdir((scratch_folder() + "/nvram").c_str(), 0755);
    return scratch_folder() + "/nvram/running";
}

void fuzz(Input &in)
{
    static const std::string path = running_store();
    const std::string &root = scratch_folder();
    const std::string key = in.text(), value = exact(in.text()).data();
    write_scratch(path, in.rest());
    const sim::Settings before = sim::read_settings(root);
    require(!before.contains(""), "a setting has a key");
    if (!sim::is_setting_key(key))
        return;
    sim::write_setting(root, key, value);
    sim::Settings expected = before;
    expected[key] = value;
    require(sim::read_settings(root) == expected, "one setting changes");
    sim::remove_setting(root, key);
    expected.erase(key);
    require(sim::read_settings(root) == expected, "one setting goes");
}
