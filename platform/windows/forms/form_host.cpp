#include "platform/windows/forms/form_host.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_view.h"

#include <algorithm>
#include <cmath>

namespace quorvane {
namespace {

int ScreenResolution() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return std::max(dots, 48);
}

FontSpec MessageFont(int dotsPerInch) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return {"Tahoma", 8};
    const auto points = static_cast<float>(std::abs(metrics.lfMessageFont.lfHeight)) * 72.0F;
    return {Utf8(metrics.lfMessageFont.lfFaceName),
            std::round(points / static_cast<float>(dotsPerInch) * 4) / 4};
}

} // namespace

WindowsFormHost::WindowsFormHost(WindowsEventLoop& events)
    : events_(events)
    , dotsPerInch_(ScreenResolution())
    , scale_{1440.0 / dotsPerInch_, 1440.0 / dotsPerInch_}
    , defaultFont_(MessageFont(dotsPerInch_))
    , font_(CreateFontFor(defaultFont_, dotsPerInch_))
    , measuring_(CreateCompatibleDC(nullptr)) {
    const INITCOMMONCONTROLSEX classes{sizeof classes,
                                       ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    WindowsFormView::RegisterClasses();
    const HGDIOBJ before = SelectObject(measuring_, font_);
    TEXTMETRICW metrics{};
    GetTextMetricsW(measuring_, &metrics);
    lineHeight_ = static_cast<int>(metrics.tmHeight);
    SelectObject(measuring_, before);
    filter_ = events_.AddFilter([this](MSG& message) { return FilterMessage(message); });
}

WindowsFormHost::~WindowsFormHost() {
    events_.RemoveFilter(filter_);
    DeleteDC(measuring_);
    DeleteObject(font_);
}

std::unique_ptr<FormView> WindowsFormHost::Create(Form& form) {
    return std::make_unique<WindowsFormView>(*this, form);
}

TwipSize WindowsFormHost::TextSize(const FontSpec& font, std::string_view text, int wrapWidth) {
    const HFONT own = font == defaultFont_ ? nullptr : CreateFontFor(font, dotsPerInch_);
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

Insets WindowsFormHost::ChromeInPixels(ControlKind kind) const {
    const int scrollBar = GetSystemMetrics(SM_CXVSCROLL);
    const int box = GetSystemMetrics(SM_CXMENUCHECK);
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

Insets WindowsFormHost::Chrome(ControlKind kind) {
    const Insets pixels = ChromeInPixels(kind);
    return {scale_.TwipsX(pixels.left), scale_.TwipsY(pixels.top), scale_.TwipsX(pixels.right),
            scale_.TwipsY(pixels.bottom)};
}

TwipRect WindowsFormHost::WorkArea() {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const auto twipsX = [this](LONG pixels) { return scale_.TwipsX(static_cast<int>(pixels)); };
    const auto twipsY = [this](LONG pixels) { return scale_.TwipsY(static_cast<int>(pixels)); };
    return {twipsX(area.left), twipsY(area.top), twipsX(area.right - area.left),
            twipsY(area.bottom - area.top)};
}

HWND WindowsFormHost::ActiveWindow() const {
    const HWND active = GetActiveWindow();
    for (const WindowsFormView* view : views_) {
        if (view->Window() == active && IsWindowVisible(active)) return active;
    }
    return nullptr;
}

void WindowsFormHost::Left(WindowsFormView& view) {
    std::erase(views_, &view);
}

bool WindowsFormHost::FilterMessage(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    const HWND top = GetAncestor(message.hwnd, GA_ROOT);
    for (WindowsFormView* view : views_) {
        if (view->Window() == top) return view->FilterKey(message);
    }
    return false;
}

} // namespace quorvane
