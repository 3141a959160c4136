#pragma once

#include "platform/clock.h"
#include "platform/event_loop.h"

#include <cmath>
#include <limits>

namespace quorvane {

// Lets events run out of a long loop, the first time it is asked and then at most twice a second by the time
// of day. A clock that was set back, as at midnight, counts as time gone by.
class Breather {
  public:
    Breather(Clock& clock, EventLoop& events)
        : clock_(clock)
        , events_(events) {}

    void Breathe() {
        const double now = SecondsOfDay(clock_.Now());
        if (std::abs(now - noted_) <= 0.5) return;
        noted_ = now;
        events_.Pump();
    }

  private:
    Clock& clock_;
    EventLoop& events_;
    double noted_ = -std::numeric_limits<double>::infinity(); // the time of day in seconds
};

} // namespace quorvane
