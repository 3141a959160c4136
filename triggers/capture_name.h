#pragma once

#include "core/date_time.h"

#include <string>
#include <string_view>

namespace quorvane {

// The file name of a picture captured at a moment. In the template every "YY" becomes the last two digits of
// the year, so that "YYYY" is these twice, then "MM", "DD", "HH", "NN" and "SS" the month, day, hour, minute
// and second, each of two digits, wherever the letters stand and in either case. ".bmp" is added where the
// name does not end in it.
std::string ExpandCaptureName(std::string_view nameTemplate, const DateTime& moment);

} // namespace quorvane
