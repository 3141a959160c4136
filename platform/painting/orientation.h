#pragma once

#include "platform/drawing.h"

namespace quorvane {

// How the stored pixels of a picture become the upright ones: first rows and columns change places if
// `transposed`, then the picture is mirrored along x and along y.
struct Orientation {
    bool transposed = false;
    bool mirrorX = false;
    bool mirrorY = false;
    bool operator==(const Orientation&) const = default;

    PixelSize Upright(PixelSize stored) const {
        return transposed ? PixelSize{stored.height, stored.width} : stored;
    }
};

// From the number in a photograph's metadata (EXIF tag 0x0112). Numbers outside 1 to 8 leave it as stored.
constexpr Orientation OrientationOf(int exif) {
    switch (exif) {
    case 2:
        return {false, true, false};
    case 3:
        return {false, true, true};
    case 4:
        return {false, false, true};
    case 5:
        return {true, false, false};
    case 6:
        return {true, true, false};
    case 7:
        return {true, true, true};
    case 8:
        return {true, false, true};
    default:
        return {};
    }
}

} // namespace quorvane
