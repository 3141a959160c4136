#pragma once

#include "core/program.h"
#include "platform/memory/call_log.h"

namespace quorvane::test {

// A program that does nothing but keep what was asked of it, a line a call:
// "program.ChangeWallpaper 0 /pics/a.png".
class RecordedProgram final : public Program {
  public:
    explicit RecordedProgram(CallLog& log)
        : calls(log) {}

    void ChangeWallpaper(const std::string& file, int mode) override {
        calls.Add("program.ChangeWallpaper " + std::to_string(mode) + (file.empty() ? "" : " ") + file);
    }
    void BuildFileList() override { calls.Add("program.BuildFileList"); }
    void WriteSettings() override { calls.Add("program.WriteSettings"); }
    void SaveAndEnd() override { calls.Add("program.SaveAndEnd"); }
    void ReleaseAndEnd() override { calls.Add("program.ReleaseAndEnd"); }
    void ShowErrorDialog(std::int32_t number, const std::string& description) override {
        calls.Add("program.ShowErrorDialog " + std::to_string(number) + " " + description);
    }

    CallLog& calls;
};

} // namespace quorvane::test
