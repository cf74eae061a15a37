#include "platform/nvram.h"

#include "platform/replay/quote_text.h"
#include "platform/replay/replay.h"

#include <cstring>

char *nvram_get(const char *key)
{
    const auto setting = replay.settings.find(key);
    return setting == replay.settings.end() ? nullptr : strdup(setting->second.c_str());
}

char *nvram_safe_get(const char *key)
{
    char *value = nvram_get(key);
    return value ? value : strdup("");
}

int nvram_set(const char *key, const char *value)
{
    replay.settings[key] = value;
    replay_record("set", (key + (" " + quote_text(value))).c_str());
    return 0;
}

int nvram_commit()
{
    replay_record("commit", "");
    return 0;
}
