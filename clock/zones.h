#pragma once

#include "core/date_time.h"

#include <string_view>

namespace quorvane {

// The zones of the clock tool: whole hours from Greenwich.
inline constexpr int FirstZone = -12;
inline constexpr int LastZone = 13;

// Where the hour of this zone is kept, half-hour places noted among them; empty outside the zones.
std::string_view ZonePlaces(int offset);

// The date and time in a zone: the local moment, brought to Greenwich by `biasMinutes` (which, added to local
// time, give UTC), and shifted by the zone's hours.
DateTime ZoneMoment(const DateTime& local, double biasMinutes, int offset);

} // namespace quorvane
