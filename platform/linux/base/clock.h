#pragma once

#include "platform/clock.h"

namespace quorvane {

// The system's clocks, in the zone of TZ or /etc/localtime; a zone that changes is noticed at the next call.
class LinuxClock final : public Clock {
  public:
    DateTime Now() override;
    TimeZone ZoneAt(const DateTime& local) override;
    std::int64_t Ticks() override;
};

} // namespace quorvane
