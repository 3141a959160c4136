#pragma once

#include <string_view>

namespace quorvane {

enum class PictureKind {
    Unknown,
    Bitmap,
    EnhancedMetafile,
    Gif,
    Jpeg,
    Png,
    Svg,
    Tiff,
    Webp,
    WindowsMetafile
};

// By the first bytes of a file, of which a thousand are enough.
PictureKind KindOf(std::string_view head);

} // namespace quorvane
