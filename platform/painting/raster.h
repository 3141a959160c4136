#pragma once

#include "platform/drawing.h"

#include <cstddef>
#include <cstdint>

namespace quorvane {

// Pixels to paint on, laid out as those of a PixelView. Whoever made the view owns them. A stripe of a canvas
// has the rows `from` to `end` alone; what is painted on it lies where it lies on the whole.
struct Canvas {
    std::uint8_t* top = nullptr; // row `from`
    std::ptrdiff_t stride = 0;
    PixelSize size; // of the whole
    int from = 0;
    int end = size.height;

    std::uint8_t* Row(int y) const { return top + (y - from) * stride; }
    PixelView View() const { return {top, stride, size}; } // of a whole canvas
    PixelRect Area() const { return {0, from, size.width, end - from}; }
};

// The part of `area` that lies within `bounds`, or on a surface of this size; empty (0, 0, 0, 0) where
// nothing does.
PixelRect Clip(const PixelRect& area, const PixelRect& bounds);
PixelRect Clip(const PixelRect& area, PixelSize size);

// The channel of a vertex as a number from 0 to 65535.
constexpr std::uint32_t ChannelLevel(std::int16_t channel) {
    return static_cast<std::uint16_t>(channel);
}

// The primitives of a surface in software. Everything outside the canvas is cut.
void FillArea(const Canvas& canvas, const PixelRect& area, Color color);

// A pixel `position` steps from the first corner, of `length` in all, has the channel
// (first * (length - position) + second * position) / length, cut to its high byte. The right and the lower
// edge are not painted. Corners in the wrong order are put right together with their colours.
void FillGradientRectangle(const Canvas& canvas, const GradientVertex& upperLeft,
                           const GradientVertex& lowerRight, GradientDirection direction);

// Colours run linearly between the corners. A pixel belongs to the triangle if its upper left corner does,
// points on a left or an upper edge included, those on a right or a lower edge not: two triangles with a
// common edge leave no gap and paint no pixel twice.
void FillGradientTriangle(const Canvas& canvas, const GradientVertex& a, const GradientVertex& b,
                          const GradientVertex& c);

// As Surface::Line. Lines that begin or end more than 10 million pixels away are left out.
void FillLine(const Canvas& canvas, double x1, double y1, double x2, double y2, double width, Color color);

} // namespace quorvane
