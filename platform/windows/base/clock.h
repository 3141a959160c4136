#pragma once

#include "platform/clock.h"

namespace quorvane {

class WindowsClock final : public Clock {
  public:
    DateTime Now() override;
    // By the rules of the system's zone for the year of the date. A zone without daylight saving, for which
    // the system answers that it does not know which of the two is in force, is known: it has its name and
    // bias.
    TimeZone ZoneAt(const DateTime& local) override;
    std::int64_t Ticks() override;
};

} // namespace quorvane
