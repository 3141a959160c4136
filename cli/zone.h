#pragma once

#include "cli/command.h"
#include "platform/clock.h"

namespace quorvane::cli {

// The time zone of "--bias" (minutes, standard time) and "--zone"; what is not given comes from the
// platform's zone in force at `moment`, except that a bias of one's own has no name but "--zone". Throws
// UsageError.
TimeZone ZoneOf(const Arguments& arguments, const DateTime& moment);

} // namespace quorvane::cli
