#pragma once

#include "platform/painting/row_painter.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace quorvane {

// Paints one picture time and again. A tiled wallpaper wants a small one hundreds of times at the same size:
// it is rendered once, kept at that size and laid down from there.
class Tiling {
  public:
    // Decodes the picture and puts the rows that painter.StoredPart() asks for; false where it cannot.
    using Render = std::function<bool(RowPainter& painter)>;

    // The picture onto `target`, which reaches into the canvas.
    bool Paint(const Canvas& canvas, const PixelRect& target, Orientation orientation, RowPainter::Mode mode,
               const Render& render);

  private:
    bool Keep(PixelSize size, Orientation orientation, const Render& render);

    PixelSize lastSize_;
    PixelSize keptSize_;
    std::vector<std::uint8_t> kept_; // four bytes a pixel, upright
};

} // namespace quorvane
