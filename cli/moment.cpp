#include "cli/moment.h"

#include "platform/clock.h"
#include "platform/headless.h"

#include <cstdio>

namespace quorvane::cli {

DateTime MomentOf(const Arguments& arguments) {
    const auto at = arguments.At();
    return at ? *at : CreateClock()->Now();
}

std::string DateText(const DateTime& moment) {
    return DateTimeText(moment).substr(0, 10);
}

std::string DateTimeText(const DateTime& moment) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", moment.year, moment.month, moment.day,
                  moment.hour, moment.minute, moment.second);
    return text;
}

} // namespace quorvane::cli
