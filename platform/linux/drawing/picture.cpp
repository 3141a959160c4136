#include "platform/linux/drawing/picture.h"

#include "platform/linux/drawing/quiet_qt.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <sys/stat.h>

namespace quorvane {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t KMostKept = std::size_t{32} << 20;
constexpr std::int64_t KMostPixels = std::int64_t{1} << 30;

struct Kind {
    std::string_view start;
    const char* format;
};
constexpr Kind KQtKinds[] = {
    {"\x89PNG\r\n\x1A\n"sv, "png"},
    {"GIF87a"sv, "gif"},
    {"GIF89a"sv, "gif"},
    {"BM"sv, "bmp"},
    {"II*\0"sv, "tiff"},
    {"MM\0*"sv, "tiff"},
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

bool SensibleSize(PixelSize size, std::string& why) {
    if (size.width > 0 && size.height > 0 && std::int64_t{size.width} * size.height <= KMostPixels)
        return true;
    why = "the picture is too large, " + std::to_string(size.width) + " by " + std::to_string(size.height) +
          " pixels";
    return false;
}

bool LinuxPicture::Keep(PixelSize size) const {
    const std::size_t bytes =
        static_cast<std::size_t>(size.width) * 3 * static_cast<std::size_t>(size.height);
    return mode_ == RowPainter::Mode::Copy && size == lastSize_ && bytes <= KMostKept;
}

bool LinuxPicture::DrawAnew(const Canvas& canvas, const PixelRect& target, std::string& why) const {
    const QuietQt quiet;
    RowPainter painter(canvas, target, orientation_, mode_);
    const bool drawn = Render(painter, why);
    painter.Finish();
    return drawn;
}

bool LinuxPicture::Draw(const Canvas& canvas, const PixelRect& target, std::string& why) const {
    const PixelRect part = Clip(target, canvas.size);
    if (part.width == 0) return true;
    const PixelSize size{target.width, target.height};
    if (!kept_.Data() && Keep(size)) {
        kept_ =
            MappedBuffer(static_cast<std::size_t>(size.width) * 3 * static_cast<std::size_t>(size.height));
        keptSize_ = size;
        if (kept_.Data() && !DrawAnew({kept_.Data(), std::ptrdiff_t{3} * size.width, size},
                                      {0, 0, size.width, size.height}, why)) {
            kept_ = {};
            return false;
        }
    }
    lastSize_ = size;
    if (!kept_.Data() || keptSize_ != size) return DrawAnew(canvas, target, why);
    for (int y = part.y; y < part.y + part.height; ++y) {
        const std::size_t from =
            (static_cast<std::size_t>(y - target.y) * static_cast<std::size_t>(size.width) +
             static_cast<std::size_t>(part.x - target.x)) *
            3;
        std::memcpy(canvas.Row(y) + std::ptrdiff_t{3} * part.x, kept_.Data() + from,
                    static_cast<std::size_t>(part.width) * 3);
    }
    return true;
}

std::unique_ptr<LinuxPicture> OpenPicture(const std::string& path, GuiSession& gui, std::string& why) {
    const QuietQt quiet;
    std::array<char, 1024> bytes{};
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        why = "not a regular file"; // a pipe would be waited for until somebody writes to it
        return nullptr;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        why = std::strerror(errno);
        return nullptr;
    }
    const std::string_view head(bytes.data(), std::fread(bytes.data(), 1, bytes.size(), file));
    std::fclose(file);
    if (head.empty()) {
        why = "the file is empty";
        return nullptr;
    }
    if (head.starts_with("\xFF\xD8\xFF")) return OpenJpeg(path, why);
    if (head.starts_with("RIFF") && Holds(head, 8, "WEBP")) return OpenQtPicture(path, "webp", gui, why);
    if (head.starts_with("\xD7\xCD\xC6\x9A") || head.starts_with("\1\0\x9\0\0"sv) ||
        head.starts_with("\2\0\x9\0\0"sv))
        return OpenMetafile(path, Metafile::Windows, gui, why);
    if (head.starts_with("\1\0\0\0"sv) && Holds(head, 40, " EMF"))
        return OpenMetafile(path, Metafile::Enhanced, gui, why);
    for (const Kind& kind : KQtKinds)
        if (head.starts_with(kind.start)) return OpenQtPicture(path, kind.format, gui, why);
    if (LooksLikeSvg(head)) return OpenQtPicture(path, "svg", gui, why);
    why = "no picture of a known format";
    return nullptr;
}

} // namespace quorvane
