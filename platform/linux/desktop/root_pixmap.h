#pragma once

#include "platform/linux/desktop/wallpaper_table.h"

#include <QImage>
#include <string>
#include <vector>

namespace quorvane {

// The wallpaper of a screen of plain X: a pixmap of the root window's size that stays when the program has
// gone, made known to window managers, panels and terminals by the two properties in which they look for it.
// `monitors` are the parts of the screen that each show the whole picture. False where there is no X server
// or the file cannot be read.
bool PaintRootWindow(const std::string& file, WallpaperStyle style, const std::vector<PixelRect>& monitors);

// Whether the root window shows just what PaintRootWindow would make of the same.
bool RootWindowShows(const std::string& file, WallpaperStyle style, const std::vector<PixelRect>& monitors);

// What one monitor of `size` shows of a picture. Stretched, a picture that is at most 4 pixels larger than
// the monitor is cut at its border instead, and stays crisp.
QImage MonitorPicture(const QImage& picture, WallpaperStyle style, PixelSize size);

} // namespace quorvane
