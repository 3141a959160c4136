#include "platform/linux/drawing/child.h"
#include "platform/linux/drawing/gui_session.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/svg.h"

#include <QByteArray>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <emf2svg.h>

#include <libwmf/api.h>
#include <libwmf/svg.h>

namespace quorvane {
namespace {

constexpr double KScreenDots = 96; // an inch, as the pictures of metafiles are measured
constexpr std::chrono::seconds KMostTime{10};

// The numbers of a metafile's header. Beyond its end they read as 0.
class Header {
  public:
    explicit Header(const QByteArray& bytes)
        : bytes_(bytes) {}
    int Short(qsizetype at) const { return Read<std::int16_t>(at); }
    int Long(qsizetype at) const { return Read<std::int32_t>(at); }
    qsizetype Bytes() const { return bytes_.size(); }

  private:
    template<typename Number>
    Number Read(qsizetype at) const {
        Number number = 0;
        if (at >= 0 && at <= bytes_.size() - static_cast<qsizetype>(sizeof number))
            std::memcpy(&number, bytes_.constData() + at, sizeof number);
        return number;
    }
    const QByteArray& bytes_;
};

PixelSize SizeInPixels(double width, double height, double unitsPerInch) {
    const auto pixels = [unitsPerInch](double units) {
        return static_cast<int>(std::lround(std::min(std::abs(units) / unitsPerInch * KScreenDots, 1e9)));
    };
    return {pixels(width), pixels(height)};
}

// The frame of an enhanced metafile is in hundredths of a millimetre.
PixelSize EnhancedSize(const Header& header) {
    return SizeInPixels(static_cast<double>(header.Long(32)) - header.Long(24),
                        static_cast<double>(header.Long(36)) - header.Long(28), 2540);
}

// A placeable metafile tells its frame and its unit. Of any other the window that it sets itself is taken, in
// twips.
PixelSize WindowsSize(const Header& header) {
    constexpr int KSetWindowExtent = 0x020C;
    constexpr qsizetype KHeaderBytes = 18;
    if (static_cast<std::uint32_t>(header.Long(0)) == 0x9AC6CDD7U)
        return SizeInPixels(header.Short(10) - header.Short(6), header.Short(12) - header.Short(8),
                            std::max(static_cast<int>(static_cast<std::uint16_t>(header.Short(14))), 1));
    for (qsizetype at = KHeaderBytes; at + 6 <= header.Bytes();) {
        if (header.Short(at + 4) == KSetWindowExtent)
            return SizeInPixels(header.Short(at + 8), header.Short(at + 6), 1440);
        const qsizetype words = header.Long(at);
        if (words < 3) break;
        at += 2 * words;
    }
    return {};
}

bool ConvertWindows(const std::string& path, std::FILE* out) {
    wmfAPI_Options options{};
    options.function = wmf_svg_function;
    wmfAPI* api = nullptr;
    constexpr unsigned long KFlags =
        WMF_OPT_FUNCTION | WMF_OPT_IGNORE_NONFATAL | WMF_OPT_NO_ERROR | WMF_OPT_NO_DEBUG;
    wmfD_Rect box{};
    if (wmf_api_create(&api, KFlags, &options) != wmf_E_None) return false;
    if (wmf_file_open(api, path.c_str()) != wmf_E_None || wmf_scan(api, 0, &box) != wmf_E_None) return false;
    wmf_svg_t* device = WMF_SVG_GetData(api);
    device->out = wmf_stream_create(api, out);
    device->bbox = box;
    device->flags |= WMF_SVG_INLINE_IMAGES;
    wmf_display_size(api, &device->width, &device->height, KScreenDots, KScreenDots);
    return wmf_play(api, 0, &box) == wmf_E_None;
}

bool ConvertEnhanced(QByteArray bytes, std::FILE* out) {
    generatorOptions options{};
    options.emfplus = true;
    options.svgDelimiter = true;
    char* svg = nullptr;
    std::size_t length = 0;
    return emf2svg(bytes.data(), static_cast<std::size_t>(bytes.size()), &svg, &length, &options) == 1 &&
           std::fwrite(svg, 1, length, out) == length;
}

class MetafilePicture final : public LinuxPicture {
  public:
    MetafilePicture(std::string path, Metafile kind, PixelSize size)
        : LinuxPicture(size, {}, RowPainter::Mode::Blend)
        , path_(std::move(path))
        , kind_(kind) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        if (svg_.isEmpty()) svg_ = WithoutOutside(Convert());
        if (!svg_.isEmpty()) return PaintSvg(svg_, painter, why);
        why = "the metafile is damaged";
        return false;
    }

  private:
    QByteArray Convert() const {
        if (kind_ == Metafile::Windows)
            return OutputOfChild([this](std::FILE* out) { return ConvertWindows(path_, out); }, KMostTime);
        QByteArray bytes;
        std::string why;
        if (!ReadWhole(path_, bytes, why)) return {};
        return OutputOfChild([&bytes](std::FILE* out) { return ConvertEnhanced(bytes, out); }, KMostTime);
    }

    std::string path_;
    Metafile kind_;
    mutable QByteArray svg_; // of the first drawing on
};

} // namespace

std::unique_ptr<LinuxPicture> OpenMetafile(const std::string& path, Metafile kind, GuiSession& gui,
                                           std::string& why) {
    QByteArray bytes;
    if (!ReadWhole(path, bytes, why)) return nullptr;
    const Header header(bytes);
    const PixelSize size = kind == Metafile::Enhanced ? EnhancedSize(header) : WindowsSize(header);
    if (size.width == 0 || size.height == 0) {
        why = "the metafile tells no size";
        return nullptr;
    }
    if (!SensibleSize(size, why)) return nullptr;
    if (!gui.Ready()) {
        why = "no fonts are available";
        return nullptr;
    }
    return std::make_unique<MetafilePicture>(path, kind, size);
}

} // namespace quorvane
