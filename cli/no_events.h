#pragma once

#include "platform/event_loop.h"

namespace quorvane::cli {

// The event loop of a program that has no events: letting them run does nothing, and what would wait for one
// returns.
class NoEvents final : public EventLoop {
  public:
    TimerId StartTimer(std::string_view, int, std::function<void()>) override { return 0; }
    void StopTimer(TimerId) override {}
    void Sleep(TimerId) override {}
    void Wake(TimerId) override {}
    void HoldTimers() override {}
    void ReleaseTimers() override {}
    void Post(std::function<void()> work) override { work(); }
    void Deliver(const std::function<void()>& work) override { work(); }
    void Pump() override {}
    void RunWhile(const std::function<bool()>&) override {}
    int Run() override { return 0; }
    void OnFailure(std::function<void(int, const char*)>) override {}
};

} // namespace quorvane::cli
