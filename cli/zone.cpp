#include "cli/zone.h"

#include "platform/headless.h"

namespace quorvane::cli {

TimeZone ZoneOf(const Arguments& arguments, const DateTime& moment) {
    constexpr std::int64_t MostMinutes = 24 * 60;
    TimeZone zone;
    if (const auto bias = arguments.WholeNumber("bias")) {
        if (*bias < -MostMinutes || *bias > MostMinutes)
            throw UsageError("--bias wants minutes of at most a day, not " + std::to_string(*bias));
        zone.known = true;
        zone.bias = static_cast<int>(*bias);
    } else {
        zone = CreateClock()->ZoneAt(moment);
    }
    if (const auto name = arguments.Value("zone")) zone.name = *name;
    return zone;
}

} // namespace quorvane::cli
