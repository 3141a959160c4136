#pragma once

#include "platform/memory/call_log.h"
#include "platform/workstation.h"

#include <set>

namespace quorvane {

class MemoryWorkstation final : public Workstation {
  public:
    explicit MemoryWorkstation(CallLog& calls)
        : calls_(calls) {}

    bool StartScreenSaver() override { return Request("StartScreenSaver"); }
    bool Lock() override { return Request("Lock"); }
    bool Exit(std::uint32_t flags) override { return Request("Exit " + std::to_string(flags)); }
    bool RunShellVerb(std::string_view verb) override { return Request("RunShellVerb " + std::string(verb)); }
    bool OpenControlPanel(std::string_view argument) override {
        return Request("OpenControlPanel " + std::string(argument));
    }

    std::set<std::string> refused; // requests in the words of the log: "Exit 21"

  private:
    bool Request(const std::string& request) {
        calls_.Add("workstation." + request);
        return !refused.contains(request);
    }

    CallLog& calls_;
};

} // namespace quorvane
