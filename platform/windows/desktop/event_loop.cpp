#include "platform/windows/desktop/event_loop.h"

#include "core/run_time_error.h"
#include "platform/windows/base/channel_message.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace quorvane {
namespace {

constexpr UINT PostedMessage = WM_APP + 1;
// A tick that takes longer than its interval must not hold Pump for ever.
constexpr DWORD LongestPumpMilliseconds = 200;

std::int64_t TicksNow() {
    return static_cast<std::int64_t>(GetTickCount64());
}

// Never in the past: ticks that were missed are merged.
void SetNextDue(std::int64_t& due, std::int64_t interval, std::int64_t now) {
    if (due <= now) due += ((now - due) / interval + 1) * interval;
}

} // namespace

WindowsEventLoop::WindowsEventLoop() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = channel_message::WindowClass;
    RegisterClassExW(&windowClass); // fails where a loop stood before, and the class with it
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW, channel_message::WindowClass, L"Quorvane II", WS_POPUP, 0, 0,
                              0, 0, nullptr, nullptr, instance, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

WindowsEventLoop::~WindowsEventLoop() {
    MSG end; // a request to end that nothing has taken was this loop's, not the next one's
    PeekMessageW(&end, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

TimerId WindowsEventLoop::StartTimer(std::string_view, int intervalMilliseconds, std::function<void()> tick) {
    const TimerId id = ++lastTimer_;
    const std::int64_t interval = std::max(intervalMilliseconds, 1);
    const Timer& timer = timers_[id] = {interval, TicksNow() + interval, std::move(tick)};
    Arm(id, timer);
    return id;
}

void WindowsEventLoop::StopTimer(TimerId timer) {
    if (timers_.erase(timer) > 0) KillTimer(window_, timer);
}

void WindowsEventLoop::Sleep(TimerId timer) {
    const auto found = timers_.find(timer);
    if (found == timers_.end() || found->second.asleep) return;
    found->second.asleep = true;
    KillTimer(window_, timer);
}

void WindowsEventLoop::Wake(TimerId timer) {
    const auto found = timers_.find(timer);
    if (found == timers_.end() || !found->second.asleep) return;
    found->second.asleep = false;
    SetNextDue(found->second.due, found->second.interval, TicksNow());
    Arm(timer, found->second);
}

void WindowsEventLoop::Arm(TimerId id, const Timer& timer) {
    SetTimer(window_, id, static_cast<UINT>(std::max<std::int64_t>(timer.due - TicksNow(), 1)), nullptr);
}

void WindowsEventLoop::ReleaseTimers() {
    if (--held_ > 0) return;
    for (auto& [timer, data] : timers_) {
        if (std::exchange(data.missed, false)) PostMessageW(window_, WM_TIMER, timer, 0);
    }
}

void WindowsEventLoop::Post(std::function<void()> work) {
    posted_.push_back(std::move(work));
    PostMessageW(window_, PostedMessage, 0, 0);
}

void WindowsEventLoop::Deliver(const std::function<void()>& work) {
    if (end_) return;
    try {
        work();
    } catch (...) {
        Settle();
    }
    LookAgain();
}

void WindowsEventLoop::Pump() {
    const DWORD begin = GetTickCount();
    MSG message{};
    while (!end_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        Dispatch(message);
        if (message.message == WM_TIMER && GetTickCount() - begin > LongestPumpMilliseconds) break;
    }
    LeaveIfEnding();
}

void WindowsEventLoop::RunWhile(const std::function<bool()>& condition) {
    ++waiting_;
    MSG message{};
    while (!end_ && condition()) {
        if (GetMessageW(&message, nullptr, 0, 0) != -1) Dispatch(message);
    }
    --waiting_;
    LeaveIfEnding();
}

int WindowsEventLoop::Run() {
    try {
        RunWhile([] { return true; });
    } catch (const ProcessEnd& end) {
        return end.status;
    }
    return 0;
}

void WindowsEventLoop::OnFailure(std::function<void(int number, const char* description)> handler) {
    onFailure_ = std::move(handler);
}

void WindowsEventLoop::LeaveIfEnding() const {
    if (end_) throw ProcessEnd{*end_};
}

int WindowsEventLoop::AddFilter(std::function<bool(MSG&)> filter) {
    filters_.emplace_back(++lastFilter_, std::move(filter));
    return lastFilter_;
}

void WindowsEventLoop::RemoveFilter(int number) {
    std::erase_if(filters_, [number](const auto& filter) { return filter.first == number; });
}

void WindowsEventLoop::AddHandler(Handler handler) {
    handlers_.push_back(std::move(handler));
}

LRESULT CALLBACK WindowsEventLoop::Procedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    auto* loop = reinterpret_cast<WindowsEventLoop*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return loop ? loop->Handle(message, wide, low) : DefWindowProcW(window, message, wide, low);
}

LRESULT WindowsEventLoop::Handle(UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_TIMER) {
        Tick(static_cast<TimerId>(wide));
        return 0;
    }
    if (message == PostedMessage) {
        RunPosted();
        return 0;
    }
    std::optional<LRESULT> answer;
    for (std::size_t i = 0; i < handlers_.size() && !answer; ++i)
        answer = handlers_[i](message, wide, low);
    return answer ? *answer : DefWindowProcW(window_, message, wide, low);
}

void WindowsEventLoop::Tick(TimerId timer) {
    const auto found = timers_.find(timer);
    if (found == timers_.end() || found->second.asleep) return;
    Timer& own = found->second;
    if (held_ > 0) {
        own.missed = true;
        KillTimer(window_, timer);
        return;
    }
    // The system's ticks may come a little before their moment.
    SetNextDue(own.due, own.interval, std::max(TicksNow(), own.due));
    Arm(timer, own);
    const auto tick = own.tick; // the tick may stop its own timer
    Deliver(tick);
}

void WindowsEventLoop::RunPosted() {
    if (posted_.empty()) return;
    const auto work = std::move(posted_.front());
    posted_.pop_front();
    Deliver(work);
}

void WindowsEventLoop::Dispatch(MSG& message) {
    // A quit is only the means to leave the system's own loops; what ends this one is `end_`.
    if (message.message == WM_QUIT) return;
    for (std::size_t i = filters_.size(); i-- > 0;) {
        if (filters_[i].second(message) || end_) return;
        i = std::min(i, filters_.size());
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void WindowsEventLoop::Settle() {
    try {
        try {
            throw;
        } catch (const std::exception& failure) {
            const RunTimeError error = AsRunTimeError(failure);
            if (onFailure_) onFailure_(error.Number(), error.what());
        }
    } catch (const ProcessEnd& end) {
        end_ = end.status;
        EndMenu();
        PostQuitMessage(end.status);
    } catch (...) {
        // The handler itself failed: there is nobody left to tell.
        end_ = EXIT_FAILURE;
        PostQuitMessage(EXIT_FAILURE);
    }
}

void WindowsEventLoop::LookAgain() {
    // Work may run while the system only looks for messages; the condition that is waited for may have
    // changed.
    if (waiting_ > 0) PostMessageW(window_, WM_NULL, 0, 0);
}

} // namespace quorvane
