#pragma once

#include <string_view>

namespace quorvane {

// The orientation in a block of EXIF metadata, which begins with its byte order ("II" or "MM"): 1 to 8, or 1
// where the block names none or is damaged.
int ExifOrientation(std::string_view block);

// The EXIF block of a JPEG, WebP or PNG file, of which `head` is the beginning; empty where there is none in
// it.
std::string_view FindExif(std::string_view head);

} // namespace quorvane
