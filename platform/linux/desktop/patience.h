#pragma once

#include <QDeadlineTimer>
#include <functional>

namespace quorvane {

class EventLoop;

// One limit of time for a piece of work that waits for other programs, however many of them it asks. Events
// run while it waits; an end of the process that comes meanwhile leaves through Until as a ProcessEnd.
class Patience {
  public:
    Patience(EventLoop& events, int milliseconds)
        : events_(events)
        , deadline_(milliseconds) {}

    // False where the time was up before `done` held. Whatever `done` looks at must change in an event.
    bool Until(const std::function<bool()>& done);

  private:
    EventLoop& events_;
    QDeadlineTimer deadline_;
};

} // namespace quorvane
