#pragma once

#include "platform/system.h"

namespace quorvane {

class WindowsSystem final : public System {
  public:
    VersionRecord Version() override;
    std::string UserName() override;
    std::string ComputerName() override;
    std::int32_t ProcessId() override;
    std::int32_t ThreadId() override;
    std::string WindowsDirectory() override;
    std::string SystemWindowsDirectory() override;
    DateNames ShortDateNames() override;
    std::string CodePageText(std::string_view bytes) override;
    std::string DesktopName() override { return "Windows"; }
    std::string PicturePatterns() override {
        return "*.bmp;*.gif;*.jpg;*.jpeg;*.png;*.tif;*.tiff;*.wmf;*.emf";
    }
    bool EnablePrivilege(std::string_view name) override;
    std::vector<std::string> FontNames() override;
    bool SubstitutesFont(const std::string& family) override;
    int AddFontFile(const std::string& path) override;
    void Complain(std::string_view line) override;
};

} // namespace quorvane
