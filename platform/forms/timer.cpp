#include "platform/forms/timer.h"

#include "platform/forms/form.h"

#include <vector>

namespace quorvane {

Timer::Timer(Form& form, std::string name, int intervalMilliseconds, bool enabled)
    : form_(form)
    , name_(std::move(name))
    , interval_(intervalMilliseconds)
    , enabled_(enabled) {
    form_.timers_.push_back(this);
}

Timer::~Timer() {
    Stop();
    std::erase(form_.timers_, this);
}

void Timer::SetInterval(int milliseconds) {
    if (milliseconds == interval_) return;
    interval_ = milliseconds;
    Stop();
    Adjust();
}

void Timer::SetEnabled(bool enabled) {
    enabled_ = enabled;
    Adjust();
}

void Timer::Sleep() {
    asleep_ = true;
    if (running_ != 0) form_.Events().Sleep(running_);
}

void Timer::Wake() {
    asleep_ = false;
    if (running_ != 0) form_.Events().Wake(running_);
}

void Timer::Adjust() {
    const bool wanted = enabled_ && interval_ > 0 && form_.IsLoaded() && !form_.loading_;
    if (!wanted) {
        Stop();
    } else if (running_ == 0) {
        running_ = form_.Events().StartTimer(name_, interval_, [this] {
            if (!onTimer) return;
            const auto handler = onTimer;
            handler();
        });
        if (asleep_) form_.Events().Sleep(running_);
    }
}

void Timer::Stop() {
    if (running_ != 0) form_.Events().StopTimer(running_);
    running_ = 0;
}

} // namespace quorvane
