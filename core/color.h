#pragma once

#include <cstdint>

namespace quorvane {

// A 24-bit colour with red in the low byte: 0x00BBGGRR.
using Color = std::int32_t;

constexpr Color Rgb(int red, int green, int blue) {
    return (red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16);
}
constexpr int Red(Color color) {
    return color & 0xFF;
}
constexpr int Green(Color color) {
    return (color >> 8) & 0xFF;
}
constexpr int Blue(Color color) {
    return (color >> 16) & 0xFF;
}

} // namespace quorvane
