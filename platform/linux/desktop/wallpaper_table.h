#pragma once

#include "platform/drawing.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The style that the logic publishes: its words are "0", "1" and "2".
enum class WallpaperStyle { Centred, Tiled, Stretched };

WallpaperStyle ToWallpaperStyle(std::string_view published);

// What a desktop is told, and where it may be told it.
struct Handover {
    std::string file; // absolute
    WallpaperStyle style = WallpaperStyle::Centred;
    std::string stateFolder;           // "quorvane" under $XDG_STATE_HOME
    std::vector<std::string> monitors; // names of the outputs: "HDMI-1"
    int workspaces = 1;
    // Paints the root window of plain X.
    std::function<bool(const std::string& file, WallpaperStyle style)> paintRoot;
};

// One desktop: by which names it announces itself, whether it fails to notice a file that changes under the
// same name, and how it is told of a new one.
struct DesktopRow {
    std::vector<std::string_view> names;
    bool missesChange = false;
    bool (*tell)(const Handover& handover) = nullptr;
};

// The row for a value of XDG_CURRENT_DESKTOP, names parted by ":" with the closest one first. Names are
// compared without regard to case. The row of plain X where none fits.
const DesktopRow& FindDesktopRow(std::string_view currentDesktop);

// Makes the file the wallpaper of the desktop. Where the row says so, the desktop gets the file under one of
// two names in the state folder, never the name it knows already.
bool HandOver(const DesktopRow& row, const Handover& handover);

} // namespace quorvane
