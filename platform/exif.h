#pragma once

#include <string_view>

namespace quorvane {

// How much of a JPEG file the orientation lies in.
inline constexpr std::size_t ExifReach = 128 * 1024;

// The orientation that a photograph carries, from the beginning of its JPEG file: 1 for upright, 2 to 4
// mirrored or upside down, 5 to 8 lying on its side. 1 for every file that does not say, or that is no JPEG.
// Source: CIPA DC-008 (Exif), tag 274 of the first image directory.
int ExifOrientation(std::string_view beginning);

} // namespace quorvane
