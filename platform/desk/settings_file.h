/* A settings store in a text file: one line KEY=VALUE a setting, VALUE escaped (platform/escaped_text.h).
 *
 * Processes may share a store: it is read afresh at each use, and changed under a lock ("PATH.lock") by putting a whole
 * new file ("PATH.new") in its place, so that nobody loses a change or reads half of one. A missing file is an empty
 * store. Of several lines with one key the first that is well-formed counts; other lines mean nothing and are kept. */
#pragma once

struct SettingsFile {
    int folder; // open folder that `path` is relative to; AT_FDCWD: the current one
    const char *path;
};

/* A copy of the value of `key`, which the caller frees; null when the key is missing, its value is malformed, or the
 * file or memory cannot be had. */
char *settings_get(const SettingsFile &file, const char *key);

/* Stores `value` under `key` in place of all lines of that key. 0, or -1 with errno and the store as it was; EINVAL for
 * a key that is empty or holds "=" or a newline. */
int settings_set(const SettingsFile &file, const char *key, const char *value);

/* Makes `to` a copy of `from`. 0, or -1 with errno and `to` as it was. */
int settings_copy(const SettingsFile &from, const SettingsFile &to);
