/* What the web page and other programs are told, as JSON and as server-sent events. */
#pragma once

#include "sim/feed.h"

#include <string>

namespace sim {

/* The list of inputs with their values in `state`, and the settings. */
std::string inputs_json(uint64_t tick, const State &state);

/* {"tick","speed","lit","values":{ID:VALUE},"settings":{KEY:VALUE}} */
std::string state_json(uint64_t tick, unsigned speed, bool lit, const State &state);

/* An event "frame" {"tick","lit","pixels"}; pixels as hexadecimal digits. */
std::string frame_event(const Picture &picture);

/* An event "state" {"tick","values"} with the values that `now` has and `before` had not; with {"settings"} too, all of
 * them, when one has changed. */
std::string state_event(uint64_t tick, const State &before, const State &now);

/* A list of {"id","tick","kind","text","picture"}, alone and as an event "happenings". */
std::string happenings_json(const std::vector<Happening> &happenings);
std::string happenings_event(const std::vector<Happening> &happenings);

/* What a wait for another picture has come to: {"tick","changed","picture","lit","pixels"}. */
std::string change_json(const Picture &picture, uint64_t tick, bool changed);

} // namespace sim
