#include "platform/linux/desktop/event_loop.h"

#include "core/run_time_error.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <algorithm>
#include <chrono>

namespace quorvane {

namespace {

std::int64_t SteadyMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// How late a tick may come so that it shares a waking with others: a twentieth of the interval, which nobody
// notices, and nothing for the short intervals that poll.
int Slack(int interval) {
    return interval < 100 ? 0 : std::min(interval / 20, 50);
}

} // namespace

QtEventLoop::QtEventLoop() = default;

TimerId QtEventLoop::StartTimer(std::string_view, int intervalMilliseconds, std::function<void()> tick) {
    const int interval = std::max(intervalMilliseconds, 1);
    timers_.push_back(std::make_shared<Timer>(
        Timer{++lastId_, interval, SteadyMilliseconds() + interval, std::move(tick)}));
    Arm();
    return lastId_;
}

void QtEventLoop::StopTimer(TimerId timer) {
    std::erase_if(timers_, [timer](const auto& each) { return each->id == timer; });
    Arm();
}

void QtEventLoop::Sleep(TimerId timer) {
    const auto found = Find(timer);
    if (!found || found->asleep) return;
    found->asleep = true;
    Arm();
}

void QtEventLoop::Wake(TimerId timer) {
    const auto found = Find(timer);
    if (!found || !found->asleep) return;
    found->asleep = false;
    found->SetNextDue(SteadyMilliseconds());
    Arm();
}

std::shared_ptr<QtEventLoop::Timer> QtEventLoop::Find(TimerId id) const {
    const auto found =
        std::find_if(timers_.begin(), timers_.end(), [id](const auto& timer) { return timer->id == id; });
    return found == timers_.end() ? nullptr : *found;
}

// Never in the past: ticks that were missed are merged.
void QtEventLoop::Timer::SetNextDue(std::int64_t now) {
    if (due <= now) due += ((now - due) / interval + 1) * interval;
}

void QtEventLoop::HoldTimers() {
    ++held_;
    Arm();
}

void QtEventLoop::ReleaseTimers() {
    --held_;
    Arm();
}

// One queued call for each: work that is posted by posted work waits for the next round of the loop.
void QtEventLoop::Post(std::function<void()> work) {
    posted_.push_back(std::move(work));
    QMetaObject::invokeMethod(
        &context_, [this] { RunOnePosted(); }, Qt::QueuedConnection);
}

void QtEventLoop::RunOnePosted() {
    const std::function<void()> work = std::move(posted_.front());
    posted_.pop_front();
    Deliver(work);
}

void QtEventLoop::Deliver(const std::function<void()>& work) {
    if (ended_) return;
    struct Delivering {
        int& depth;
        explicit Delivering(int& counted)
            : depth(counted) {
            ++depth;
        }
        ~Delivering() { --depth; }
    } const delivering(delivering_);
    try {
        work();
    } catch (const ProcessEnd& end) {
        End(end.status);
    } catch (const std::exception& failure) {
        const RunTimeError error = AsRunTimeError(failure);
        Fail(error.Number(), error.what());
    }
}

// A failure inside the report of a failure leaves nothing that could report it.
void QtEventLoop::Fail(int number, const char* description) {
    if (failing_ || !failureHandler_) {
        End(1);
        return;
    }
    failing_ = true;
    Deliver([&] { failureHandler_(number, description); });
    failing_ = false;
}

// Loops of the toolkit's own (a file dialogue, a menu) are left as well.
void QtEventLoop::End(int status) {
    ended_ = status;
    QCoreApplication::exit(status);
}

void QtEventLoop::LeaveWhereEnded() const {
    if (ended_) {
        throw ProcessEnd{*ended_};
    }
}

void QtEventLoop::Pump() {
    if (!displayLost_) {
        QCoreApplication::processEvents();
        DestroyUnloaded();
        LeaveWhereEnded();
    }
}

void QtEventLoop::RunWhile(const std::function<bool()>& condition) {
    QEventLoop loop;
    LeaveWhereEnded();
    while (condition()) {
        if (displayLost_) {
            throw ProcessEnd{1};
        }
        loop.processEvents(QEventLoop::WaitForMoreEvents);
        DestroyUnloaded();
        LeaveWhereEnded();
    }
}

// What is to be deleted later and was told so outside every event waits for a loop of the toolkit's to end,
// and there is none. Inside an event it must wait: it may be the one whose event that is.
void QtEventLoop::DestroyUnloaded() {
    if (delivering_ == 0) QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int QtEventLoop::Run() {
    try {
        RunWhile([] { return true; });
    } catch (const ProcessEnd& end) {
        return end.status;
    }
    return 0;
}

void QtEventLoop::OnFailure(std::function<void(int number, const char* description)> handler) {
    failureHandler_ = std::move(handler);
}

// Each timer once at most in a waking. The next tick is set before this one runs, so that a nested loop keeps
// the others going.
void QtEventLoop::RunDue() {
    if (held_ > 0) return;
    const TimerId newest = lastId_;
    for (TimerId done = 0; done < newest;) {
        const auto next = std::find_if(timers_.begin(), timers_.end(),
                                       [done](const auto& timer) { return timer->id > done; });
        if (next == timers_.end() || (*next)->id > newest) break;
        const std::shared_ptr<Timer> timer = *next;
        done = timer->id;
        const std::int64_t now = SteadyMilliseconds();
        if (timer->asleep || timer->due > now) continue;
        timer->SetNextDue(now);
        Arm();
        Deliver(timer->tick);
    }
    Arm();
}

void QtEventLoop::Arm() {
    std::optional<std::int64_t> next;
    for (const auto& timer : timers_) {
        if (timer->asleep) continue;
        const std::int64_t latest = timer->due + Slack(timer->interval);
        next = std::min(next.value_or(latest), latest);
    }
    if (next && held_ == 0) {
        if (wake_.isActive() && armedFor_ == *next) return;
        armedFor_ = *next;
        const auto wait = std::clamp<std::int64_t>(*next - SteadyMilliseconds(), 0, 1'000'000);
        wake_.start(static_cast<int>(wait), Qt::PreciseTimer, &context_);
    } else {
        wake_.stop();
    }
}

} // namespace quorvane
