#include "platform/linux/drawing/gui_session.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/svg.h"
#include "platform/painting/exif.h"
#include "platform/painting/resample.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPixelFormat>

#include <algorithm>
#include <cstring>

namespace quorvane {
namespace {

// A decoded picture of at most that size is kept for the next drawing, which a tiled wallpaper makes at once.
constexpr qsizetype KMostKept = 4 << 20;
// Rows that are brought into the common form at a time.
constexpr int KBand = 16;
// Metadata farther from the beginning of the file is not looked for.
constexpr qint64 KHeadBytes = 1 << 20;

std::string Damaged(const QString& reason) {
    return "the picture is damaged: " + reason.toStdString();
}

PixelSize FromQt(QSize size) {
    return {size.width(), size.height()};
}

Orientation FromQt(QImageIOHandler::Transformations transformation) {
    switch (transformation) {
    case QImageIOHandler::TransformationMirror:
        return OrientationOf(2);
    case QImageIOHandler::TransformationRotate180:
        return OrientationOf(3);
    case QImageIOHandler::TransformationFlip:
        return OrientationOf(4);
    case QImageIOHandler::TransformationFlipAndRotate90:
        return OrientationOf(5);
    case QImageIOHandler::TransformationRotate90:
        return OrientationOf(6);
    case QImageIOHandler::TransformationMirrorAndRotate90:
        return OrientationOf(7);
    case QImageIOHandler::TransformationRotate270:
        return OrientationOf(8);
    default:
        return {};
    }
}

bool MayShineThrough(QImage::Format format) {
    if (format == QImage::Format_Invalid || format == QImage::Format_Indexed8 ||
        format == QImage::Format_Mono || format == QImage::Format_MonoLSB)
        return true;
    return QImage::toPixelFormat(format).alphaUsage() != QPixelFormat::IgnoresAlpha;
}

void PaintScaled(const QImage& image, RowPainter& painter) {
    Resampler resampler(FromQt(image.size()), painter.StoredSize(), painter.StoredPart(),
                        [&painter](int row, const std::uint8_t* pixels) { painter.Put(row, pixels); });
    const std::size_t rowBytes = static_cast<std::size_t>(image.width()) * 4;
    for (int y = resampler.FirstRow(); y < resampler.EndRow(); y += KBand) {
        const int count = std::min(KBand, resampler.EndRow() - y);
        QImage band(image.constScanLine(y), image.width(), count, image.bytesPerLine(), image.format());
        band.setColorTable(image.colorTable());
        band.convertTo(QImage::Format_ARGB32_Premultiplied);
        for (int i = 0; i < count; ++i) {
            std::memcpy(resampler.InputRow(), band.constScanLine(i), rowBytes);
            resampler.Push();
        }
    }
}

class QtPicture final : public LinuxPicture {
  public:
    QtPicture(QString path, QByteArray format, PixelSize size, Orientation orientation, RowPainter::Mode mode)
        : LinuxPicture(size, orientation, mode)
        , path_(std::move(path))
        , format_(std::move(format)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        QImage image = kept_;
        if (image.isNull()) {
            QImageReader reader(path_, format_);
            if (!reader.read(&image)) {
                why = Damaged(reader.errorString());
                return false;
            }
            if (image.sizeInBytes() <= KMostKept) kept_ = image;
        }
        PaintScaled(image, painter);
        return true;
    }

  private:
    QString path_;
    QByteArray format_;
    mutable QImage kept_;
};

class SvgPicture final : public LinuxPicture {
  public:
    SvgPicture(QByteArray svg, PixelSize size)
        : LinuxPicture(size, {}, RowPainter::Mode::Blend)
        , svg_(std::move(svg)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override { return PaintSvg(svg_, painter, why); }

  private:
    QByteArray svg_;
};

std::unique_ptr<LinuxPicture> OpenSvg(const QString& path, std::string& why) {
    constexpr qint64 KLargest = 64 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > KLargest) {
        why = file.isOpen() ? "the drawing is too large" : file.errorString().toStdString();
        return nullptr;
    }
    QByteArray svg = file.readAll();
    QBuffer buffer(&svg);
    QImageReader reader(&buffer, "svg");
    const QSize size = reader.size();
    if (!size.isValid()) {
        why = Damaged(reader.errorString());
        return nullptr;
    }
    if (!SensibleSize(FromQt(size), why)) return nullptr;
    return std::make_unique<SvgPicture>(std::move(svg), FromQt(size));
}

Orientation StoredOrientation(const QString& path, const QImageReader& reader) {
    if (reader.transformation() != QImageIOHandler::TransformationNone)
        return FromQt(reader.transformation());
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray head = file.read(KHeadBytes);
    return OrientationOf(
        ExifOrientation(FindExif({head.constData(), static_cast<std::size_t>(head.size())})));
}

} // namespace

bool PaintSvg(const QByteArray& svg, RowPainter& painter, std::string& why) {
    const PixelSize whole = painter.StoredSize();
    const PixelRect part = painter.StoredPart();
    QBuffer buffer;
    buffer.setData(svg);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize(QSize(whole.width, whole.height));
    reader.setScaledClipRect(QRect(part.x, part.y, part.width, part.height));
    QImage image;
    if (!reader.read(&image)) {
        why = Damaged(reader.errorString());
        return false;
    }
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < std::min(part.height, image.height()) && image.width() >= part.width; ++y)
        painter.Put(y, image.constScanLine(y));
    return true;
}

std::unique_ptr<LinuxPicture> OpenQtPicture(const std::string& path, const char* format, GuiSession& gui,
                                            std::string& why) {
    const QString name = QString::fromStdString(path);
    if (std::string_view(format) == "svg") {
        if (gui.Ready()) return OpenSvg(name, why);
        why = "drawings need fonts, which are not to be had here";
        return nullptr;
    }
    QImageReader reader(name, format);
    const PixelSize size = FromQt(reader.size());
    if (!reader.canRead() || !reader.size().isValid()) {
        why = Damaged(reader.errorString());
        return nullptr;
    }
    if (!SensibleSize(size, why)) return nullptr;
    const auto mode =
        MayShineThrough(reader.imageFormat()) ? RowPainter::Mode::Blend : RowPainter::Mode::Copy;
    return std::make_unique<QtPicture>(name, format, size, StoredOrientation(name, reader), mode);
}

} // namespace quorvane
