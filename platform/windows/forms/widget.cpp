#include "platform/windows/forms/widget.h"

#include "platform/windows/base/wide.h"

namespace quorvane {

Widget::Widget(WidgetSite& site, Control& model, const wchar_t* className, DWORD style, DWORD extendedStyle)
    : site_(site)
    , model_(model)
    , window_(CreateWindowExW(extendedStyle, className, L"", WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0, 0, 0,
                              site.Window(), nullptr, GetModuleHandleW(nullptr), nullptr)) {}

Widget::~Widget() = default; // the window goes with the form's

std::string Widget::WindowText() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()))));
    return Utf8(text);
}

void Widget::SetText(const std::string& text) {
    if (WindowText() != text) SetWindowTextW(window_, Wide(text).c_str());
}

void Widget::ShowCaption() {
    SetText(model_.Caption());
}

void Widget::Place(const PixelRect& area) {
    SetWindowPos(window_, nullptr, area.x, area.y, area.width, area.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Widget::ShowState(bool reachable, bool shown) {
    EnableWindow(window_, reachable);
    ShowWindow(window_, shown ? SW_SHOWNA : SW_HIDE);
}

void Widget::Unmirror(DWORD instead) {
    const auto style = static_cast<DWORD>(GetWindowLongW(window_, GWL_EXSTYLE));
    if (!(style & WS_EX_LAYOUTRTL)) return;
    SetWindowLongW(window_, GWL_EXSTYLE, static_cast<LONG>((style & ~DWORD{WS_EX_LAYOUTRTL}) | instead));
}

std::unique_ptr<Widget> CreateWidget(WidgetSite& site, Control& control) {
    WidgetMaker maker(site);
    control.Accept(maker);
    return std::move(maker.made);
}

} // namespace quorvane
