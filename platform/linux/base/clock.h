#pragma once

#include "platform/clock.h"

namespace quorvane {

// The system's clocks, in the zone of TZ or /etc/localtime; a zone that changes is noticed at the next call.
// A TZ that names no zone is an unknown zone; the time is UTC then.
class LinuxClock final : public Clock {
  public:
    DateTime Now() override;
    TimeZone ZoneAt(const DateTime& local) override;
    std::int64_t Ticks() override;
};

} // namespace quorvane
