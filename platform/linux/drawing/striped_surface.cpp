#include "platform/linux/drawing/striped_surface.h"

#include "platform/linux/drawing/picture.h"
#include "platform/painting/bitmap_file.h"
#include "platform/painting/bitmap_stripes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvane {
namespace {

// Small enough to stay in the processor's cache from the first layer to the write.
constexpr std::size_t StripeBytes = 128 * 1024;

// A row near `y`, within 32 bits wherever that is.
int NearRow(double y) {
    constexpr double Farthest = 1e8;
    return static_cast<int>(std::clamp(y, -Farthest, Farthest));
}

} // namespace

StripedSurface::StripedSurface(PixelSize size, ScreenDots dots, GuiSession& gui)
    : size_(size)
    , dots_(dots)
    , gui_(gui)
    , measuring_({dot_, sizeof dot_, {1, 1}}, dots, gui) {}

void StripedSurface::Paint(Step step) {
    if (whole_) return step.paint(*whole_);
    (picture_ ? over_ : under_).push_back(std::move(step));
}

void StripedSurface::Fill(const PixelRect& area, Color color) {
    Paint({[=](Surface& surface) { surface.Fill(area, color); }});
}

void StripedSurface::GradientRectangle(const GradientVertex& upperLeft, const GradientVertex& lowerRight,
                                       GradientDirection direction) {
    Paint({[=](Surface& surface) { surface.GradientRectangle(upperLeft, lowerRight, direction); }});
}

void StripedSurface::GradientTriangle(const GradientVertex& a, const GradientVertex& b,
                                      const GradientVertex& c) {
    Paint({[=](Surface& surface) { surface.GradientTriangle(a, b, c); }});
}

void StripedSurface::Line(double x1, double y1, double x2, double y2, double width, Color color) {
    Paint({[=](Surface& surface) { surface.Line(x1, y1, x2, y2, width, color); }});
}

bool StripedSurface::StretchPicture(const Picture& picture, const PixelRect& target, std::string& why) {
    const auto& source = dynamic_cast<const LinuxPicture&>(picture);
    if (!whole_ && !picture_ && source.RowsDescend()) {
        picture_ = &source;
        target_ = target;
        return true;
    }
    if (PaintWhole()) return whole_->StretchPicture(picture, target, why);
    why = "there is no memory for it";
    return false;
}

double StripedSurface::TextWidth(const FontSpec& font, std::string_view text) {
    return measuring_.TextWidth(font, text);
}

double StripedSurface::TextHeight(const FontSpec& font) {
    return measuring_.TextHeight(font);
}

void StripedSurface::PrintText(double x, double y, const FontSpec& font, Color color, std::string_view text) {
    // Letters with marks reach out of their line.
    const double height = TextHeight(font) + 1;
    Paint({[=, text = std::string(text)](Surface& surface) { surface.PrintText(x, y, font, color, text); },
           NearRow(y - height), NearRow(y + 2 * height)});
}

bool StripedSurface::PaintWhole() {
    if (whole_) return true;
    whole_ = MakeSurface(size_, dots_, gui_);
    if (!whole_) return false;
    for (const Step& step : under_)
        step.paint(*whole_);
    if (picture_) whole_->StretchPicture(*picture_, target_, lateFailure_);
    for (const Step& step : over_)
        step.paint(*whole_);
    return true;
}

PixelView StripedSurface::Pixels() {
    return PaintWhole() ? whole_->Pixels() : PixelView{};
}

// No line of text is cut, so that each is painted once.
int StripedSurface::EndOfStripe(int from) const {
    const std::size_t rows = StripeBytes / BitmapRowBytes(size_.width);
    int end = from + static_cast<int>(std::max<std::size_t>(rows, 1));
    for (int before = 0; std::exchange(before, end) != end;)
        for (const std::vector<Step>* steps : {&under_, &over_})
            for (const Step& step : *steps)
                if (step.top < end && end < step.end) end = step.end;
    return end;
}

void StripedSurface::PaintStripe(const std::vector<Step>& steps, const Canvas& stripe) const {
    const auto touches = [&](const Step& step) { return step.top < stripe.end && stripe.from < step.end; };
    const bool printed = std::any_of(steps.begin(), steps.end(), touches);
    const Canvas canvas = printed ? TurnOver(stripe) : stripe;
    LinuxSurface surface(canvas, dots_, gui_);
    for (const Step& step : steps)
        if (!step.IsText() || touches(step)) step.paint(surface);
    if (printed) TurnOver(canvas);
}

bool StripedSurface::WriteBitmap(FileWriter& out) {
    if (whole_) return whole_->WriteBitmap(out);
    if (!FitsBitmap(size_)) return false;
    BitmapStripes stripes(size_, out,
                          {[this](int from) { return EndOfStripe(from); },
                           [this](const Canvas& stripe) { PaintStripe(under_, stripe); },
                           [this](const Canvas& stripe) { PaintStripe(over_, stripe); }});
    const auto row = [&stripes](int y) { return stripes.Row(y); };
    if (picture_) picture_->DrawRows(size_, row, target_, lateFailure_);
    return stripes.Finish();
}

} // namespace quorvane
