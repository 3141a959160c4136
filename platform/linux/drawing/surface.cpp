#include "platform/linux/drawing/surface.h"

#include "platform/linux/drawing/font.h"
#include "platform/linux/drawing/gui_session.h"
#include "platform/linux/drawing/picture.h"
#include "platform/painting/bitmap_file.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>
#include <limits>
#include <utility>

namespace quorvane {
namespace {

// Farther out nothing can be seen, and the painter's own arithmetic ends.
constexpr double KFarthest = 1e6;
constexpr double KInchesPerMetre = 1 / 0.0254;

QFont FontOf(const FontSpec& spec, QPaintDevice* device) {
    return QFont(FontOf(spec), device);
}

QString TextOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

LinuxSurface::LinuxSurface(const Canvas& canvas, ScreenDots dots, GuiSession& gui, MappedBuffer pixels)
    : pixels_(std::move(pixels))
    , canvas_(canvas)
    , image_(canvas.top, canvas.size.width, canvas.end - canvas.from, canvas.stride, QImage::Format_BGR888)
    , gui_(gui) {
    image_.setDotsPerMeterX(static_cast<int>(std::lround(dots.x * KInchesPerMetre)));
    image_.setDotsPerMeterY(static_cast<int>(std::lround(dots.y * KInchesPerMetre)));
}

void LinuxSurface::Fill(const PixelRect& area, Color color) {
    FillArea(canvas_, area, color);
}

void LinuxSurface::GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                                     GradientDirection direction) {
    FillGradientRectangle(canvas_, upperLeft, lowerRight, direction);
}

void LinuxSurface::GradientTriangle(const GradientVertex& a, const GradientVertex& b,
                                    const GradientVertex& c) {
    FillGradientTriangle(canvas_, a, b, c);
}

void LinuxSurface::Line(double x1, double y1, double x2, double y2, double width, Color color) {
    FillLine(canvas_, x1, y1, x2, y2, width, color);
}

bool LinuxSurface::StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) {
    return dynamic_cast<const LinuxPicture&>(picture).Draw(canvas_, target, why);
}

double LinuxSurface::TextWidth(const FontSpec& font, std::string_view text) {
    if (text.empty() || !gui_.Ready()) return 0;
    return QFontMetricsF(FontOf(font, &image_)).horizontalAdvance(TextOf(text));
}

double LinuxSurface::TextHeight(const FontSpec& font) {
    if (!gui_.Ready()) return 0;
    return QFontMetricsF(FontOf(font, &image_)).height();
}

void LinuxSurface::PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) {
    if (text.empty() || !(std::abs(x) < KFarthest) || !(std::abs(y) < KFarthest) || !gui_.Ready()) return;
    QPainter painter(&image_);
    const QFont face = FontOf(font, &image_);
    painter.setFont(face);
    painter.setPen(QColor(Red(color), Green(color), Blue(color)));
    painter.drawText(QPointF(x, y - canvas_.from + QFontMetricsF(face).ascent()), TextOf(text));
}

bool LinuxSurface::WriteBitmap(FileWriter& out) {
    return quorvane::WriteBitmap(Pixels(), out);
}

bool FitsSurface(PixelSize size) {
    return size.width > 0 && size.height > 0 && size.width <= std::numeric_limits<int>::max() / 3;
}

std::unique_ptr<LinuxSurface> MakeSurface(PixelSize size, ScreenDots dots, GuiSession& gui) {
    if (!FitsSurface(size)) return nullptr;
    const std::ptrdiff_t stride = std::ptrdiff_t{3} * size.width;
    MappedBuffer pixels(static_cast<std::size_t>(stride) * static_cast<std::size_t>(size.height));
    if (!pixels.Data()) return nullptr;
    const Canvas canvas{pixels.Data(), stride, size};
    return std::make_unique<LinuxSurface>(canvas, dots, gui, std::move(pixels));
}

} // namespace quorvane
