#pragma once

#include "cli/arguments.h"

namespace quorvane::cli {

// The moment of "--at", or the present local date and time of the platform. Throws UsageError.
DateTime MomentOf(const Arguments& arguments);

} // namespace quorvane::cli
