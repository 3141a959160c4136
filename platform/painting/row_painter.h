#pragma once

#include "platform/painting/orientation.h"
#include "platform/painting/raster.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace quorvane {

// Puts the stored rows of a picture, already in their final size, upright onto a canvas. A pixel is four
// bytes: blue, green, red and, premultiplied, how opaque it is.
class RowPainter {
  public:
    // Copy takes every pixel as opaque. Keep is for a canvas of four bytes a pixel, which takes them as they
    // are.
    enum class Mode { Copy, Blend, Keep };

    // Gives a row of the canvas, whole and ready to be painted on. They are asked for from the top down where
    // the orientation neither transposes nor mirrors along y.
    using Rows = std::function<std::uint8_t*(int y)>;

    // `target` must reach into the canvas.
    RowPainter(PixelSize canvas, Rows rows, const PixelRect& target, Orientation orientation, Mode mode);
    RowPainter(const Canvas& canvas, const PixelRect& target, Orientation orientation, Mode mode);

    // The whole of the target and the part of it that lies on the canvas, both as the rows are stored.
    PixelSize StoredSize() const { return storedSize_; }
    PixelRect StoredPart() const { return storedPart_; }

    // Row `row` of StoredPart(), from the top and without gaps.
    void Put(int row, const std::uint8_t* pixels);
    // After the last row.
    void Finish();

  private:
    void PutPixels(int x, int y, const std::uint8_t* pixels, int count);

    Rows rows_;
    PixelRect visible_;
    Orientation orientation_;
    Mode mode_;
    PixelSize storedSize_;
    PixelRect storedPart_;
    std::vector<std::uint8_t> reversed_;
    // Stored rows become columns: a few are gathered, so that each row of the canvas takes a run of pixels.
    std::vector<std::uint8_t> gathered_;
    int gatheredFrom_ = 0;
    int gatheredCount_ = 0;
};

// Lays a picture down that is upright and of the size of `target` already, four bytes a pixel, row by row
// without gaps; the mode is Copy or Blend.
void LayDown(const std::uint8_t* pixels, const Canvas& canvas, const PixelRect& target,
             RowPainter::Mode mode);

} // namespace quorvane
