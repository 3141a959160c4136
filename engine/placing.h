#pragma once

#include "platform/drawing.h"

#include <functional>

namespace quorvane {

// Values of WallpaperPosition.
namespace wallpaper_position {
inline constexpr int Center = 0;
inline constexpr int Tile = 1;
inline constexpr int Stretch = 2;
inline constexpr int CenterOnBackground = 3;
inline constexpr int FitOnBackground = 4;
} // namespace wallpaper_position

// The canvas is this much wider and higher than the target it stands for, and what is drawn is scaled to
// cover it.
inline constexpr int CanvasMargin = 4; // pixels

// Calls `draw` with each rectangle of the canvas that a picture of this size is stretched onto, in the order
// of drawing; never for an unknown position. One scale factor, of the height, serves both axes. Places are
// rounded half to even. Throws DivisionByZero for a picture or target without extent, and Overflow for
// places beyond 32 bits.
void PlacePicture(int position, PixelSize target, PixelSize picture,
                  const std::function<void(const PixelRect&)>& draw);

} // namespace quorvane
