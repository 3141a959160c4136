#pragma once

#include "core/date_time.h"

#include <string>
#include <string_view>

namespace quorvane {

// A date and a time of day as the person's system writes them by default: the short date, a blank, and
// H:MM:SS. `shortDate` is the system's pattern, "dd.MM.yyyy", with texts of its own between apostrophes;
// empty for the ISO order.
std::string GeneralDateText(const DateTime& moment, std::string_view shortDate);

} // namespace quorvane
