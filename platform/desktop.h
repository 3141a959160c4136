#pragma once

#include "platform/drawing.h"

#include <string>

namespace quorvane {

// The person's desktop: its size, its wallpaper, its pointer.
class Desktop {
  public:
    virtual ~Desktop() = default;

    virtual PixelSize ScreenSize() = 0;
    // Makes the bitmap file the wallpaper, now and at the next log-on. The style is the one published
    // beforehand as "WallpaperStyle" of "Control Panel\Desktop": "0" centred, "1" tiled, "2" stretched.
    virtual bool SetWallpaper(const std::string& path) = 0;
    virtual void ShowBusyPointer(bool busy) = 0;
};

} // namespace quorvane
