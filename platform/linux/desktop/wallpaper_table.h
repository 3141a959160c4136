#pragma once

#include "platform/drawing.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

class Files;
class Patience;

// The style that the logic publishes: its words are "0", "1" and "2".
enum class WallpaperStyle { Centred, Tiled, Stretched };

WallpaperStyle ToWallpaperStyle(std::string_view published);

// What a desktop is told, and where it may be told it.
struct Handover {
    std::string file; // absolute
    WallpaperStyle style = WallpaperStyle::Centred;
    PixelSize screen;                  // for which the file was made
    std::string stateFolder;           // "quorvane" under $XDG_STATE_HOME
    std::vector<std::string> monitors; // names of the outputs: "HDMI-1"
    int workspaces = 1;
    // Paints the root window of plain X.
    std::function<bool(const std::string& file, WallpaperStyle style)> paintRoot;
};

// One desktop: by which names it announces itself, and how it is told of a new wallpaper.
struct DesktopRow {
    std::vector<std::string_view> names;
    bool (*tell)(const Handover& handover, Patience& patience) = nullptr;
    // The file that the desktop says it shows; empty where it does not answer. Null where none can be asked.
    std::string (*shown)(Patience& patience) = nullptr;
    // Paints what it is given by itself, now and whenever it likes. Plain X alone does not: it shows a
    // picture of ours.
    bool paintsItself = true;
};

// The row for a value of XDG_CURRENT_DESKTOP, names parted by ":" with the closest one first. Names are
// compared without regard to case. The row of plain X where none fits.
const DesktopRow& FindDesktopRow(std::string_view currentDesktop);

// Makes the file the wallpaper of the desktop. One that paints itself gets a copy from the state folder,
// under a new name each time, and without the border that a screen would have to shrink.
bool HandOver(const DesktopRow& row, const Handover& handover, Files& files, Patience& patience);

} // namespace quorvane
