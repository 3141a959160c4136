#pragma once

#include "platform/event_loop.h"
#include "platform/memory/clock.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

// The event loop by the tick clock of a MemoryClock. Nothing waits: Advance and RunWhile move the clocks to
// the next timer that falls due and fire it. A RunTimeError of a callback goes to the handler of OnFailure;
// any other exception, a failed expectation of a test among them, leaves to the test.
class MemoryEventLoop : public EventLoop {
  public:
    explicit MemoryEventLoop(MemoryClock& clock)
        : clock_(clock) {}

    TimerId StartTimer(std::string_view name, int intervalMilliseconds, std::function<void()> tick) override;
    void StopTimer(TimerId timer) override;
    void Sleep(TimerId timer) override;
    void Wake(TimerId timer) override;
    void HoldTimers() override { ++held_; }
    void ReleaseTimers() override { --held_; }
    void Post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
    void Pump() override;
    // Answers the wait by the next action of WhenWaiting, where one is prepared. Then moves the clocks from
    // timer to timer; throws std::logic_error where the condition still holds after a day of that, or where
    // nothing is left that could end the wait.
    void RunWhile(const std::function<bool()>& condition) override;
    // As RunWhile, until a ProcessEnd.
    int Run() override;
    void OnFailure(std::function<void(int number, const char* description)> handler) override {
        failureHandler_ = std::move(handler);
    }
    void Deliver(const std::function<void()>& callback) override;

    // Moves both clocks on by `milliseconds`, firing each timer on the way at its moment.
    void Advance(std::int64_t milliseconds);
    // Fires the timer of this name now, due or not; false where none of this name runs or timers are held.
    bool Fire(std::string_view name);
    // What happens inside every Pump, before its timers: where re-entry lives.
    std::function<void()> onPump;
    // What a person does while a routine waits (a modal window): consumed by one RunWhile each, in order.
    void WhenWaiting(std::function<void()> action) { waiting_.push_back(std::move(action)); }

    bool IsRunning(std::string_view name) const; // asleep or not
    bool IsAsleep(std::string_view name) const;
    int IntervalOf(std::string_view name) const; // milliseconds; 0 where none of this name runs
    std::vector<std::string> TimerNames() const; // in the order of their start

  private:
    struct Timer {
        TimerId id;
        std::string name;
        int interval;
        std::int64_t due;
        std::function<void()> tick;
        bool asleep = false;
    };

    std::shared_ptr<Timer> Find(std::string_view name) const;
    std::shared_ptr<Timer> Find(TimerId timer) const;
    std::shared_ptr<Timer> NextDue() const;
    void RunPosted();
    void RunDue();
    static void SetNextDue(Timer& timer, std::int64_t now);
    void FireTimer(const std::shared_ptr<Timer>& timer);

    MemoryClock& clock_;
    std::vector<std::shared_ptr<Timer>> timers_;
    std::deque<std::function<void()>> posted_;
    std::deque<std::function<void()>> waiting_;
    std::function<void(int, const char*)> failureHandler_;
    TimerId lastId_ = 0;
    int held_ = 0;
};

} // namespace quorvane
