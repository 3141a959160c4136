#include "platform/linux/drawing/drawing.h"

#include "platform/files.h"
#include "platform/headless.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/striped_surface.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>
#include <QImageWriter>
#include <QScreen>

#include <malloc.h>

namespace quorvane {
namespace {

constexpr double KTwipsPerInch = 1440;
constexpr int KMostDecodedMebibytes = 512; // of the pictures inside a drawing
constexpr int KLargestPiece = 256 << 10;

ScreenDots Dots() {
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const QScreen* screen = application ? QGuiApplication::primaryScreen() : nullptr;
    if (!screen || QGuiApplication::platformName() == "offscreen") return {};
    // The toolkit keeps the logical resolution and tells the rest as a scale of its pixels; a surface has the
    // machine's pixels.
    const double scale = screen->devicePixelRatio();
    return {screen->logicalDotsPerInchX() * scale, screen->logicalDotsPerInchY() * scale};
}

} // namespace

LinuxDrawing::LinuxDrawing() {
    QImageReader::setAllocationLimit(KMostDecodedMebibytes);
    // Large pieces of memory come from the system one by one and go back to it when they are freed. By
    // default the allocator begins to keep them after the first.
    mallopt(M_MMAP_THRESHOLD, KLargestPiece);
}

std::unique_ptr<Surface> LinuxDrawing::CreateSurface(PixelSize size) {
    return MakeSurface(size, Dots(), gui_);
}

std::unique_ptr<Surface> LinuxDrawing::CreateCanvas(PixelSize size) {
    if (!FitsSurface(size)) return nullptr;
    return std::make_unique<StripedSurface>(size, Dots(), gui_);
}

std::unique_ptr<Picture> LinuxDrawing::LoadPicture(const std::string& path, std::string& why) {
    return OpenPicture(path, gui_, why);
}

bool LinuxDrawing::WritePng(const PixelView& pixels, FileWriter& out) {
    if (pixels.size.width <= 0 || pixels.size.height <= 0 || pixels.stride < 0) return false;
    const QImage image(pixels.top, pixels.size.width, pixels.size.height, pixels.stride,
                       QImage::Format_BGR888);
    // Whole before it goes out: where a write fails in its midst, Qt loses memory.
    QByteArray png;
    QBuffer buffer(&png);
    return QImageWriter(&buffer, "png").write(image) &&
           out.Write(png.constData(), static_cast<std::size_t>(png.size()));
}

double LinuxDrawing::TwipsPerPixelX() const {
    return KTwipsPerInch / Dots().x;
}

double LinuxDrawing::TwipsPerPixelY() const {
    return KTwipsPerInch / Dots().y;
}

std::unique_ptr<Drawing> CreateDrawing() {
    return std::make_unique<LinuxDrawing>();
}

} // namespace quorvane
