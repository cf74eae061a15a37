/* The router's settings store: the interface of its libnvram.
 *
 * Keys and values are NUL-terminated texts. Copies handed out come from malloc and belong to the caller. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* A copy of the value of `key`; null when the key is missing (or memory has run out). */
char *nvram_get(const char *key);

/* A copy of the value of `key`, "" when the key is missing; null only when memory has run out. */
char *nvram_safe_get(const char *key);

/* Stores `value` under `key` in the running store. 0, or -1 on failure. */
int nvram_set(const char *key, const char *value);

/* Writes the running store to flash. 0, or -1 on failure. */
int nvram_commit(void);

#ifdef __cplusplus
}
#endif
