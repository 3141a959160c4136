#pragma once

#include "platform/event_loop.h"

#include <functional>
#include <string>

namespace quorvane {

class Form;

// A timer of a form: it runs while the form is loaded (from the end of OnLoad), shown or not, `Enabled` is
// set and the interval is above 0. Switching it on or changing its interval starts the interval anew.
class Timer {
  public:
    // A member of the form's class, as controls are.
    Timer(Form& form, std::string name, int intervalMilliseconds, bool enabled = true);
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer();

    const std::string& Name() const { return name_; }
    int Interval() const { return interval_; }
    void SetInterval(int milliseconds);
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);

    // A timer that sleeps keeps its moments and lets them pass (EventLoop::Sleep): for one that has nothing
    // to do before something else happens.
    bool Asleep() const { return asleep_; }
    void Sleep();
    void Wake();

    std::function<void()> onTimer;

  private:
    friend class Form;
    // Starts or stops the platform's timer as the state demands.
    void Adjust();
    void Stop();

    Form& form_;
    std::string name_;
    int interval_;
    bool enabled_;
    bool asleep_ = false;
    TimerId running_ = 0;
};

} // namespace quorvane
