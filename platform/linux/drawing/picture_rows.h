#pragma once

#include "platform/painting/row_painter.h"

#include <cstdint>
#include <functional>

namespace quorvane {

// Reads row `y` of a picture into `pixels`: blue, green, red and how opaque, colours premultiplied. Rows come
// in order, without those that are not needed. False where the row cannot be had.
using RowReader = std::function<bool(int y, std::uint8_t* pixels)>;

// Changes the size of a picture on its way from the reader to the painter. False where a row was missing;
// those before it are painted.
bool PaintRows(PixelSize size, RowPainter& painter, const RowReader& read);

// The rows of a picture whose file does not hold them in order: `sweep` goes over the whole file and reads
// the rows from `from` on into `band`, as many as it has room for. A file is gone over as often as its rows
// fill the band, which is small beside a large picture.
using BandReader = std::function<bool(int from, int count, std::uint8_t* band)>;
bool PaintBands(PixelSize size, RowPainter& painter, const BandReader& sweep);

// Multiplies the colours of the pixels by their opacity.
void Premultiply(std::uint8_t* pixels, int count);

} // namespace quorvane
