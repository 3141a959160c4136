#pragma once

#include "config/entries.h"
#include "config/one_based.h"
#include "core/date_time.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quorvane {

// A firing to come.
struct UpcomingFiring {
    std::int64_t tick = 0; // of the scheduler, counted from 0
    DateTime at;           // the second that the tick falls in
    std::int32_t alarm = 0;
    std::int32_t count = 0; // of its firings, this one included
    bool operator==(const UpcomingFiring&) const = default;
};

struct UpcomingFirings {
    std::vector<UpcomingFiring> firings;
    std::vector<std::int32_t> leftOut; // live alarms that cannot be foretold
};

// The firings of the scheduler's ticks, tick 0 at `from` and one every half second up to and with the second
// of `until`, at most `most` of them. The clock is taken to run evenly; what a firing does is not.
UpcomingFirings ForetellFirings(OneBased<AlarmRecord> alarms, const DateTime& from, const DateTime& until,
                                std::size_t most);

} // namespace quorvane
