#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

// Flag words of Workstation::Exit. A force flag is added to one of the first four.
namespace exit_flag {
inline constexpr std::uint32_t LogOff = 0;
inline constexpr std::uint32_t Shutdown = 1;
inline constexpr std::uint32_t Reboot = 2;
inline constexpr std::uint32_t PowerOff = 8;
inline constexpr std::uint32_t Force = 4;        // without asking programs
inline constexpr std::uint32_t ForceIfHung = 16; // without asking programs that do not answer
} // namespace exit_flag

// The whole machine and the person's session upon it. Each answer tells whether the system took the request,
// never what became of it.
class Workstation {
  public:
    virtual ~Workstation() = default;

    virtual bool StartScreenSaver() = 0;
    virtual bool Lock() = 0;
    // Ends the session or the machine.
    virtual bool Exit(std::uint32_t flags) = 0;

    // An operation of the desktop's shell by its name, letter case aside: "MinimizeAll", "UndoMinimizeALL",
    // "CascadeWindows", "TileHorizontally", "TileVertically", "FileRun", "FindComputer", "FindFiles",
    // "ShutdownWindows".
    virtual bool RunShellVerb(std::string_view verb) = 0;
    // A page of the system's settings by the argument of the control panel: "desk.cpl,1,1".
    virtual bool OpenControlPanel(std::string_view argument) = 0;
};

} // namespace quorvane
