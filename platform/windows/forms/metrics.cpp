#include "platform/windows/forms/metrics.h"

#include "platform/windows/base/resolution.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/drawing/drawing.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

// SystemParametersInfo and GetSystemMetrics answer for the resolution of the first screen.
FontSpec MessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return {"Tahoma", 8};
    const auto points = static_cast<float>(std::abs(metrics.lfMessageFont.lfHeight)) * 72.0F;
    return {Utf8(metrics.lfMessageFont.lfFaceName),
            std::round(points / static_cast<float>(ScreenResolution()) * 4) / 4};
}

} // namespace

WindowsMetrics::WindowsMetrics(int dotsPerInch)
    : dotsPerInch_(dotsPerInch)
    , scale_{1440.0 / dotsPerInch, 1440.0 / dotsPerInch}
    , defaultFont_(MessageFont())
    , font_(CreateWindowFont(defaultFont_, dotsPerInch))
    , measuring_(CreateCompatibleDC(nullptr)) {
    const HGDIOBJ before = SelectObject(measuring_, font_);
    TEXTMETRICW metrics{};
    GetTextMetricsW(measuring_, &metrics);
    lineHeight_ = static_cast<int>(metrics.tmHeight);
    SelectObject(measuring_, before);
}

WindowsMetrics::~WindowsMetrics() {
    DeleteDC(measuring_);
    DeleteObject(font_);
}

TwipSize WindowsMetrics::TextSize(const FontSpec& font, std::string_view text, int wrapWidth) {
    const HFONT own = font == defaultFont_ ? nullptr : CreateWindowFont(font, dotsPerInch_);
    const HGDIOBJ before = SelectObject(measuring_, own ? own : font_);
    RECT area{0, 0, wrapWidth > 0 ? scale_.PixelsX(wrapWidth) : 1, 1};
    const std::wstring wide = Wide(text.empty() ? " " : text);
    DrawTextW(measuring_, wide.data(), static_cast<int>(wide.size()), &area,
              DT_CALCRECT | DT_NOPREFIX | (wrapWidth > 0 ? UINT{DT_WORDBREAK} : 0U));
    SelectObject(measuring_, before);
    if (own) DeleteObject(own);
    // A pixel more, since the system rounds when it draws.
    const int width = text.empty() ? 0 : static_cast<int>(area.right) + 1;
    return {scale_.TwipsX(width), scale_.TwipsY(static_cast<int>(area.bottom))};
}

Insets WindowsMetrics::ChromeInPixels(ControlKind kind) const {
    const int scrollBar = SystemMetric(SM_CXVSCROLL, dotsPerInch_);
    const int box = SystemMetric(SM_CXMENUCHECK, dotsPerInch_);
    switch (kind) {
    case ControlKind::TextBox:
        return {5, 4, 5, 4};
    case ControlKind::RichTextBox:
        return {5, 4, 5 + scrollBar, 4};
    case ControlKind::Button:
        return {12, 4, 12, 4};
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
        return {box + 7, 1, 3, 1};
    case ControlKind::ComboBox:
        return {6, 4, scrollBar + 8, 4};
    case ControlKind::ListView:
        return {3, 4, scrollBar + 5, 6};
    case ControlKind::TabStrip:
        return {3, lineHeight_ + 12, 3, 3};
    case ControlKind::Frame:
        return {3, lineHeight_, 3, 3};
    case ControlKind::DatePicker:
        return {6, 4, 2 * scrollBar + 10, 4};
    case ControlKind::MonthView:
        return {4, 4, 4, 4};
    case ControlKind::PictureBox:
        return {1, 1, 1, 1};
    case ControlKind::Label:
    case ControlKind::Slider:
    case ControlKind::ProgressBar:
    case ControlKind::ScrollBar:
        return {};
    }
    return {};
}

Insets WindowsMetrics::Chrome(ControlKind kind) {
    const Insets pixels = ChromeInPixels(kind);
    return {scale_.TwipsX(pixels.left), scale_.TwipsY(pixels.top), scale_.TwipsX(pixels.right),
            scale_.TwipsY(pixels.bottom)};
}

} // namespace quorvane
