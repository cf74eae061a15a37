/* The user's time zone: its offset and its daylight saving. */
#pragma once

/* The offset in minutes of a zone code such as "GMT+9:2:1", positive east of UTC. What is missing or no digit
 * counts as 0. */
int time_adjust(const char *zone_code);

/* 1 when daylight saving is in force today in the zone of nvram time_zone, else 0. Whole days count: from the first day
 * on, including the last. */
int daylight_saving();
