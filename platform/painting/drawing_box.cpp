#include "platform/painting/drawing_box.h"

#include "core/numbers.h"

#include <algorithm>

namespace quorvane {
namespace {

// A whole pixel, far enough outside any canvas where the number is too large for one.
int Pixel(double twips, double twipsPerPixel) {
    constexpr double Limit = 1e6;
    return static_cast<int>(std::clamp(RoundHalfEven(twips / twipsPerPixel), -Limit, Limit));
}

} // namespace

DrawingBox::DrawingBox(Surface& surface, const PixelRect& area, double twipsPerPixelX, double twipsPerPixelY)
    : surface_(surface)
    , area_(area)
    , twipsPerPixelX_(twipsPerPixelX)
    , twipsPerPixelY_(twipsPerPixelY) {}

DrawingBox::DrawingBox(Surface& surface, double twipsPerPixelX, double twipsPerPixelY)
    : DrawingBox(surface, {0, 0, surface.Size().width, surface.Size().height}, twipsPerPixelX,
                 twipsPerPixelY) {}

double DrawingBox::Width() const {
    return area_.width * twipsPerPixelX_;
}

double DrawingBox::Height() const {
    return area_.height * twipsPerPixelY_;
}

double DrawingBox::TextWidth(std::string_view text) const {
    return surface_.TextWidth(Font, text) * twipsPerPixelX_;
}

double DrawingBox::TextHeight() const {
    return surface_.TextHeight(Font) * twipsPerPixelY_;
}

void DrawingBox::Print(std::string_view text) {
    if (text.empty()) return;
    surface_.PrintText(area_.x + Pixel(CurrentX, twipsPerPixelX_), area_.y + Pixel(CurrentY, twipsPerPixelY_),
                       Font, ForeColor, text);
    CurrentX += TextWidth(text);
}

void DrawingBox::PrintLine(std::string_view text) {
    Print(text);
    CurrentX = 0;
    CurrentY += TextHeight();
}

void DrawingBox::FillBox(double left, double top, double right, double bottom, Color color) {
    surface_.Fill(Pixels(left, top, right, bottom), color);
}

PixelRect DrawingBox::Pixels(double left, double top, double right, double bottom) const {
    const int x = Pixel(left, twipsPerPixelX_);
    const int y = Pixel(top, twipsPerPixelY_);
    return {area_.x + x, area_.y + y, Pixel(right, twipsPerPixelX_) - x, Pixel(bottom, twipsPerPixelY_) - y};
}

} // namespace quorvane
