#pragma once

#include "platform/clock.h"

#include <functional>

namespace quorvane {

// Two clocks that stand still until a test moves them, together (Advance) or apart: a sleeping machine, a
// clock that the person sets.
class MemoryClock : public Clock {
  public:
    DateTime Now() override;
    TimeZone ZoneAt(const DateTime& local) override { return zoneAt ? zoneAt(local) : zone; }
    std::int64_t Ticks() override { return ticks_; }

    // Sets the wall clock alone.
    void SetNow(const DateTime& local);
    void MoveWall(std::int64_t milliseconds) { wall_ += milliseconds; }
    void MoveTicks(std::int64_t milliseconds) { ticks_ += milliseconds; }
    void Advance(std::int64_t milliseconds);

    TimeZone zone{true, 0, 0, -60, false, "UTC"};
    std::function<TimeZone(const DateTime& local)> zoneAt; // where set, asked in place of `zone`

  private:
    std::int64_t wall_ = 1'000'000'000'000; // milliseconds since 1970-01-01, local: 2001-09-09 01:46:40
    std::int64_t ticks_ = 1'000'000;
};

} // namespace quorvane
