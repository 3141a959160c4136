#pragma once

#include "core/date_time.h"

#include <cstdint>
#include <string>

namespace quorvane {

// The zone in force for a date. Biases are minutes to add to local time for UTC: -180 for Moscow. The bias in
// force is bias + daylightBias while `daylight`, bias + standardBias otherwise.
struct TimeZone {
    bool known = false;
    int bias = 0;
    int standardBias = 0;
    int daylightBias = 0;
    bool daylight = false; // daylight saving is in force
    std::string name;      // of the time in force
};

class Clock {
  public:
    virtual ~Clock() = default;
    virtual DateTime Now() = 0;
    virtual TimeZone ZoneAt(const DateTime& local) = 0;
    // Milliseconds of a clock that never jumps; its start has no meaning.
    virtual std::int64_t Ticks() = 0;
};

} // namespace quorvane
