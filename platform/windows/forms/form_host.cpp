#include "platform/windows/forms/form_host.h"

#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/forms/form_view.h"

#include <algorithm>

namespace quorvane {

WindowsFormHost::WindowsFormHost(WindowsEventLoop& events)
    : events_(events)
    , first_(std::make_shared<WindowsMetrics>(ScreenResolution())) {
    const INITCOMMONCONTROLSEX classes{sizeof classes,
                                       ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    WindowsFormView::RegisterClasses();
    filter_ = events_.AddFilter([this](MSG& message) { return FilterMessage(message); });
    // The loop's window is told of the person's new fonts and themes once; there may be no host any more.
    events_.AddHandler([host = self_](UINT message, WPARAM wide, LPARAM) -> std::optional<LRESULT> {
        const bool fonts = message == WM_SETTINGCHANGE && (wide == SPI_SETNONCLIENTMETRICS || wide == 0);
        if (*host && (fonts || message == WM_THEMECHANGED)) (*host)->Remeasure();
        return std::nullopt;
    });
}

WindowsFormHost::~WindowsFormHost() {
    *self_ = nullptr;
    events_.RemoveFilter(filter_);
}

std::shared_ptr<WindowsMetrics> WindowsFormHost::MetricsFor(int dotsPerInch) {
    if (dotsPerInch == first_->DotsPerInch()) return first_;
    std::shared_ptr<WindowsMetrics> known = others_[dotsPerInch].lock();
    if (!known) others_[dotsPerInch] = known = std::make_shared<WindowsMetrics>(dotsPerInch);
    return known;
}

// A view that is told may go, or take others with it.
void WindowsFormHost::Remeasure() {
    first_ = std::make_shared<WindowsMetrics>(first_->DotsPerInch());
    others_.clear();
    const std::vector<WindowsFormView*> told = views_;
    for (WindowsFormView* view : told) {
        if (std::find(views_.begin(), views_.end(), view) != views_.end())
            view->Rescale(ResolutionOf(view->Window()));
    }
}

std::unique_ptr<FormView> WindowsFormHost::Create(Form& form) {
    return std::make_unique<WindowsFormView>(*this, form);
}

TwipRect WindowsFormHost::WorkArea() {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const auto twipsX = [this](LONG pixels) { return Scale().TwipsX(static_cast<int>(pixels)); };
    const auto twipsY = [this](LONG pixels) { return Scale().TwipsY(static_cast<int>(pixels)); };
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
