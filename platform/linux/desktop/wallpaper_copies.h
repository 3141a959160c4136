#pragma once

#include "platform/drawing.h"

#include <string>

namespace quorvane {

class Files;

// The copies of the wallpaper that desktops are given in its place, in a folder of the program's own. A
// desktop knows a picture by its name and may keep what it once read under it: no name is used twice.
class WallpaperCopies {
  public:
    WallpaperCopies(Files& files, std::string folder)
        : files_(files)
        , folder_(std::move(folder)) {}

    // A copy of the bitmap file, cut to `cutTo` where it is that with a composed wallpaper's border around
    // it; {} cuts nothing. Where no copy can be made, the file itself.
    std::string Make(const std::string& file, PixelSize cutTo);

    // Whether the desktop took the copy. It may still be reading the one that it took before; others go.
    void Settle(const std::string& copy, bool taken);

  private:
    Files& files_;
    std::string folder_;
};

} // namespace quorvane
