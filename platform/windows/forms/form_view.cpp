#include "platform/windows/forms/form_view.h"

#include "platform/forms/sizes.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_host.h"

namespace quorvane {
namespace {

constexpr wchar_t FormClass[] = L"QuorvaneForm";
constexpr int WidestTip = 5400; // twips; a longer tool tip has several lines

} // namespace

void WindowsFormView::RegisterClasses() {
    const auto add = [](const wchar_t* name, WNDPROC procedure) {
        WNDCLASSEXW data{};
        data.cbSize = sizeof data;
        data.style = CS_DBLCLKS;
        data.lpfnWndProc = procedure;
        data.hInstance = GetModuleHandleW(nullptr);
        data.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        data.hIcon = LoadIconW(data.hInstance, MAKEINTRESOURCEW(1));
        data.lpszClassName = name;
        RegisterClassExW(&data); // fails where a host stood before, and the class with it
    };
    add(FormClass, FormProcedure);
    add(PictureClass, PictureProcedure);
    add(PaneClass, PaneProcedure);
}

WindowsFormView::WindowsFormView(WindowsFormHost& host, Form& form)
    : host_(host)
    , form_(form)
    , metrics_(host.MetricsFor(host.DotsPerInch())) {
    const Applying applying(*this);
    window_ = CreateWindowExW(ExtendedStyle(), FormClass, Wide(form_.Caption()).c_str(), Style(), 0, 0, 0, 0,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    toolTips_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                        0, 0, 0, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(toolTips_, TTM_SETMAXTIPWIDTH, 0, Scale().PixelsX(WidestTip));
    SetOwner(nullptr);
    ShowFormLook();
    ShowMenuBar();
    PlaceWindow();
    MakeWidgets();
    host_.Joined(*this);
    // Not before now is it known which screen the window is on, and the form has no view to be told by yet.
    if (ResolutionOf(window_) != metrics_->DotsPerInch()) {
        host_.Events().Post([this, alive = alive_] {
            if (*alive) Rescale(ResolutionOf(window_));
        });
    }
}

WindowsFormView::~WindowsFormView() {
    *alive_ = false;
    host_.Left(*this);
    // A window that belongs to this one would be destroyed with it.
    for (WindowsFormView* view : host_.Views()) {
        if (GetWindow(view->window_, GW_OWNER) == window_) view->SetOwner(nullptr);
    }
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    for (const auto& [window, widget] : widgets_) {
        RemoveWindowSubclass(window, WidgetProcedure, 0);
        SendMessageW(window, WM_SETFONT, 0, FALSE);
    }
    for (auto& [control, entry] : entries_) { // the controls themselves may be gone already
        entry.widget->Detach();
        if (entry.font) DeleteObject(entry.font);
        if (entry.brush) DeleteObject(entry.brush);
    }
    if (background_) DeleteObject(background_);
    if (destroyed_) return;
    SetMenu(window_, nullptr);
    ShowWindow(window_, SW_HIDE);
    // A widget may be in the middle of telling what a person did: its window goes when it is done.
    host_.Events().Post([window = window_] { DestroyWindow(window); });
}

DWORD WindowsFormView::Style() const {
    switch (form_.Border()) {
    case BorderStyle::None:
        return WS_POPUP | WS_CLIPCHILDREN;
    case BorderStyle::Tool:
        return WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    case BorderStyle::Fixed:
        return WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN |
               (form_.ShownInTaskBar() && !form_.IsModal() ? WS_MINIMIZEBOX : 0U);
    case BorderStyle::Sizable:
        return WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    }
    return WS_POPUP;
}

DWORD WindowsFormView::ExtendedStyle() const {
    DWORD style = WS_EX_CONTROLPARENT;
    if (form_.RightToLeft()) style |= WS_EX_LAYOUTRTL; // which its widgets inherit
    if (form_.Border() == BorderStyle::Tool) style |= WS_EX_TOOLWINDOW;
    if (form_.Border() == BorderStyle::None && !form_.ShownInTaskBar()) style |= WS_EX_TOOLWINDOW;
    if (form_.HasTaskBarEntry()) style |= WS_EX_APPWINDOW;
    if (form_.AlwaysOnTop()) style |= WS_EX_TOPMOST;
    if (form_.Opacity() < 255 || form_.TransparentColor()) style |= WS_EX_LAYERED;
    return style;
}

void WindowsFormView::MakeWidgets() {
    order_ = form_.Controls();
    for (Control* control : order_) {
        Entry& entry = entries_[control];
        entry.widget = CreateWidget(*this, *control);
        Join(*entry.widget, entry.widget->Window());
        // The later lies on top, and with that what a container holds above the container.
        SetWindowPos(entry.widget->Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        ShowLook(*control);
    }
    PlaceControls();
    for (Control* control : order_) { // in their places: a text scrolls by the room that it has
        Widget& widget = *entries_[control].widget;
        widget.ShowCaption();
        widget.ShowItems();
        widget.ShowValue();
        ShowState(*control);
    }
}

void WindowsFormView::Join(Widget& widget, HWND window) {
    widgets_[window] = &widget;
    SetWindowSubclass(window, WidgetProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

WindowsFormView::Entry* WindowsFormView::Find(const Control& control) {
    const auto found = entries_.find(&control);
    return found == entries_.end() ? nullptr : &found->second;
}

// The widget that a window is or belongs to, as the edit line does to a combo box.
Widget* WindowsFormView::WidgetOf(HWND window) {
    for (; window && window != window_; window = GetParent(window)) {
        const auto found = widgets_.find(window);
        if (found != widgets_.end()) return found->second;
    }
    return nullptr;
}

void WindowsFormView::Report(Control& control, const Act& done) {
    if (applying_ == 0) form_.Report(&control, done);
}

void WindowsFormView::Show() {
    const bool wasVisible = IsWindowVisible(window_);
    const bool modal = form_.IsModal();
    if (modal) SetOwner(host_.ActiveWindow());
    {
        const Applying applying(*this);
        ShowStyle();
    }
    const bool quiet = form_.Border() == BorderStyle::None && !modal;
    ShowWindow(window_, form_.Minimized() ? SW_SHOWMINNOACTIVE : quiet ? SW_SHOWNOACTIVATE : SW_SHOW);
    UpdateWindow(window_);
    if (wasVisible || quiet) return;
    SetForegroundWindow(window_);
}

void WindowsFormView::Hide() {
    ShowWindow(window_, SW_HIDE);
    SetOwner(nullptr);
}

// Where no other window is given, one without an entry in the task bar belongs to one that has none either.
void WindowsFormView::SetOwner(HWND owner) {
    if (!owner || owner == window_) owner = form_.HasTaskBarEntry() ? nullptr : host_.Events().Window();
    SetWindowLongPtrW(window_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
}

// The style follows the border, and whether the form is a modal one.
void WindowsFormView::ShowStyle() {
    const auto kept = static_cast<DWORD>(GetWindowLongW(window_, GWL_STYLE)) &
                      (WS_VISIBLE | WS_DISABLED | WS_MINIMIZE | WS_MAXIMIZE);
    SetWindowLongW(window_, GWL_STYLE, static_cast<LONG>(Style() | kept));
    SetWindowLongW(window_, GWL_EXSTYLE, static_cast<LONG>(ExtendedStyle()));
    PlaceWindow();
}

void WindowsFormView::BringToFront() {
    if (IsIconic(window_)) ShowWindow(window_, SW_RESTORE);
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    SetForegroundWindow(window_);
}

void WindowsFormView::Update(Control& control, Aspect aspect) {
    Entry* entry = Find(control);
    if (!entry) return;
    const Applying applying(*this);
    switch (aspect) {
    case Aspect::Value:
        return entry->widget->ShowValue();
    case Aspect::Caption:
        return entry->widget->ShowCaption();
    case Aspect::Items:
        return entry->widget->ShowItems();
    case Aspect::State:
        entry->widget->ShowValue(); // a text box that can only be read says so there
        return ShowState(control);
    case Aspect::Look:
        return ShowLook(control);
    case Aspect::Bounds:
        return PlaceControl(control);
    }
}

void WindowsFormView::UpdateRows(ListView& list, const RowChange& change) {
    const Applying applying(*this);
    if (Entry* entry = Find(list)) entry->widget->ShowRows(change);
}

void WindowsFormView::UpdateForm(FormAspect aspect) {
    const Applying applying(*this);
    switch (aspect) {
    case FormAspect::Caption:
        SetWindowTextW(window_, Wide(form_.Caption()).c_str());
        break;
    case FormAspect::Place:
        PlaceWindow();
        break;
    case FormAspect::Look:
        ShowFormLook();
        break;
    case FormAspect::Order:
        SetWindowPos(window_, form_.AlwaysOnTop() ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        break;
    case FormAspect::Window:
        ShowMenuBar();
        ShowStyle();
        if (IsWindowVisible(window_) && IsIconic(window_) != form_.Minimized())
            ShowWindow(window_, form_.Minimized() ? SW_MINIMIZE : SW_RESTORE);
        break;
    case FormAspect::Blocked:
        EnableWindow(window_, !form_.IsBlocked());
        break;
    }
}

void WindowsFormView::PlaceWindow() {
    const TwipSize client = form_.ClientSize();
    const RECT area = WithFrame({0, 0, Scale().PixelsX(client.width), Scale().PixelsY(client.height)});
    const TwipScale screen = host_.Scale();
    SetWindowPos(window_, nullptr, screen.PixelsX(form_.Left()), screen.PixelsY(form_.Top()),
                 area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    if (form_.RightToLeft()) PlaceControls(); // they hang on the right edge
}

// The frame around an inner area, at the resolution of the window's screen.
RECT WindowsFormView::WithFrame(RECT inner) const {
    const bool bar = GetMenu(window_) != nullptr;
    using Function = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    static const auto forDpi = SystemFunction<Function>("AdjustWindowRectExForDpi");
    if (forDpi) {
        forDpi(&inner, Style(), bar, ExtendedStyle(), static_cast<UINT>(ResolutionOf(window_)));
    } else {
        AdjustWindowRectEx(&inner, Style(), bar, ExtendedStyle());
    }
    return inner;
}

void WindowsFormView::Rescale(int dotsPerInch) {
    // The widgets hold the old font until they have the new one.
    const std::shared_ptr<WindowsMetrics> before = std::exchange(metrics_, host_.MetricsFor(dotsPerInch));
    SendMessageW(toolTips_, TTM_SETMAXTIPWIDTH, 0, Scale().PixelsX(WidestTip));
    {
        const Applying applying(*this);
        for (Control* control : order_)
            ShowLook(*control);
    }
    const std::shared_ptr<bool> alive = alive_;
    form_.Report(nullptr, act::Rescale{});
    if (!*alive) return;
    const Applying applying(*this);
    PlaceWindow();
    PlaceControls();
    for (Control* control : order_)
        entries_[control].widget->ShowItems(); // the widths of columns are pixels
    InvalidateRect(window_, nullptr, TRUE);
}

// Bounds are told from the inner area of the container, widgets are placed from the form's.
PixelRect WindowsFormView::AreaOf(const Control& control) {
    TwipRect bounds = control.Bounds();
    for (const Control* around = control.Parent().AsControl(); around;
         around = around->Parent().AsControl()) {
        const Insets chrome = ChromeOf(*around, *metrics_);
        bounds.x += around->Bounds().x + chrome.left;
        bounds.y += around->Bounds().y + chrome.top;
    }
    PixelRect area = ToPixels(bounds, Scale());
    if (form_.RightToLeft()) area.x = Scale().PixelsX(form_.ClientSize().width) - area.x - area.width;
    return area;
}

void WindowsFormView::PlaceControls() {
    for (Control* control : order_) {
        if (&control->Parent() == static_cast<Container*>(&form_)) PlaceControl(*control);
    }
}

void WindowsFormView::PlaceControl(Control& control) {
    if (Entry* entry = Find(control)) {
        entry->widget->Place(AreaOf(control));
        entry->widget->ShowState(control.IsReachable(), control.IsShown() && control.HasPlace());
    }
    const auto* container = dynamic_cast<Container*>(&control);
    if (!container) return;
    for (Control* child : container->Children())
        PlaceControl(*child);
}

void WindowsFormView::ShowState(Control& control) {
    Entry* entry = Find(control);
    if (!entry) return;
    entry->widget->ShowState(control.IsReachable(), control.IsShown() && control.HasPlace());
    const auto* container = dynamic_cast<Container*>(&control);
    if (!container) return;
    PlaceControl(control);
    for (Control* child : container->Children())
        ShowState(*child);
}

void WindowsFormView::ShowLook(Control& control) {
    Entry* entry = Find(control);
    if (!entry) return;
    const HFONT before = entry->font;
    entry->font = control.Font() ? CreateWindowFont(*control.Font(), metrics_->DotsPerInch()) : nullptr;
    const HWND window = entry->widget->Window();
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(entry->font ? entry->font : metrics_->Font()),
                 TRUE);
    if (before) DeleteObject(before);
    if (entry->brush) DeleteObject(entry->brush);
    entry->brush =
        control.BackColor() ? CreateSolidBrush(static_cast<COLORREF>(*control.BackColor())) : nullptr;
    entry->widget->ShowLook();

    std::wstring tip = Wide(control.ToolTip());
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = window_;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    SendMessageW(toolTips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    tool.lpszText = tip.data();
    if (!tip.empty()) SendMessageW(toolTips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    InvalidateRect(window, nullptr, TRUE);
}

void WindowsFormView::ShowFormLook() {
    if (background_) DeleteObject(background_);
    background_ = form_.BackColor() ? CreateSolidBrush(static_cast<COLORREF>(*form_.BackColor())) : nullptr;
    SetWindowLongW(window_, GWL_EXSTYLE, static_cast<LONG>(ExtendedStyle()));
    if (ExtendedStyle() & WS_EX_LAYERED) {
        const auto hole = static_cast<COLORREF>(form_.TransparentColor().value_or(0));
        const DWORD flags = LWA_ALPHA | (form_.TransparentColor() ? DWORD{LWA_COLORKEY} : 0U);
        SetLayeredWindowAttributes(window_, hole, static_cast<BYTE>(form_.Opacity()), flags);
    }
    InvalidateRect(window_, nullptr, TRUE);
}

void WindowsFormView::ShowMenuBar() {
    auto fresh = form_.MenuBar() ? std::make_unique<NativeMenu>(form_.MenuBar()->Entries()) : nullptr;
    SetMenu(window_, fresh ? fresh->Handle() : nullptr);
    bar_.swap(fresh);
    // The old one may be open at this moment.
    if (fresh) host_.Events().Post([old = std::shared_ptr<NativeMenu>(std::move(fresh))] {});
}

void WindowsFormView::Focus(Control& control) {
    const Entry* entry = Find(control);
    if (!entry) return;
    remembered_ = entry->widget->Window();
    if (IsWindowVisible(window_)) SetFocus(remembered_);
}

const MenuItem* WindowsFormView::Popup(const ShownMenu& menu, MenuPlace place) {
    WindowsEventLoop& events = host_.Events();
    POINT at{};
    if (place == MenuPlace::Form) {
        ClientToScreen(window_, &at);
    } else {
        GetCursorPos(&at);
    }
    const MenuItem* chosen = NativeMenu::Ask(menu, window_, at);
    events.LeaveIfEnding();
    return chosen;
}

std::uintptr_t WindowsFormView::NativeHandle(Control& control) {
    const Entry* entry = Find(control);
    return entry ? reinterpret_cast<std::uintptr_t>(entry->widget->Window()) : 0;
}

void WindowsFormView::ChooseFromMenu(UINT command) {
    const MenuItem* chosen = bar_ ? bar_->Find(command) : nullptr;
    if (chosen) host_.Events().Deliver([entry = *chosen] { Menu::Choose(entry); });
}

} // namespace quorvane
