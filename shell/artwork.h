#pragma once

#include <memory>

namespace quorvane {

class Drawing;
class Surface;

// The small picture of the entry that changes the wallpaper: a landscape in a frame. Null where there is no
// memory for it.
std::shared_ptr<Surface> LandscapeBitmap(Drawing& drawing);

// The splash's picture, over the whole surface: evening sky, sun, three ridges.
void PaintLandscape(Surface& surface);

} // namespace quorvane
