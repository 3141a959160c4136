#pragma once

#include "core/utf8.h"
#include "platform/memory/call_log.h"
#include "platform/system.h"

#include <map>
#include <set>

namespace quorvane {

class MemorySystem : public System {
  public:
    explicit MemorySystem(CallLog& calls)
        : calls_(calls) {}

    VersionRecord Version() override { return version; }
    std::string UserName() override { return userName; }
    std::string ComputerName() override { return computerName; }
    std::int32_t ProcessId() override { return 4711; }
    std::int32_t ThreadId() override { return 4712; }
    std::string WindowsDirectory() override { return windowsDirectory; }
    std::string SystemWindowsDirectory() override { return systemWindowsDirectory; }
    DateNames ShortDateNames() override { return dateNames; }
    std::string CodePageText(std::string_view bytes) override {
        std::string text; // as in Latin 1
        for (const char byte : bytes)
            AppendLetter(text, static_cast<unsigned char>(byte));
        return text;
    }
    std::string DesktopName() override { return desktopName; }
    std::string PicturePatterns() override { return "*.bmp;*.jpg;*.png"; }
    bool EnablePrivilege(std::string_view name) override {
        calls_.Add("system.EnablePrivilege " + std::string(name));
        return !refusedPrivileges.contains(std::string(name));
    }
    std::vector<std::string> FontNames() override { return fontNames; }
    bool SubstitutesFont(const std::string&) override { return substitutesFonts; }
    int AddFontFile(const std::string& path) override {
        calls_.Add("system.AddFontFile " + path);
        const auto found = fontFiles.find(path);
        return found == fontFiles.end() ? 0 : found->second;
    }
    void Complain(std::string_view line) override { complaints.emplace_back(line); }

    VersionRecord version{148, 10, 0, 19045, 2, "", 0, ""};
    std::string desktopName = "memory";
    std::string userName = "ann";
    std::string computerName = "workstation";
    std::string windowsDirectory = "/windows";
    std::string systemWindowsDirectory = "/system";
    DateNames dateNames;
    std::set<std::string> refusedPrivileges;
    std::vector<std::string> fontNames{
        "Courier", "Monotype Corsiva", "MS Sans Serif", "Microsoft Sans Serif", "SansSerif", "Arial"};
    bool substitutesFonts = false;
    std::map<std::string, int> fontFiles; // what AddFontFile answers for a path; 0 for any other
    std::vector<std::string> complaints;

  private:
    CallLog& calls_;
};

} // namespace quorvane
