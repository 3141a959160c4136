#pragma once

#include "platform/memory/call_log.h"
#include "platform/session.h"

namespace quorvane {

class MemorySession : public Session {
  public:
    explicit MemorySession(CallLog& calls)
        : calls_(calls) {}

    std::string CommandLine() override { return commandLine; }
    int SetAutostart(bool enabled, const std::string& switches) override {
        calls_.Add(std::string("session.SetAutostart ") + (enabled ? "on" : "off") +
                   (switches.empty() ? "" : " ") + switches);
        if (autostartError) return autostartError;
        autostart = enabled;
        return 0;
    }
    void OnEndRequest(std::function<void()> handler) override { endRequest_ = std::move(handler); }
    [[noreturn]] void End(int status) override {
        calls_.Add("session.End " + std::to_string(status));
        throw ProcessEnd{status};
    }

    // The system wants the program to end. A real platform calls the handler from its loop, once.
    void RequestEnd() {
        if (std::exchange(ending_, true)) throw ProcessEnd{1};
        if (endRequest_) endRequest_();
    }

    std::string commandLine;
    int autostartError = 0; // what SetAutostart answers, with nothing done
    bool autostart = false;

  private:
    CallLog& calls_;
    std::function<void()> endRequest_;
    bool ending_ = false;
};

} // namespace quorvane
