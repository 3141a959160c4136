#pragma once

#include "platform/clock.h"

namespace quorvane {

class WindowsClock final : public Clock {
  public:
    DateTime Now() override;
    // By the rules of the system's zone for the year of the date.
    TimeZone ZoneAt(const DateTime& local) override;
    std::int64_t Ticks() override;
};

} // namespace quorvane
