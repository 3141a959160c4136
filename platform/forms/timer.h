#pragma once

#include "platform/event_loop.h"

#include <functional>
#include <string>

namespace quorvane {

class Form;

// A timer of a form: it runs while the form is loaded, shown or not, `Enabled` is set and the interval is
// above 0. Switching it on or changing its interval starts the interval anew.
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
    TimerId running_ = 0;
};

} // namespace quorvane
