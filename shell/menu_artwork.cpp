#include "shell/menu_artwork.h"

#include "platform/drawing.h"

namespace quorvane {

namespace {

constexpr int side = 16;
constexpr Color background = Rgb(255, 0, 255); // shown as nothing

GradientVertex Corner(int x, int y, int red, int green, int blue) {
    const auto channel = [](int value) {
        return static_cast<std::int16_t>(value * 256 - (value > 127 ? 65536 : 0));
    };
    return {x, y, channel(red), channel(green), channel(blue), 255};
}

} // namespace

std::shared_ptr<Surface> LandscapeBitmap(Drawing& drawing) {
    std::shared_ptr<Surface> bitmap = drawing.CreateSurface({side, side});
    if (!bitmap) {
        return nullptr;
    }
    bitmap->Fill({0, 0, side, side}, background);
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

} // namespace quorvane
