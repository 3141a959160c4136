#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// Whose wallpaper a change aims at. Any other number saves nothing and hands the user's file over again.
namespace change_mode {
inline constexpr int User = 0;
inline constexpr int SystemDefault = 1; // the log-on's
} // namespace change_mode

// The program as its forms and subsystems know it: what one of them sets in motion that belongs to another.
// The Application is the one that runs; tests record what was asked of it.
class Program {
  public:
    virtual ~Program() = default;

    // The engine chooses the picture where `file` is empty; `mode` is a change_mode.
    virtual void ChangeWallpaper(const std::string& file, int mode) = 0;

    // Looks for pictures in the sources, where a scan is due.
    virtual void BuildFileList() = 0;

    // The record to the tree.
    virtual void WriteSettings() = 0;

    // The orderly exit, and the exit without saving. Neither comes back in a running program.
    virtual void SaveAndEnd() = 0;
    virtual void ReleaseAndEnd() = 0;

    // Shows a failure and ends the process when the dialogue is closed.
    virtual void ShowErrorDialog(std::int32_t number, const std::string& description) = 0;
};

} // namespace quorvane
