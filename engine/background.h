#pragma once

#include "config/global_record.h"
#include "platform/drawing.h"
#include "platform/random.h"

#include <array>

namespace quorvane {

// Corners of the three gradient styles: 0 and 1 for top to bottom, 2 and 3 for left to right, 4 to 6 and 7 to
// 9 for the two triangles of the four-coloured one.
using GradientVertices = std::array<GradientVertex, 10>;

// With the colours of the settings.
GradientVertices SettingsVertices(const GlobalRecord& record, PixelSize canvas);

// Draws colours within the limits of the settings, 24 numbers in all: the corners in their order with red,
// green and blue each, except that the second triangle takes the two corners that it shares with the first,
// which joins them.
void DrawRandomColors(GradientVertices& vertices, const GlobalRecord& record, Random& random);

// What lies under the picture, on a canvas that is black so far. Only the positions that place a picture on
// the background have one; the others stay black.
void PaintBackground(Surface& canvas, const GradientVertices& vertices, const GlobalRecord& record,
                     Random& random);

} // namespace quorvane
