#pragma once

#include "platform/event_loop.h"
#include "platform/windows/base/win32.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// The message loop of the one thread. Timers are the system's own (WM_TIMER), set anew at each tick so that
// they keep to their multiples: they merge, run inside the loops of message boxes and menus as well, and tick
// no faster than the system allows (10 ms).
class WindowsEventLoop final : public EventLoop {
  public:
    WindowsEventLoop();
    ~WindowsEventLoop() override;

    TimerId StartTimer(std::string_view name, int intervalMilliseconds, std::function<void()> tick) override;
    void StopTimer(TimerId timer) override;
    void Sleep(TimerId timer) override;
    void Wake(TimerId timer) override;
    void HoldTimers() override { ++held_; }
    void ReleaseTimers() override;
    void Post(std::function<void()> work) override;
    // A failure goes to the handler of OnFailure; an end of the process is kept, closes the menu or message
    // box that may be open, and leaves through the loop that runs. Once an end is kept nothing runs any more.
    void Deliver(const std::function<void()>& work) override;
    void Pump() override;
    void RunWhile(const std::function<bool()>& condition) override;
    int Run() override;
    void OnFailure(std::function<void(int number, const char* description)> handler) override;

    // To be called behind every call of the system that runs a message loop of its own.
    void LeaveIfEnding() const;

    // Is shown each message before it goes to its window, the last one set first; true where it took the
    // message. What it tells the logic it tells by Deliver. Returns a number to remove it by.
    int AddFilter(std::function<bool(MSG&)> filter);
    void RemoveFilter(int number);

    // A hidden window of the top level, which gets what the system tells to everybody. Answers of a handler
    // are the window's answers to the message; empty for messages it does not know. What it tells the logic
    // it tells by Deliver.
    using Handler = std::function<std::optional<LRESULT>(UINT message, WPARAM wide, LPARAM low)>;
    HWND Window() const { return window_; }
    void AddHandler(Handler handler);

  private:
    struct Timer {
        std::int64_t interval; // milliseconds, as are the moments of the system's ticks
        std::int64_t due;
        std::function<void()> tick;
        bool asleep = false;
        bool missed = false; // fell due while timers were held
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void Arm(TimerId id, const Timer& timer);
    void Tick(TimerId timer);
    void RunPosted();
    void Dispatch(MSG& message);
    void Settle();
    void LookAgain();

    HWND window_ = nullptr;
    TimerId lastTimer_ = 0;
    std::map<TimerId, Timer> timers_;
    std::deque<std::function<void()>> posted_;
    std::function<void(int, const char*)> onFailure_;
    std::vector<std::pair<int, std::function<bool(MSG&)>>> filters_;
    int lastFilter_ = 0;
    std::vector<Handler> handlers_;
    int waiting_ = 0; // depth of RunWhile
    int held_ = 0;    // HoldTimers without its answer
    std::optional<int> end_;
};

} // namespace quorvane
