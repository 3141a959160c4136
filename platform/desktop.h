#pragma once

#include "platform/drawing.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane {

struct PixelPoint {
    int x = 0;
    int y = 0;
    bool operator==(const PixelPoint&) const = default;
};

// What is copied of the screen: all of it, or the window that has the person's input, with its frame or
// without.
enum class CaptureArea { Screen, TopWindow, TopWindowContent };

// The person's desktop: its size, its wallpaper, its pointer, what is to be seen on it.
class Desktop {
  public:
    virtual ~Desktop() = default;

    virtual PixelSize ScreenSize() = 0;
    // What the desktop's panels leave free of the primary screen, in its pixels from its upper left corner;
    // all of it where the desktop does not tell.
    virtual PixelRect WorkArea() = 0;
    // Makes the bitmap file the wallpaper, now and at the next log-on. The style is the one published
    // beforehand as "WallpaperStyle" of "Control Panel\Desktop": "0" centred, "1" tiled, "2" stretched.
    virtual bool SetWallpaper(const std::string& path) = 0;
    virtual void ShowBusyPointer(bool busy) = 0;

    // Counted from the upper left corner of the primary screen, in its pixels; beyond it on other screens.
    // Nothing where the desktop tells no program.
    virtual std::optional<PixelPoint> PointerPosition() = 0;

    // Hands over a copy of what is to be seen now: before the call returns where the desktop lets everybody
    // look, later, from the event loop, where it has to be asked. Null where there is no such window or the
    // desktop shows nothing of itself.
    using Captured = std::function<void(std::unique_ptr<Surface> picture)>;
    virtual void Capture(CaptureArea area, Captured done) {
        static_cast<void>(area);
        done(nullptr);
    }
};

} // namespace quorvane
