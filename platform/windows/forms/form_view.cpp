#include "platform/windows/forms/form_view.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_host.h"

#include <algorithm>

#include <windowsx.h>

namespace quorvane {
namespace {

constexpr wchar_t FormClass[] = L"QuorvaneForm";

int ShiftState() {
    const auto down = [](int key) { return GetKeyState(key) < 0; };
    return (down(VK_SHIFT) ? shift_state::Shift : 0) | (down(VK_CONTROL) ? shift_state::Ctrl : 0) |
           (down(VK_MENU) ? shift_state::Alt : 0);
}

int ButtonsHeld(WPARAM keys) {
    return ((keys & MK_LBUTTON) ? 1 : 0) | ((keys & MK_RBUTTON) ? 2 : 0) | ((keys & MK_MBUTTON) ? 4 : 0);
}

// The letter behind the mark "&", in upper case; 0 for none.
wchar_t MnemonicOf(const std::string& caption) {
    const std::wstring wide = Wide(caption);
    for (std::size_t i = 0; i + 1 < wide.size(); ++i) {
        if (wide[i] != L'&') continue;
        if (wide[++i] != L'&') return static_cast<wchar_t>(towupper(wide[i]));
    }
    return 0;
}

// Paints a child's ground with what its form has for a ground.
void Erase(HWND child, HDC dc) {
    RECT area{};
    GetClientRect(child, &area);
    const LRESULT brush = SendMessageW(GetParent(child), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                       reinterpret_cast<LPARAM>(child));
    FillRect(dc, &area, reinterpret_cast<HBRUSH>(brush));
}

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
    , scale_(host.Scale()) {
    const Applying applying(*this);
    // Without an entry in the task bar a window belongs to one that has none either.
    const HWND owner = form_.ShownInTaskBar() ? nullptr : host_.Events().Window();
    window_ = CreateWindowExW(ExtendedStyle(), FormClass, Wide(form_.Caption()).c_str(), Style(), 0, 0, 0, 0,
                              owner, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    toolTips_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                        0, 0, 0, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    ShowFormLook();
    ShowMenuBar();
    PlaceWindow();
    MakeWidgets();
    host_.Joined(*this);
}

WindowsFormView::~WindowsFormView() {
    *alive_ = false;
    SetModal(false);
    host_.Left(*this);
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    for (auto& [control, entry] : entries_) { // the controls themselves may be gone already
        RemoveWindowSubclass(entry.widget->Window(), WidgetProcedure, 0);
        entry.widget->Detach();
        SendMessageW(entry.widget->Window(), WM_SETFONT, 0, FALSE);
        if (entry.font) DeleteObject(entry.font);
        if (entry.brush) DeleteObject(entry.brush);
    }
    if (background_) DeleteObject(background_);
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
               (form_.ShownInTaskBar() ? WS_MINIMIZEBOX : 0U);
    case BorderStyle::Sizable:
        return WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    }
    return WS_POPUP;
}

DWORD WindowsFormView::ExtendedStyle() const {
    DWORD style = WS_EX_CONTROLPARENT;
    if (form_.Border() == BorderStyle::Tool) style |= WS_EX_TOOLWINDOW;
    if (form_.Border() == BorderStyle::None && !form_.ShownInTaskBar()) style |= WS_EX_TOOLWINDOW;
    if (form_.ShownInTaskBar() && form_.Border() != BorderStyle::Tool) style |= WS_EX_APPWINDOW;
    if (form_.AlwaysOnTop()) style |= WS_EX_TOPMOST;
    if (form_.Opacity() < 255 || form_.TransparentColor()) style |= WS_EX_LAYERED;
    return style;
}

void WindowsFormView::MakeWidgets() {
    order_ = form_.Controls();
    for (Control* control : order_) {
        Entry& entry = entries_[control];
        entry.widget = CreateWidget(*this, *control);
        widgets_[entry.widget->Window()] = entry.widget.get();
        SetWindowSubclass(entry.widget->Window(), WidgetProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
        ShowLook(*control);
    }
    // What holds controls lies below them, the outermost lowest.
    for (auto control = order_.rbegin(); control != order_.rend(); ++control) {
        if (!dynamic_cast<Container*>(*control)) continue;
        SetWindowPos(entries_[*control].widget->Window(), HWND_BOTTOM, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    for (Control* control : order_) {
        if (&control->Parent() == static_cast<Container*>(&form_)) PlaceControl(*control);
    }
    for (Control* control : order_) { // in their places: a text scrolls by the room that it has
        Widget& widget = *entries_[control].widget;
        widget.ShowCaption();
        widget.ShowItems();
        widget.ShowValue();
        ShowState(*control);
    }
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

void WindowsFormView::Show(bool modal) {
    const bool wasVisible = IsWindowVisible(window_);
    if (modal) SetModal(true);
    const bool quiet = form_.Border() == BorderStyle::None && !modal;
    ShowWindow(window_, form_.Minimized() ? SW_SHOWMINNOACTIVE : quiet ? SW_SHOWNOACTIVATE : SW_SHOW);
    UpdateWindow(window_);
    if (wasVisible || quiet) return;
    SetForegroundWindow(window_);
    if (!form_.ActiveControl()) MoveFocus(false);
}

void WindowsFormView::Hide() {
    SetModal(false); // first, so that the window below becomes active and not another program's
    ShowWindow(window_, SW_HIDE);
}

void WindowsFormView::SetModal(bool modal) {
    for (const HWND window : disabled_)
        EnableWindow(window, TRUE);
    disabled_.clear();
    if (!modal) return;
    if (const HWND below = host_.ActiveWindow(); below && below != window_)
        SetWindowLongPtrW(window_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(below));
    for (WindowsFormView* view : host_.Views()) {
        if (view == this || !IsWindowEnabled(view->window_)) continue;
        EnableWindow(view->window_, FALSE);
        disabled_.push_back(view->window_);
    }
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
        SetWindowLongW(window_, GWL_STYLE,
                       static_cast<LONG>(Style() | (IsWindowVisible(window_) ? DWORD{WS_VISIBLE} : 0U)));
        ShowMenuBar();
        PlaceWindow();
        if (IsWindowVisible(window_) && IsIconic(window_) != form_.Minimized())
            ShowWindow(window_, form_.Minimized() ? SW_MINIMIZE : SW_RESTORE);
        break;
    }
}

void WindowsFormView::PlaceWindow() {
    RECT area{0, 0, scale_.PixelsX(form_.ClientSize().width), scale_.PixelsY(form_.ClientSize().height)};
    AdjustWindowRectEx(&area, Style(), GetMenu(window_) != nullptr, ExtendedStyle());
    SetWindowPos(window_, nullptr, scale_.PixelsX(form_.Left()), scale_.PixelsY(form_.Top()),
                 area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

// Bounds are told from the inner area of the container, widgets are placed from the form's.
PixelRect WindowsFormView::AreaOf(const Control& control) {
    TwipRect bounds = control.Bounds();
    for (const Control* around = control.Parent().AsControl(); around;
         around = around->Parent().AsControl()) {
        const Insets chrome = host_.Chrome(around->Kind());
        bounds.x += around->Bounds().x + chrome.left;
        bounds.y += around->Bounds().y + chrome.top;
    }
    return ToPixels(bounds, scale_);
}

void WindowsFormView::PlaceControl(Control& control) {
    if (Entry* entry = Find(control)) entry->widget->Place(AreaOf(control));
    const auto* container = dynamic_cast<Container*>(&control);
    if (!container) return;
    for (Control* child : container->Children())
        PlaceControl(*child);
}

void WindowsFormView::ShowState(Control& control) {
    Entry* entry = Find(control);
    if (!entry) return;
    const HWND window = entry->widget->Window();
    EnableWindow(window, control.IsReachable() || !control.TakesFocus() ? control.IsReachable() : FALSE);
    ShowWindow(window, control.IsShown() ? SW_SHOWNA : SW_HIDE);
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
    entry->font = control.Font() ? CreateFontFor(*control.Font(), host_.DotsPerInch()) : nullptr;
    const HWND window = entry->widget->Window();
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(entry->font ? entry->font : host_.Font()),
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
    auto fresh =
        form_.MenuBar() ? std::make_unique<NativeMenu>(*form_.MenuBar(), NativeMenu::Kind::Bar) : nullptr;
    SetMenu(window_, fresh ? fresh->Handle() : nullptr);
    bar_ = std::move(fresh);
}

void WindowsFormView::Focus(Control& control) {
    const Entry* entry = Find(control);
    if (!entry) return;
    remembered_ = entry->widget->Window();
    if (IsWindowVisible(window_)) SetFocus(remembered_);
}

void WindowsFormView::Popup(Menu& menu) {
    NativeMenu native(menu, NativeMenu::Kind::Popup);
    MenuItem* chosen = native.Ask(window_);
    host_.Events().LeaveIfEnding();
    if (chosen) Menu::Choose(*chosen);
}

std::uintptr_t WindowsFormView::NativeHandle(Control& control) {
    const Entry* entry = Find(control);
    return entry ? reinterpret_cast<std::uintptr_t>(entry->widget->Window()) : 0;
}

void WindowsFormView::ChooseFromMenu(UINT command) {
    MenuItem* chosen = bar_ ? bar_->Find(command) : nullptr;
    if (!chosen) return;
    host_.Events().Deliver([chosen] { Menu::Choose(*chosen); });
}

// --- the window's messages

LRESULT CALLBACK WindowsFormView::FormProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    auto* view = reinterpret_cast<WindowsFormView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return view ? view->Handle(message, wide, low) : DefWindowProcW(window, message, wide, low);
}

LRESULT WindowsFormView::Handle(UINT message, WPARAM wide, LPARAM low) {
    const HWND window = window_; // the view may be gone behind a report
    switch (message) {
    case WM_CLOSE:
        form_.Report(nullptr, act::CloseByFrame{});
        return 0;
    case WM_COMMAND:
        if (!low) {
            ChooseFromMenu(LOWORD(wide));
        } else if (Widget* widget = WidgetOf(reinterpret_cast<HWND>(low))) {
            widget->OnCommand(HIWORD(wide));
        }
        return 0;
    case WM_NOTIFY:
        if (Widget* widget = WidgetOf(reinterpret_cast<NMHDR*>(low)->hwndFrom))
            return widget->OnNotify(*reinterpret_cast<NMHDR*>(low));
        return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
        if (Widget* widget = WidgetOf(reinterpret_cast<HWND>(low))) widget->OnScroll(LOWORD(wide));
        return 0;
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
        if (NativeMenu::DrawPart(message, low)) return TRUE;
        break;
    case WM_INITMENUPOPUP:
        if (bar_) bar_->Refresh(reinterpret_cast<HMENU>(wide));
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wide) == WA_INACTIVE) {
            if (const HWND focus = GetFocus(); focus && IsChild(window_, focus)) remembered_ = focus;
        } else if (remembered_ && IsWindowEnabled(remembered_)) {
            SetFocus(remembered_);
            return 0;
        }
        break;
    case WM_ERASEBKGND: {
        RECT area{};
        GetClientRect(window_, &area);
        FillRect(reinterpret_cast<HDC>(wide), &area,
                 background_ ? background_ : GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        if (const LRESULT brush = Colour(reinterpret_cast<HDC>(wide), reinterpret_cast<HWND>(low)))
            return brush;
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP: {
        const POINT at{GET_X_LPARAM(low), GET_Y_LPARAM(low)};
        if (Frame* frame = FrameAt(at)) HandleMouse(*frame, at, message, wide);
        return 0;
    }
    case WM_MOVE:
    case WM_SIZE:
        HandlePlace(message, wide);
        return 0;
    case WM_GETMINMAXINFO: {
        RECT least{0, 0, scale_.PixelsX(form_.LeastSize().width), scale_.PixelsY(form_.LeastSize().height)};
        AdjustWindowRectEx(&least, Style(), GetMenu(window_) != nullptr, ExtendedStyle());
        reinterpret_cast<MINMAXINFO*>(low)->ptMinTrackSize = {least.right - least.left,
                                                              least.bottom - least.top};
        return 0;
    }
    default:
        break;
    }
    return DefWindowProcW(window, message, wide, low);
}

void WindowsFormView::HandlePlace(UINT message, WPARAM wide) {
    if (applying_ > 0) return;
    if (message == WM_SIZE) {
        const std::shared_ptr<bool> alive = alive_;
        form_.Report(nullptr, act::Minimize{wide == SIZE_MINIMIZED});
        if (!*alive || wide == SIZE_MINIMIZED) return;
        RECT inner{};
        GetClientRect(window_, &inner);
        form_.Report(nullptr, act::Resize{{scale_.TwipsX(static_cast<int>(inner.right)),
                                           scale_.TwipsY(static_cast<int>(inner.bottom))}});
    } else if (!IsIconic(window_)) {
        RECT frame{};
        GetWindowRect(window_, &frame);
        form_.Report(nullptr, act::Move{{scale_.TwipsX(static_cast<int>(frame.left)),
                                         scale_.TwipsY(static_cast<int>(frame.top))}});
    }
}

// The brush that a widget's ground is painted with; 0 for the system's own.
LRESULT WindowsFormView::Colour(HDC dc, HWND child) {
    Widget* widget = WidgetOf(child);
    if (!widget) return reinterpret_cast<LRESULT>(GroundOf(nullptr));
    const Control& control = widget->Model();
    const bool onForm = control.Kind() != ControlKind::TextBox &&
                        control.Kind() != ControlKind::RichTextBox && control.Kind() != ControlKind::ComboBox;
    if (!onForm && !control.BackColor() && !control.ForeColor()) return 0;
    SetTextColor(dc, control.ForeColor() ? static_cast<COLORREF>(*control.ForeColor())
                                         : GetSysColor(COLOR_WINDOWTEXT));
    if (control.BackColor()) {
        SetBkColor(dc, static_cast<COLORREF>(*control.BackColor()));
    } else if (!onForm) {
        SetBkColor(dc, GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    } else {
        SetBkMode(dc, TRANSPARENT);
    }
    return reinterpret_cast<LRESULT>(GroundOf(&control));
}

// The brush of the control or of the nearest container with a colour of its own, else the form's.
HBRUSH WindowsFormView::GroundOf(const Control* control) {
    for (; control; control = control->Parent().AsControl()) {
        if (const Entry* entry = Find(*control); entry && entry->brush) return entry->brush;
    }
    return background_ ? background_ : GetSysColorBrush(COLOR_BTNFACE);
}

// --- the widgets' messages

LRESULT CALLBACK WindowsFormView::WidgetProcedure(HWND window, UINT message, WPARAM wide, LPARAM low,
                                                  UINT_PTR, DWORD_PTR view) {
    auto* self = reinterpret_cast<WindowsFormView*>(view);
    if (const auto found = self->widgets_.find(window); found != self->widgets_.end())
        if (const auto answer = self->HandleWidget(*found->second, message, wide, low)) return *answer;
    return DefSubclassProc(window, message, wide, low);
}

// Empty where the widget's own procedure is to see the message.
std::optional<LRESULT> WindowsFormView::HandleWidget(Widget& widget, UINT message, WPARAM wide, LPARAM low) {
    Control& control = widget.Model();
    switch (message) {
    case WM_ERASEBKGND:
        // A frame paints no ground, and the form none below its widgets.
        if (control.Kind() != ControlKind::Frame) return std::nullopt;
        Erase(widget.Window(), reinterpret_cast<HDC>(wide));
        return 1;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
        const std::shared_ptr<bool> alive = alive_;
        if (message == WM_KILLFOCUS) widget.LookAtCaret();
        if (*alive) Report(control, act::Focus{message == WM_SETFOCUS});
        return std::nullopt;
    }
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE: {
        const std::shared_ptr<bool> alive = alive_;
        const bool used = HandleMouse(control, {GET_X_LPARAM(low), GET_Y_LPARAM(low)}, message, wide);
        if (*alive && message == WM_LBUTTONUP) {
            // The caret stands where the click put it once the widget has seen it.
            const LRESULT answer = DefSubclassProc(widget.Window(), message, wide, low);
            if (*alive) widget.LookAtCaret();
            return answer;
        }
        if (used || !*alive) return 0;
        return std::nullopt;
    }
    case WM_KEYUP: {
        const LRESULT answer = DefSubclassProc(widget.Window(), message, wide, low);
        widget.LookAtCaret();
        return answer;
    }
    case WM_CHAR:
        // What a one-line box does not want makes it beep.
        if ((wide == VK_RETURN || wide == VK_ESCAPE || wide == VK_TAB) &&
            !widget.Keeps(static_cast<int>(wide))) {
            return 0;
        }
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

// Answers whether the widget itself must not see the message any more.
bool WindowsFormView::HandleMouse(Control& control, const POINT& at, UINT message, WPARAM keys) {
    const Entry* entry = Find(control);
    const bool isFrame = control.Kind() == ControlKind::Frame;
    const HWND window = isFrame ? window_ : entry->widget->Window();
    const bool byMouse = isFrame || entry->widget->ClicksByMouse();
    const std::shared_ptr<bool> alive = alive_;
    const bool down = message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
                      message == WM_LBUTTONDBLCLK;
    const bool moved = message == WM_MOUSEMOVE;
    const bool right = message == WM_RBUTTONDOWN || message == WM_RBUTTONUP;
    const bool left = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_LBUTTONDBLCLK;
    RECT area{};
    GetClientRect(window, &area);
    const bool inside = PtInRect(&area, at);

    if (control.onMouse) {
        if (byMouse && down) SetCapture(window);
        if (byMouse && !down && !moved && GetCapture() == window) ReleaseCapture();
        POINT screen = at;
        ClientToScreen(window, &screen);
        const auto point = [this](const POINT& pixels) {
            return TwipPoint{scale_.TwipsX(static_cast<int>(pixels.x)),
                             scale_.TwipsY(static_cast<int>(pixels.y))};
        };
        const auto phase = down ? act::MousePhase::Down : moved ? act::MousePhase::Move : act::MousePhase::Up;
        const int button = moved ? ButtonsHeld(keys) : left ? 1 : right ? 2 : 4;
        Report(control, act::Mouse{phase, button, ShiftState(), point(at), point(screen)});
        if (!*alive) return true;
    }
    if (message == WM_LBUTTONDBLCLK && control.onDoubleClick) Report(control, act::DoubleClick{});
    if (*alive && message == WM_LBUTTONUP && byMouse && inside) Report(control, act::Click{});
    return !*alive;
}

// The innermost frame at a place of the form that no other control takes.
Frame* WindowsFormView::FrameAt(const POINT& at) {
    Frame* innermost = nullptr;
    for (Control* control : order_) {
        if (control->Kind() != ControlKind::Frame || !control->IsShown()) continue;
        const PixelRect area = AreaOf(*control);
        if (at.x >= area.x && at.y >= area.y && at.x < area.x + area.width && at.y < area.y + area.height)
            innermost = static_cast<Frame*>(control);
    }
    return innermost;
}

// The outline of a tab strip's pane, with the form's ground inside.
LRESULT CALLBACK WindowsFormView::PaneProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_ERASEBKGND) {
        Erase(window, reinterpret_cast<HDC>(wide));
        return 1;
    }
    if (message != WM_PAINT) return DefWindowProcW(window, message, wide, low);
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(window, &paint);
    RECT area{};
    GetClientRect(window, &area);
    FrameRect(dc, &area, GetSysColorBrush(COLOR_BTNSHADOW));
    EndPaint(window, &paint);
    return 0;
}

LRESULT CALLBACK WindowsFormView::PictureProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    auto* box = reinterpret_cast<PictureBox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_ERASEBKGND) return 1;
    if (message != WM_PAINT) return DefWindowProcW(window, message, wide, low);
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(window, &paint);
    if (box && box->Painted()) {
        PaintSurface(*box->Painted(), dc, 0, 0);
    } else {
        FillRect(dc, &paint.rcPaint, GetSysColorBrush(COLOR_BTNFACE));
    }
    if (box && box->HasBorder()) {
        RECT area{};
        GetClientRect(window, &area);
        FrameRect(dc, &area, GetSysColorBrush(COLOR_BTNSHADOW));
    }
    EndPaint(window, &paint);
    return 0;
}

// --- the keyboard

bool WindowsFormView::FilterKey(const MSG& message) {
    Widget* widget = WidgetOf(message.hwnd);
    if (message.message == WM_SYSCHAR) return TakeMnemonic(static_cast<wchar_t>(message.wParam));
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) return false;
    const int code = static_cast<int>(message.wParam);
    const std::shared_ptr<bool> alive = alive_;
    Control* control = widget ? &widget->Model() : nullptr;
    const bool open = control && control->Kind() == ControlKind::ComboBox && widget->Keeps(code);
    if (open) return false;
    if (form_.Report(control, act::Key{code, ShiftState()}) || !*alive) return true;
    if (message.message == WM_SYSKEYDOWN) return false;
    if (code == VK_TAB && !(ShiftState() & shift_state::Ctrl))
        return MoveFocus(ShiftState() & shift_state::Shift);
    if (control && control->Kind() == ControlKind::OptionButton) {
        if (code == VK_UP || code == VK_LEFT)
            return ChooseNeighbour(static_cast<OptionButton&>(*control), -1);
        if (code == VK_DOWN || code == VK_RIGHT)
            return ChooseNeighbour(static_cast<OptionButton&>(*control), 1);
    }
    return (code == VK_RETURN || code == VK_ESCAPE) && control && !widget->Keeps(code);
}

bool WindowsFormView::MoveFocus(bool backwards) {
    std::vector<Control*> reachable;
    for (Control* control : order_) {
        // Of a group of options only the chosen one stands in the Tab key's way.
        const auto* option = dynamic_cast<OptionButton*>(control);
        const bool skipped = option && !option->Value() && control != form_.ActiveControl();
        if (control->TakesFocus() && control->IsReachable() && !skipped) reachable.push_back(control);
    }
    if (reachable.empty()) return false;
    const auto here = std::find(reachable.begin(), reachable.end(), form_.ActiveControl());
    std::size_t next = 0;
    if (here != reachable.end()) {
        const auto place = static_cast<std::size_t>(here - reachable.begin());
        next = (place + (backwards ? reachable.size() - 1 : 1)) % reachable.size();
    } else if (backwards) {
        next = reachable.size() - 1;
    }
    Focus(*reachable[next]);
    if (dynamic_cast<TextBox*>(reachable[next]))
        SendMessageW(entries_[reachable[next]].widget->Window(), EM_SETSEL, 0, -1);
    return true;
}

bool WindowsFormView::ChooseNeighbour(OptionButton& option, int step) {
    std::vector<OptionButton*> group;
    for (Control* control : option.Parent().Children()) {
        auto* other = dynamic_cast<OptionButton*>(control);
        if (other && other->Group() == option.Group() && other->IsReachable()) group.push_back(other);
    }
    const auto here = std::find(group.begin(), group.end(), &option) - group.begin();
    const auto count = static_cast<std::ptrdiff_t>(group.size());
    OptionButton& chosen = *group[static_cast<std::size_t>((here + step + count) % count)];
    Focus(chosen);
    Report(chosen, act::Check{true});
    return true;
}

bool WindowsFormView::TakeMnemonic(wchar_t letter) {
    const auto wanted = static_cast<wchar_t>(towupper(letter));
    for (std::size_t i = 0; i < order_.size(); ++i) {
        Control& control = *order_[i];
        if (!control.IsReachable()) continue;
        if (auto* tabs = dynamic_cast<TabStrip*>(&control)) {
            for (std::size_t tab = 0; tab < tabs->Tabs().size(); ++tab) {
                if (MnemonicOf(tabs->Tabs()[tab]) != wanted) continue;
                Report(control, act::Choose{static_cast<int>(tab)});
                return true;
            }
        }
        if (MnemonicOf(control.Caption()) != wanted) continue;
        if (control.TakesFocus()) {
            Activate(control);
            return true;
        }
        const auto leadsTo =
            std::find_if(order_.begin() + static_cast<std::ptrdiff_t>(i) + 1, order_.end(),
                         [](const Control* next) { return next->TakesFocus() && next->IsReachable(); });
        if (leadsTo == order_.end()) return false;
        Focus(**leadsTo);
        return true;
    }
    return false;
}

// What a mnemonic does to a control of its own.
void WindowsFormView::Activate(Control& control) {
    const std::shared_ptr<bool> alive = alive_;
    Focus(control);
    if (!*alive) return;
    if (auto* box = dynamic_cast<CheckBox*>(&control)) {
        Report(control, act::Check{!box->Value()});
    } else if (dynamic_cast<OptionButton*>(&control)) {
        Report(control, act::Check{true});
    } else if (dynamic_cast<Button*>(&control)) {
        Report(control, act::Click{});
    }
}

} // namespace quorvane
