#include "shell/artwork.h"

#include "platform/drawing.h"

#include <cmath>

namespace quorvane {

namespace {

constexpr int Side = 16;
constexpr Color Background = Rgb(255, 0, 255); // shown as nothing

GradientVertex Corner(int x, int y, int red, int green, int blue) {
    const auto channel = [](int value) {
        return static_cast<std::int16_t>(value * 256 - (value > 127 ? 65536 : 0));
    };
    return {x, y, channel(red), channel(green), channel(blue), 255};
}

} // namespace

std::shared_ptr<Surface> LandscapeBitmap(Drawing& drawing) {
    std::shared_ptr<Surface> bitmap = drawing.CreateSurface({Side, Side});
    if (!bitmap) return nullptr;
    bitmap->Fill({0, 0, Side, Side}, Background);
    bitmap->Fill({1, 2, 14, 12}, Rgb(60, 82, 112));
    bitmap->GradientRectangle(Corner(2, 3, 66, 140, 204), Corner(14, 13, 250, 214, 150),
                              GradientDirection::TopToBottom);
    bitmap->Fill({10, 4, 2, 2}, Rgb(255, 244, 200));
    for (int row = 0; row < 5; ++row) { // two hills, wider from row to row
        bitmap->Fill({5 - row, 8 + row, 2 * row + 1 - (row > 3 ? 1 : 0), 1}, Rgb(44, 132, 84));
        bitmap->Fill({10 - row, 8 + row, row + 4, 1}, Rgb(30, 98, 62));
    }
    return bitmap;
}

// The ridges are columns of one pixel, each from its height to the lower edge; heights are sums of two waves.
void PaintLandscape(Surface& surface) {
    const PixelSize size = surface.Size();
    surface.GradientRectangle(Corner(0, 0, 27, 58, 110), Corner(size.width, size.height, 252, 196, 130),
                              GradientDirection::TopToBottom);
    const int radius = size.height / 6;
    const int sunX = size.width * 7 / 10;
    const int sunY = size.height * 4 / 10;
    for (int y = -radius; y <= radius; ++y) {
        const int half = static_cast<int>(std::lround(std::sqrt(radius * radius - y * y)));
        surface.Fill({sunX - half, sunY + y, 2 * half + 1, 1}, Rgb(255, 240, 205));
    }
    struct Ridge {
        double base; // of the height, from above
        double wave;
        double phase;
        Color color;
    };
    for (const Ridge& ridge :
         {Ridge{0.58, 0.16, 0.4, Rgb(98, 112, 156)}, Ridge{0.74, 0.12, 2.1, Rgb(58, 82, 118)},
          Ridge{0.90, 0.09, 4.0, Rgb(30, 52, 70)}}) {
        for (int x = 0; x < size.width; ++x) {
            const double place = 6.283 * x / size.width;
            const double rise =
                0.7 * std::sin(1.5 * place + ridge.phase) + 0.3 * std::sin(5.0 * place + 2 * ridge.phase);
            const int top = static_cast<int>(size.height * (ridge.base - ridge.wave * rise));
            surface.Fill({x, top, 1, size.height - top}, ridge.color);
        }
    }
}

} // namespace quorvane
