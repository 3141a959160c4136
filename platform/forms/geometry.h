#pragma once

#include "platform/drawing.h"

#include <algorithm>
#include <cmath>

namespace quorvane {

// Places and sizes of forms and controls are twips, 1/1440 inch, with y growing downwards.

struct TwipPoint {
    int x = 0;
    int y = 0;
    bool operator==(const TwipPoint&) const = default;
};

struct TwipSize {
    int width = 0;
    int height = 0;
    bool operator==(const TwipSize&) const = default;
};

struct TwipRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const TwipRect&) const = default;
};

// Room at the four sides.
struct Insets {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

inline TwipSize operator+(const TwipSize& size, const Insets& around) {
    return {size.width + around.left + around.right, size.height + around.top + around.bottom};
}

// As wide as the wider one, as high as the higher.
inline TwipSize Larger(const TwipSize& a, const TwipSize& b) {
    return {std::max(a.width, b.width), std::max(a.height, b.height)};
}

// Twips a pixel of the screen.
struct TwipScale {
    double x = 15;
    double y = 15;

    int PixelsX(int twips) const { return static_cast<int>(std::lround(twips / x)); }
    int PixelsY(int twips) const { return static_cast<int>(std::lround(twips / y)); }
    int TwipsX(int pixels) const { return static_cast<int>(std::lround(pixels * x)); }
    int TwipsY(int pixels) const { return static_cast<int>(std::lround(pixels * y)); }
};

// The one place where a place in twips becomes pixels. Edges are rounded, not sizes, so that neighbours that
// touch in twips touch on the screen.
inline PixelRect ToPixels(const TwipRect& area, const TwipScale& scale) {
    const int left = scale.PixelsX(area.x);
    const int top = scale.PixelsY(area.y);
    return {left, top, scale.PixelsX(area.x + area.width) - left, scale.PixelsY(area.y + area.height) - top};
}

} // namespace quorvane
