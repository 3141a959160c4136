#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_host.h"
#include "platform/windows/forms/form_view.h"
#include "platform/windows/forms/keys.h"

#include <windowsx.h>

// What the form's window and its widgets are told by the system.
namespace quorvane {
namespace {

bool IsButtonDown(UINT message) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
        return true;
    default:
        return false;
    }
}

bool IsMouse(UINT message) {
    return message == WM_MOUSEMOVE || IsButtonDown(message) || message == WM_LBUTTONUP ||
           message == WM_RBUTTONUP || message == WM_MBUTTONUP;
}

int ButtonOf(UINT message) {
    const bool right = message == WM_RBUTTONDOWN || message == WM_RBUTTONUP || message == WM_RBUTTONDBLCLK;
    const bool left = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_LBUTTONDBLCLK;
    return left ? 1 : right ? 2 : 4;
}

int ButtonsHeld(WPARAM keys) {
    return ((keys & MK_LBUTTON) ? 1 : 0) | ((keys & MK_RBUTTON) ? 2 : 0) | ((keys & MK_MBUTTON) ? 4 : 0);
}

// Paints a child's ground with what its form has for a ground.
void Erase(HWND child, HDC dc) {
    RECT area{};
    GetClientRect(child, &area);
    const LRESULT brush = SendMessageW(GetParent(child), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                                       reinterpret_cast<LPARAM>(child));
    FillRect(dc, &area, reinterpret_cast<HBRUSH>(brush));
}

BOOL CALLBACK TellNewColours(HWND child, LPARAM) {
    SendMessageW(child, WM_SYSCOLORCHANGE, 0, 0);
    return TRUE;
}

} // namespace

LRESULT CALLBACK WindowsFormView::FormProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    auto* view = reinterpret_cast<WindowsFormView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return view ? view->Handle(message, wide, low) : DefWindowProcW(window, message, wide, low);
}

LRESULT WindowsFormView::Handle(UINT message, WPARAM wide, LPARAM low) {
    const HWND window = window_; // the view may be gone behind a report
    std::optional<LRESULT> answer = HandleOfWidgets(message, wide, low);
    if (!answer) answer = HandleOwn(message, wide, low);
    return answer ? *answer : DefWindowProcW(window, message, wide, low);
}

// What the window is told for its widgets; empty where the system's own procedure is to see the message.
std::optional<LRESULT> WindowsFormView::HandleOfWidgets(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
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
        if (message != WM_DRAWITEM) return std::nullopt;
        if (Widget* widget = WidgetOf(reinterpret_cast<DRAWITEMSTRUCT*>(low)->hwndItem))
            widget->Draw(*reinterpret_cast<DRAWITEMSTRUCT*>(low));
        return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        if (const LRESULT brush = Colour(reinterpret_cast<HDC>(wide), reinterpret_cast<HWND>(low)))
            return brush;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

// What the window is told for itself; empty as above.
std::optional<LRESULT> WindowsFormView::HandleOwn(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
    case WM_CLOSE:
        form_.Report(nullptr, act::CloseByFrame{});
        return 0;
    case WM_DESTROY: // by somebody else, or the window would know no view: no form stays behind it
        destroyed_ = true;
        host_.Events().Deliver([form = &form_] { form->Unload(); });
        return 0;
    case WM_INITMENUPOPUP:
        OpenTitle(reinterpret_cast<HMENU>(wide));
        return 0;
    case WM_CONTEXTMENU: // of the form, or of a widget that has no menu of its own
        form_.Report(nullptr, act::ContextMenu{low == -1});
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wide) == WA_INACTIVE) {
            if (const HWND focus = GetFocus(); focus && IsChild(window_, focus)) remembered_ = focus;
        } else if (remembered_ && IsWindowEnabled(remembered_)) {
            SetFocus(remembered_);
            return 0;
        }
        return std::nullopt;
    case WM_ERASEBKGND: {
        RECT area{};
        GetClientRect(window_, &area);
        FillRect(reinterpret_cast<HDC>(wide), &area,
                 background_ ? background_ : GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    case WM_SYSCOLORCHANGE: // told to the form alone, and its controls keep what they paint with
        EnumChildWindows(window_, TellNewColours, 0);
        return std::nullopt;
    case WM_CAPTURECHANGED:
        pressed_ = nullptr;
        groundPressed_ = false;
        return 0;
    case WM_MOVE:
    case WM_SIZE:
    case WM_GETMINMAXINFO:
    case WM_DPICHANGED:
        HandlePlace(message, wide, low);
        return 0;
    default:
        return IsMouse(message) ? HandleFormMouse(message, wide, low) : std::nullopt;
    }
}

std::optional<LRESULT> WindowsFormView::HandleFormMouse(UINT message, WPARAM keys, LPARAM low) {
    const POINT at{GET_X_LPARAM(low), GET_Y_LPARAM(low)};
    // A frame lets the mouse through to the form behind it.
    const bool onFrame = pressed_ && pressed_->Kind() == ControlKind::Frame;
    Control* frame = onFrame ? pressed_ : groundPressed_ ? nullptr : FrameAt(at);
    const bool gone = frame ? HandleMouse(*frame, at, message, keys) : HandleGround(at, message, keys);
    if (gone || message != WM_RBUTTONUP) return 0;
    return std::nullopt; // the system asks for the menu
}

void WindowsFormView::HandlePlace(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
    case WM_GETMINMAXINFO: {
        const TwipSize inner = form_.LeastSize();
        const RECT least = WithFrame({0, 0, Scale().PixelsX(inner.width), Scale().PixelsY(inner.height)});
        reinterpret_cast<MINMAXINFO*>(low)->ptMinTrackSize = {least.right - least.left,
                                                              least.bottom - least.top};
        return;
    }
    case WM_DPICHANGED: {
        const RECT& wanted = *reinterpret_cast<const RECT*>(low);
        SetWindowPos(window_, nullptr, wanted.left, wanted.top, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        if (applying_ == 0) Rescale(HIWORD(wide));
        return;
    }
    case WM_SIZE:
        return TellSize(wide);
    default:
        return TellCorner();
    }
}

void WindowsFormView::TellSize(WPARAM kind) {
    if (applying_ > 0) return;
    const std::shared_ptr<bool> alive = alive_;
    form_.Report(nullptr, act::Minimize{kind == SIZE_MINIMIZED});
    if (!*alive || kind == SIZE_MINIMIZED) return;
    RECT inner{};
    GetClientRect(window_, &inner);
    form_.Report(nullptr, act::Resize{{Scale().TwipsX(static_cast<int>(inner.right)),
                                       Scale().TwipsY(static_cast<int>(inner.bottom))}});
    if (*alive && form_.RightToLeft()) PlaceControls(); // they hang on the right edge
}

void WindowsFormView::TellCorner() {
    if (applying_ > 0 || IsIconic(window_)) return;
    RECT frame{};
    GetWindowRect(window_, &frame);
    const TwipScale screen = host_.Scale();
    form_.Report(nullptr, act::Move{{screen.TwipsX(static_cast<int>(frame.left)),
                                     screen.TwipsY(static_cast<int>(frame.top))}});
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
        if (message == WM_SETFOCUS) FrameDefaultButton(control);
        if (*alive) Report(control, act::Focus{message == WM_SETFOCUS});
        return std::nullopt;
    }
    case WM_CAPTURECHANGED:
        if (pressed_ == &control) pressed_ = nullptr;
        return widget.Hear(message, wide, low);
    case WM_KEYUP:
        return LetThroughToCaret(widget, message, wide, low);
    case WM_CHAR:
        // What a one-line box does not want makes it beep.
        if ((wide == VK_RETURN || wide == VK_ESCAPE || wide == VK_TAB) &&
            !widget.Keeps(static_cast<int>(wide))) {
            return 0;
        }
        return widget.Hear(message, wide, low);
    default:
        if (IsMouse(message) && HandleMouse(control, {GET_X_LPARAM(low), GET_Y_LPARAM(low)}, message, wide)) {
            return 0;
        }
        if (message == WM_LBUTTONUP) return LetThroughToCaret(widget, message, wide, low);
        return widget.Hear(message, wide, low);
    }
}

// The caret stands where the click or the key put it once the widget has seen it; which may end the form.
LRESULT WindowsFormView::LetThroughToCaret(Widget& widget, UINT message, WPARAM wide, LPARAM low) {
    const std::shared_ptr<bool> alive = alive_;
    const LRESULT answer = DefSubclassProc(widget.Window(), message, wide, low);
    if (*alive) widget.LookAtCaret();
    return answer;
}

// What the window is told of the mouse, from the first button that goes down to the last that comes up.
void WindowsFormView::HandleCapture(HWND window, UINT message, WPARAM keys) {
    if (IsButtonDown(message)) {
        SetCapture(window);
    } else if (message != WM_MOUSEMOVE && ButtonsHeld(keys) == 0 && GetCapture() == window) {
        ReleaseCapture();
    }
}

act::Mouse WindowsFormView::MouseOf(HWND window, const POINT& at, UINT message, WPARAM keys) const {
    POINT screen = at;
    ClientToScreen(window, &screen);
    const auto point = [](const POINT& pixels, const TwipScale& scale) {
        return TwipPoint{scale.TwipsX(static_cast<int>(pixels.x)), scale.TwipsY(static_cast<int>(pixels.y))};
    };
    POINT inside = at; // from the left edge in every window
    if (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) {
        RECT area{};
        GetClientRect(window, &area);
        inside.x = area.right - 1 - at.x;
    }
    const bool moved = message == WM_MOUSEMOVE;
    const auto phase = moved                   ? act::MousePhase::Move
                       : IsButtonDown(message) ? act::MousePhase::Down
                                               : act::MousePhase::Up;
    return {phase, moved ? ButtonsHeld(keys) : ButtonOf(message), ShiftState(), point(inside, Scale()),
            point(screen, host_.Scale())};
}

// Answers whether the widget itself must not see the message any more: the form is gone.
bool WindowsFormView::HandleMouse(Control& control, const POINT& at, UINT message, WPARAM keys) {
    const Entry* entry = Find(control);
    const bool isFrame = control.Kind() == ControlKind::Frame;
    const HWND window = isFrame ? window_ : entry->widget->Window();
    const bool byMouse = isFrame || entry->widget->ClicksByMouse();
    const std::shared_ptr<bool> alive = alive_;
    RECT area{};
    GetClientRect(entry->widget->Window(), &area);
    if (isFrame) MapWindowPoints(entry->widget->Window(), window_, reinterpret_cast<POINT*>(&area), 2);

    // The second click of a double click is none of its own.
    const bool clicked = message == WM_LBUTTONUP && byMouse && pressed_ == &control && PtInRect(&area, at);
    const bool doubled = message == WM_LBUTTONDBLCLK && control.onDoubleClick;
    if (byMouse) HandleCapture(window, message, keys);
    if (IsButtonDown(message)) pressed_ = message == WM_LBUTTONDOWN ? &control : nullptr;
    if (control.onMouse) Report(control, MouseOf(window, at, message, keys));
    if (*alive && doubled) Report(control, act::DoubleClick{});
    if (*alive && clicked) Report(control, act::Click{});
    return !*alive;
}

bool WindowsFormView::HandleGround(const POINT& at, UINT message, WPARAM keys) {
    const std::shared_ptr<bool> alive = alive_;
    HandleCapture(window_, message, keys);
    groundPressed_ = ButtonsHeld(keys) != 0;
    form_.Report(nullptr, MouseOf(window_, at, message, keys));
    if (*alive && message == WM_LBUTTONDBLCLK) form_.Report(nullptr, act::DoubleClick{});
    return !*alive;
}

// The bar may be built anew by what its opening does.
void WindowsFormView::OpenTitle(HMENU submenu) {
    if (!bar_ || !bar_->IsTitle(submenu)) return;
    const std::shared_ptr<bool> alive = alive_;
    host_.Events().Deliver([&] {
        ShownMenu opened = form_.MenuBar()->Open();
        if (*alive && bar_ && bar_->IsTitle(submenu)) bar_->Refresh(submenu, std::move(opened));
    });
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

} // namespace quorvane
