#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace quorvane {

using TimerId = std::uint32_t; // 0 is no timer

// The one thread's events: timers, what a person does, requests of the system. No exception leaves a
// callback: the loop reports a RunTimeError that gets so far to the handler set by OnFailure, and a
// ProcessEnd stops the loop and leaves through Run, Pump or RunWhile.
class EventLoop {
  public:
    virtual ~EventLoop() = default;

    // Repeats until stopped. Ticks that come late are merged, never queued; a timer does not fire again
    // inside its own tick unless the tick lets events run. `name` tells the timer in tests and reports.
    virtual TimerId StartTimer(std::string_view name, int intervalMilliseconds,
                               std::function<void()> tick) = 0;
    virtual void StopTimer(TimerId timer) = 0;

    // A timer that sleeps does not tick and wakes nobody. Woken it ticks at the moments at which it would
    // have ticked without the sleep, the first of them after the waking. Both do nothing where it is so
    // already.
    virtual void Sleep(TimerId timer) = 0;
    virtual void Wake(TimerId timer) = 0;
    // From the first of these calls to the last one's answer no timer ticks; the ticks that fell due
    // meanwhile come merged, one each. Best said by TimersHeld.
    virtual void HoldTimers() = 0;
    virtual void ReleaseTimers() = 0;

    // Calls `work` once, soon, from the loop.
    virtual void Post(std::function<void()> work) = 0;

    // Calls `work` now, under the rule for callbacks. Whatever brings news from the system to the logic (a
    // form host, the tray) does it through here.
    virtual void Deliver(const std::function<void()>& work) = 0;

    // Lets everything run that is due now, and returns.
    virtual void Pump() = 0;
    // Lets events run, waiting for them, as long as `condition` holds: the loop of a modal window.
    virtual void RunWhile(const std::function<bool()>& condition) = 0;
    // Lets events run until the process ends; returns its exit status.
    virtual int Run() = 0;

    virtual void OnFailure(std::function<void(int number, const char* description)> handler) = 0;
};

// Holds the timers of a loop while it lives.
class TimersHeld {
  public:
    explicit TimersHeld(EventLoop& events)
        : events_(events) {
        events_.HoldTimers();
    }
    ~TimersHeld() { events_.ReleaseTimers(); }
    TimersHeld(const TimersHeld&) = delete;
    TimersHeld& operator=(const TimersHeld&) = delete;

  private:
    EventLoop& events_;
};

} // namespace quorvane
