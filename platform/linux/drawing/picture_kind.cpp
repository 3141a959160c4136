#include "platform/linux/drawing/picture_kind.h"

#include <algorithm>

namespace quorvane {
namespace {

using namespace std::string_view_literals;

struct Start {
    std::string_view bytes;
    PictureKind kind;
};
constexpr Start Starts[] = {
    {"\xFF\xD8\xFF"sv, PictureKind::Jpeg},
    {"\x89PNG\r\n\x1A\n"sv, PictureKind::Png},
    {"GIF87a"sv, PictureKind::Gif},
    {"GIF89a"sv, PictureKind::Gif},
    {"BM"sv, PictureKind::Bitmap},
    {"II*\0"sv, PictureKind::Tiff},
    {"MM\0*"sv, PictureKind::Tiff},
    {"\xD7\xCD\xC6\x9A"sv, PictureKind::WindowsMetafile},
    {"\1\0\x9\0\0"sv, PictureKind::WindowsMetafile},
    {"\2\0\x9\0\0"sv, PictureKind::WindowsMetafile},
};

bool Holds(std::string_view head, std::size_t at, std::string_view text) {
    return head.size() >= at + text.size() && head.substr(at, text.size()) == text;
}

bool LooksLikeSvg(std::string_view head) {
    if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
    head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n"), head.size()));
    return head.starts_with("<") && (head.find("<svg") != head.npos || head.starts_with("<?xml") ||
                                     head.find("<!DOCTYPE svg") != head.npos);
}

} // namespace

PictureKind KindOf(std::string_view head) {
    for (const Start& start : Starts)
        if (head.starts_with(start.bytes)) return start.kind;
    if (head.starts_with("RIFF") && Holds(head, 8, "WEBP")) return PictureKind::Webp;
    if (head.starts_with("\1\0\0\0"sv) && Holds(head, 40, " EMF")) return PictureKind::EnhancedMetafile;
    return LooksLikeSvg(head) ? PictureKind::Svg : PictureKind::Unknown;
}

} // namespace quorvane
