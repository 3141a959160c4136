#pragma once

#include "platform/system.h"

namespace quorvane {

class LinuxSystem : public System {
  public:
    VersionRecord Version() override;
    std::string UserName() override;
    std::string ComputerName() override;
    std::int32_t ProcessId() override;
    std::int32_t ThreadId() override;
    // Both are the folder of the system's own backgrounds: here the logic starts choosing a picture, and puts
    // the log-on screen's.
    std::string WindowsDirectory() override { return SystemWindowsDirectory(); }
    std::string SystemWindowsDirectory() override;
    DateNames ShortDateNames() override;
    // That of LC_CTYPE; where it is UTF-8, the code page of Western Windows, in which such texts are handed
    // about.
    std::string CodePageText(std::string_view bytes) override;
    std::string DesktopName() override;
    std::string PicturePatterns() override {
        return "*.bmp;*.gif;*.jpg;*.jpeg;*.png;*.svg;*.tif;*.tiff;*.webp;*.wmf;*.emf";
    }
    // A process has no such rights here; what they guard is asked of the log-on manager at its time.
    bool EnablePrivilege(std::string_view) override { return false; }
    // Whoever draws knows the fonts (desktop/font_system.h); a program without a display has none.
    std::vector<std::string> FontNames() override { return {}; }
    bool SubstitutesFont(const std::string&) override { return false; }
    int AddFontFile(const std::string&) override { return 0; }
    void Complain(std::string_view line) override;
};

// The value of a name in the text of an os-release file, unquoted; empty where it is missing.
std::string OsReleaseValue(std::string_view text, std::string_view name);
// The numbers of a kernel release, "6.1.0-18-amd64" giving 6, 1 and 0, into the record.
void ReadKernelRelease(std::string_view release, VersionRecord& record);

} // namespace quorvane
