#include "platform/memory/event_loop.h"

#include "core/run_time_error.h"

#include <algorithm>
#include <stdexcept>

namespace quorvane {

namespace {

constexpr std::int64_t LongestWait = 86'400'000; // of virtual time: a wait beyond it is a test's mistake

} // namespace

TimerId MemoryEventLoop::StartTimer(std::string_view name, int intervalMilliseconds,
                                    std::function<void()> tick) {
    const int interval = std::max(intervalMilliseconds, 1);
    timers_.push_back(std::make_shared<Timer>(
        Timer{++lastId_, std::string(name), interval, clock_.Ticks() + interval, std::move(tick)}));
    return lastId_;
}

void MemoryEventLoop::StopTimer(TimerId timer) {
    std::erase_if(timers_, [timer](const auto& each) { return each->id == timer; });
}

void MemoryEventLoop::Sleep(TimerId timer) {
    if (const auto found = Find(timer)) found->asleep = true;
}

void MemoryEventLoop::Wake(TimerId timer) {
    const auto found = Find(timer);
    if (!found || !found->asleep) return;
    found->asleep = false;
    SetNextDue(*found, clock_.Ticks());
}

void MemoryEventLoop::Pump() {
    if (onPump) onPump();
    RunPosted();
    RunDue();
}

void MemoryEventLoop::RunWhile(const std::function<bool()>& condition) {
    if (!waiting_.empty()) {
        const std::function<void()> action = std::move(waiting_.front());
        waiting_.pop_front();
        action();
    }
    const std::int64_t end = clock_.Ticks() + LongestWait;
    RunPosted();
    while (condition()) {
        const auto next = NextDue();
        if (!next || next->due > end) throw std::logic_error("a wait that nothing ends");
        clock_.Advance(std::max<std::int64_t>(next->due - clock_.Ticks(), 0));
        FireTimer(next);
        RunPosted();
    }
}

int MemoryEventLoop::Run() {
    try {
        RunWhile([] { return true; });
    } catch (const ProcessEnd& end) {
        return end.status;
    }
    return 0;
}

void MemoryEventLoop::Advance(std::int64_t milliseconds) {
    const std::int64_t end = clock_.Ticks() + milliseconds;
    RunPosted();
    for (auto next = NextDue(); next && next->due <= end; next = NextDue()) {
        clock_.Advance(std::max<std::int64_t>(next->due - clock_.Ticks(), 0));
        FireTimer(next);
        RunPosted();
    }
    clock_.Advance(std::max<std::int64_t>(end - clock_.Ticks(), 0));
}

bool MemoryEventLoop::Fire(std::string_view name) {
    const auto timer = held_ > 0 ? nullptr : Find(name);
    if (timer) FireTimer(timer);
    return timer != nullptr;
}

bool MemoryEventLoop::IsRunning(std::string_view name) const {
    return Find(name) != nullptr;
}

int MemoryEventLoop::IntervalOf(std::string_view name) const {
    const auto timer = Find(name);
    return timer ? timer->interval : 0;
}

bool MemoryEventLoop::IsAsleep(std::string_view name) const {
    const auto timer = Find(name);
    return timer && timer->asleep;
}

std::vector<std::string> MemoryEventLoop::TimerNames() const {
    std::vector<std::string> names;
    for (const auto& timer : timers_) {
        names.push_back(timer->name);
    }
    return names;
}

std::shared_ptr<MemoryEventLoop::Timer> MemoryEventLoop::Find(std::string_view name) const {
    const auto found = std::find_if(timers_.begin(), timers_.end(),
                                    [name](const auto& timer) { return timer->name == name; });
    return found == timers_.end() ? nullptr : *found;
}

std::shared_ptr<MemoryEventLoop::Timer> MemoryEventLoop::Find(TimerId id) const {
    const auto found =
        std::find_if(timers_.begin(), timers_.end(), [id](const auto& timer) { return timer->id == id; });
    return found == timers_.end() ? nullptr : *found;
}

std::shared_ptr<MemoryEventLoop::Timer> MemoryEventLoop::NextDue() const {
    std::shared_ptr<Timer> first;
    for (const auto& timer : timers_) {
        if (held_ == 0 && !timer->asleep && (!first || timer->due < first->due)) first = timer;
    }
    return first;
}

void MemoryEventLoop::RunPosted() {
    while (!posted_.empty()) {
        const std::function<void()> work = std::move(posted_.front());
        posted_.pop_front();
        Deliver(work);
    }
}

// Each timer once at most: a tick that takes longer than its interval must not keep the loop here for ever.
void MemoryEventLoop::RunDue() {
    if (held_ > 0) return;
    const auto before = timers_;
    for (const auto& timer : before) {
        const bool stillRuns = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
        if (stillRuns && !timer->asleep && timer->due <= clock_.Ticks()) FireTimer(timer);
    }
}

// Never in the past: ticks that were missed are merged.
void MemoryEventLoop::SetNextDue(Timer& timer, std::int64_t now) {
    if (timer.due <= now) timer.due += ((now - timer.due) / timer.interval + 1) * timer.interval;
}

// The next tick is set before this one runs.
void MemoryEventLoop::FireTimer(const std::shared_ptr<Timer>& timer) {
    SetNextDue(*timer, clock_.Ticks());
    Deliver(timer->tick);
}

void MemoryEventLoop::Deliver(const std::function<void()>& callback) {
    try {
        callback();
    } catch (const RunTimeError& error) {
        if (!failureHandler_) throw;
        failureHandler_(error.Number(), error.what());
    }
}

} // namespace quorvane
