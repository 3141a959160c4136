#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The answer of the system's version query. Linux answers as a member of the NT family with the numbers of
// its kernel, since all that hangs on the family (privileges, system directory, supported or not) is right
// for it.
struct VersionRecord {
    std::int32_t dwOSVersionInfoSize = 0;
    std::int32_t dwMajorVersion = 0;
    std::int32_t dwMinorVersion = 0;
    std::int32_t dwBuildNumber = 0;
    std::int32_t dwPlatformId = 0; // 2 for the NT family, 1 for the 9x family
    std::string szCSDVersion;      // service pack
    std::uint16_t suiteMask = 0;
    std::string displayName; // what the system calls itself, where it does ("Debian GNU/Linux 12")
};

// What the system itself calls the months, from January on, and the weekdays, from Monday on, in short.
struct DateNames {
    std::array<std::string, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::array<std::string, 7> days{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
};

class System {
  public:
    virtual ~System() = default;

    virtual VersionRecord Version() = 0;
    virtual std::string UserName() = 0;
    virtual std::string ComputerName() = 0;
    virtual std::int32_t ProcessId() = 0;
    virtual std::int32_t ThreadId() = 0;
    // Directories of the system; empty where unknown.
    virtual std::string WindowsDirectory() = 0;
    virtual std::string SystemWindowsDirectory() = 0;
    // In the person's language.
    virtual DateNames ShortDateNames() = 0;
    // Text in the system's single-byte code page as UTF-8. What stands for nothing there becomes U+FFFD.
    virtual std::string CodePageText(std::string_view bytes) = 0;
    // What the desktop calls itself; empty where there is none.
    virtual std::string DesktopName() = 0;
    // The picture files that can be shown here, as a pattern for NamePattern: "*.bmp;*.jpg".
    virtual std::string PicturePatterns() = 0;
    // Asks for a right of the process by its name; false where it is not granted.
    virtual bool EnablePrivilege(std::string_view name) = 0;

    virtual std::vector<std::string> FontNames() = 0;
    // Whether the font system has a font of its own choice to show a family in that is not installed.
    virtual bool SubstitutesFont(const std::string& family) = 0;
    // Makes the fonts of a file known to this process: how many, 0 for none.
    virtual int AddFontFile(const std::string& path) = 0;

    // One line on standard error, for what a person at a terminal or a log should see; control letters in it
    // are escaped.
    virtual void Complain(std::string_view line) = 0;
};

} // namespace quorvane
