/* A libnvram for machines that have none: the settings store is the text file that NVRAM_FILE names. */
#include "platform/desk/settings_file.h"
#include "platform/nvram.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>

static constexpr const char *DEFAULT_FILE = "/tmp/nvram";

static SettingsFile store()
{
    const char *path = getenv("NVRAM_FILE");
    return {AT_FDCWD, path ? path : DEFAULT_FILE};
}

char *nvram_get(const char *key)
{
    return settings_get(store(), key);
}

char *nvram_safe_get(const char *key)
{
    char *value = nvram_get(key);
    return value ? value : strdup("");
}

int nvram_set(const char *key, const char *value)
{
    return settings_set(store(), key, value);
}

int nvram_commit()
{
    /* Every set is in the file already. */
    return 0;
}
