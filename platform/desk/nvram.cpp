#include "platform/nvram.h"

#include "platform/desk/root.h"
#include "platform/desk/settings_file.h"
#include "platform/desk/simulator.h"

#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

static constexpr const char *FOLDER = "nvram";
static constexpr const char *RUNNING_STORE = "nvram/running";
static constexpr const char *COMMITTED_STORE = "nvram/committed"; // what a reboot brings back

char *nvram_get(const char *key)
{
    char *value = settings_get({desk_root(), RUNNING_STORE}, key);
    tell(value ? "get" : "unset", key, value ? value : "");
    return value;
}

char *nvram_safe_get(const char *key)
{
    char *value = nvram_get(key);
    return value ? value : strdup("");
}

int nvram_set(const char *key, const char *value)
{
    mkdirat(desk_root(), FOLDER, 0755);
    tell("set", key, value);
    return settings_set({desk_root(), RUNNING_STORE}, key, value);
}

int nvram_commit()
{
    mkdirat(desk_root(), FOLDER, 0755);
    tell("commit");
    return settings_copy({desk_root(), RUNNING_STORE}, {desk_root(), COMMITTED_STORE});
}
