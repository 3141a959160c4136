#include "platform/linux/drawing/picture.h"

#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_kind.h"
#include "platform/linux/drawing/quiet_qt.h"
#include "platform/painting/exif.h"

#include <array>
#include <vector>

namespace quorvane {

bool SensibleSize(PixelSize size, std::string& why) {
    constexpr std::int64_t MostPixels = std::int64_t{1} << 30;
    if (size.width <= 0 || size.height <= 0) {
        why = "the picture is damaged: it has no size";
        return false;
    }
    if (std::int64_t{size.width} * size.height <= MostPixels) return true;
    why = "the picture is too large, " + std::to_string(size.width) + " by " + std::to_string(size.height) +
          " pixels";
    return false;
}

Orientation NotedOrientation(const std::string& path) {
    constexpr std::size_t HeadBytes = 1 << 20;
    std::string why;
    const PictureFile file = OpenPictureFile(path, why);
    if (!file) return {};
    std::vector<char> head(HeadBytes);
    head.resize(std::fread(head.data(), 1, head.size(), file.get()));
    return OrientationOf(ExifOrientation(FindExif({head.data(), head.size()})));
}

bool LinuxPicture::Draw(const Canvas& canvas, const PixelRect& target, std::string& why) const {
    if (Clip(target, canvas.size).width == 0) return true;
    return tiling_.Paint(canvas, target, orientation_, mode_, [&](RowPainter& painter) {
        const QuietQt quiet;
        return Render(painter, why);
    });
}

bool LinuxPicture::DrawRows(PixelSize canvas, RowPainter::Rows rows, const PixelRect& target,
                            std::string& why) const {
    if (Clip(target, canvas).width == 0) return true;
    const QuietQt quiet;
    RowPainter painter(canvas, std::move(rows), target, orientation_, mode_);
    const bool rendered = Render(painter, why);
    painter.Finish();
    return rendered;
}

std::unique_ptr<LinuxPicture> OpenPicture(const std::string& path, GuiSession& gui, std::string& why) {
    const QuietQt quiet;
    std::array<char, 1024> bytes{};
    std::size_t count = 0;
    if (const PictureFile file = OpenPictureFile(path, why)) {
        count = std::fread(bytes.data(), 1, bytes.size(), file.get());
    } else {
        return nullptr;
    }
    if (count == 0) {
        why = "the file is empty";
        return nullptr;
    }
    switch (KindOf({bytes.data(), count})) {
    case PictureKind::Bitmap:
        return OpenBitmap(path, why);
    case PictureKind::EnhancedMetafile:
        return OpenMetafile(path, Metafile::Enhanced, gui, why);
    case PictureKind::Gif:
        return OpenGif(path, why);
    case PictureKind::Jpeg:
        return OpenJpeg(path, why);
    case PictureKind::Png:
        return OpenPng(path, why);
    case PictureKind::Svg:
        return OpenSvg(path, gui, why);
    case PictureKind::Tiff:
        return OpenTiff(path, why);
    case PictureKind::Webp:
        return OpenWebp(path, why);
    case PictureKind::WindowsMetafile:
        return OpenMetafile(path, Metafile::Windows, gui, why);
    case PictureKind::Unknown:
        break;
    }
    why = "no picture of a known format";
    return nullptr;
}

} // namespace quorvane
