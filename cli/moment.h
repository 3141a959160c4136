#pragma once

#include "cli/command.h"

namespace quorvane::cli {

// The moment of "--at", or the present local date and time of the platform. Throws UsageError.
DateTime MomentOf(const Arguments& arguments);

// "YYYY-MM-DD".
std::string DateText(const DateTime& moment);
// "YYYY-MM-DD HH:MM:SS".
std::string DateTimeText(const DateTime& moment);

} // namespace quorvane::cli
