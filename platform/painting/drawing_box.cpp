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

// Cuts the first line off `rest`. False where that was the last one.
bool TakeLine(std::string_view& rest, std::string_view& line) {
    const std::size_t end = rest.find('\n');
    line = rest.substr(0, end);
    if (end == rest.npos) return false;
    if (line.ends_with('\r')) line.remove_suffix(1);
    rest.remove_prefix(end + 1);
    return true;
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
    double widest = 0;
    std::string_view line;
    for (bool more = true; more;) {
        more = TakeLine(text, line);
        widest = std::max(widest, surface_.TextWidth(Font, line));
    }
    return widest * twipsPerPixelX_;
}

double DrawingBox::TextHeight() const {
    return surface_.TextHeight(Font) * twipsPerPixelY_;
}

double DrawingBox::TextHeight(std::string_view text) const {
    return static_cast<double>(1 + std::count(text.begin(), text.end(), '\n')) * TextHeight();
}

void DrawingBox::Print(std::string_view text) {
    std::string_view line;
    while (TakeLine(text, line))
        PrintLine(line);
    PrintPiece(line);
}

void DrawingBox::PrintPiece(std::string_view text) {
    if (text.empty()) return;
    surface_.PrintText(area_.x + Pixel(CurrentX, twipsPerPixelX_), area_.y + Pixel(CurrentY, twipsPerPixelY_),
                       Font, ForeColor, text);
    CurrentX += surface_.TextWidth(Font, text) * twipsPerPixelX_;
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
