#pragma once

#include "platform/memory/call_log.h"
#include "platform/programs.h"

#include <set>

namespace quorvane {

// Programs that never run. Every command line starts one and everything opens, but for what a test refuses.
class MemoryPrograms final : public Programs {
  public:
    explicit MemoryPrograms(CallLog& calls)
        : calls_(calls) {}

    ProgramHandle Start(const std::string& commandLine, ProgramWindow window) override {
        calls_.Add("programs.Start " + commandLine +
                   (window == ProgramWindow::Minimized ? " minimized" : ""));
        return refused.contains(commandLine) ? 0 : Begin();
    }
    Opening Open(const std::string& fileOrAddress) override {
        calls_.Add("programs.Open " + fileOrAddress);
        if (refused.contains(fileOrAddress)) return {};
        return {true, associated.contains(fileOrAddress) ? 0 : Begin()};
    }
    bool Terminate(ProgramHandle program) override {
        calls_.Add("programs.Terminate " + std::to_string(program));
        return running.erase(program) > 0;
    }
    bool IsRunning(ProgramHandle program) override { return running.contains(program); }

    std::set<std::string> refused;    // what can neither be started nor opened
    std::set<std::string> associated; // what opens in a program that is not told of
    std::set<ProgramHandle> running;  // a program that ends by itself a test takes out

  private:
    ProgramHandle Begin() {
        running.insert(++last_);
        return last_;
    }

    CallLog& calls_;
    ProgramHandle last_ = 0;
};

} // namespace quorvane
