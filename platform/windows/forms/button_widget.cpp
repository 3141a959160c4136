#include "platform/forms/form.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/forms/widget.h"

#include <algorithm>

#include <uxtheme.h>
#include <vsstyle.h>

namespace quorvane {
namespace {

// The person's theme, where the system has themes and one is in use.
class ButtonTheme {
  public:
    explicit ButtonTheme(HWND window) {
        static const HMODULE library = LoadLibraryW(L"uxtheme.dll");
        const auto open = Find<decltype(&OpenThemeData)>(library, "OpenThemeData");
        draw_ = Find<decltype(&DrawThemeBackground)>(library, "DrawThemeBackground");
        close_ = Find<decltype(&CloseThemeData)>(library, "CloseThemeData");
        if (open && draw_ && close_) theme_ = open(window, L"BUTTON");
    }
    ~ButtonTheme() {
        if (theme_) close_(theme_);
    }
    ButtonTheme(const ButtonTheme&) = delete;
    ButtonTheme& operator=(const ButtonTheme&) = delete;

    // False where there is no theme.
    bool Draw(HDC dc, int state, const RECT& area) const {
        return theme_ && SUCCEEDED(draw_(theme_, dc, BP_PUSHBUTTON, state, &area, nullptr));
    }

  private:
    template<typename Function>
    static Function Find(HMODULE library, const char* name) {
        return library ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)))
                       : nullptr;
    }

    HTHEME theme_ = nullptr;
    decltype(&DrawThemeBackground) draw_ = nullptr;
    decltype(&CloseThemeData) close_ = nullptr;
};

COLORREF Darker(COLORREF color) {
    const auto part = [](int channel) { return static_cast<BYTE>(channel * 7 / 8); };
    return RGB(part(GetRValue(color)), part(GetGValue(color)), part(GetBValue(color)));
}

// The system's own button, except that one with a colour is drawn here: the system's has none.
class ButtonWidget final : public Widget {
  public:
    ButtonWidget(WidgetSite& site, Button& model)
        : Widget(site, model, WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON | BS_MULTILINE)
        , default_(model.OwnerForm().DefaultButton() == &model) {}

    void ShowLook() override {
        const DWORD kind = IsColoured() ? BS_OWNERDRAW : default_ ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        SendMessageW(window_, BM_SETSTYLE, kind | BS_MULTILINE, TRUE);
    }
    void FrameAsDefault(bool framed) override {
        if (framed == default_) return;
        default_ = framed;
        IsColoured() ? static_cast<void>(InvalidateRect(window_, nullptr, FALSE)) : ShowLook();
    }
    void OnCommand(WORD code) override {
        if (code == BN_CLICKED) Report(act::Click{});
    }
    // The second click of two is one like the first, as with the system's own button.
    std::optional<LRESULT> Hear(UINT message, WPARAM wide, LPARAM low) override {
        if (message != WM_LBUTTONDBLCLK || !IsColoured()) return std::nullopt;
        return DefSubclassProc(window_, WM_LBUTTONDOWN, wide, low);
    }
    void Draw(const DRAWITEMSTRUCT& part) override {
        const bool pressed = part.itemState & ODS_SELECTED;
        const RECT inner = DrawFrame(part, pressed);
        if (model_.BackColor()) {
            const auto color = static_cast<COLORREF>(*model_.BackColor());
            const HBRUSH brush = CreateSolidBrush(pressed ? Darker(color) : color);
            FillRect(part.hDC, &inner, brush);
            DeleteObject(brush);
        }
        DrawCaption(part, inner, pressed);
        if ((part.itemState & ODS_FOCUS) && !(part.itemState & ODS_NOFOCUSRECT)) {
            RECT focus = inner;
            InflateRect(&focus, -1, -1);
            SetTextColor(part.hDC, RGB(0, 0, 0));
            SetBkColor(part.hDC, RGB(255, 255, 255));
            DrawFocusRect(part.hDC, &focus);
        }
    }

  private:
    bool IsColoured() const { return model_.BackColor() || model_.ForeColor(); }

    // The border and what the theme has inside it; answers the inside.
    RECT DrawFrame(const DRAWITEMSTRUCT& part, bool pressed) const {
        constexpr int ThemeBorder = 2;
        constexpr int Border = 2;
        const bool disabled = part.itemState & ODS_DISABLED;
        RECT area = part.rcItem;
        // The corners of a theme's button are the form's.
        SendMessageW(site_.Window(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(part.hDC), 0);
        const int state = disabled   ? PBS_DISABLED
                          : pressed  ? PBS_PRESSED
                          : default_ ? PBS_DEFAULTED
                                     : PBS_NORMAL;
        if (ButtonTheme(window_).Draw(part.hDC, state, area)) {
            InflateRect(&area, -ThemeBorder, -ThemeBorder);
            return area;
        }
        if (default_) {
            FrameRect(part.hDC, &area, GetSysColorBrush(COLOR_WINDOWFRAME));
            InflateRect(&area, -1, -1);
        }
        DrawFrameControl(part.hDC, &area, DFC_BUTTON,
                         static_cast<UINT>(DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0)));
        InflateRect(&area, -Border, -Border);
        return area;
    }

    void DrawCaption(const DRAWITEMSTRUCT& part, RECT area, bool pressed) const {
        const std::wstring caption = Wide(model_.Caption());
        const auto length = static_cast<int>(caption.size());
        const UINT marks = (part.itemState & ODS_NOACCEL) ? UINT{DT_HIDEPREFIX} : 0U;
        const UINT format = DT_CENTER | DT_WORDBREAK | marks;
        RECT text = area;
        const int height = DrawTextW(part.hDC, caption.c_str(), length, &text, format | DT_CALCRECT);
        area.top += std::max<LONG>(0, (area.bottom - area.top - height) / 2);
        if (pressed) OffsetRect(&area, 1, 1);
        SetBkMode(part.hDC, TRANSPARENT);
        SetTextColor(part.hDC, part.itemState & ODS_DISABLED ? GetSysColor(COLOR_GRAYTEXT)
                               : model_.ForeColor()          ? static_cast<COLORREF>(*model_.ForeColor())
                                                             : GetSysColor(COLOR_BTNTEXT));
        DrawTextW(part.hDC, caption.c_str(), length, &area, format);
    }

    bool default_;
};

} // namespace

void WidgetMaker::Visit(Button& control) {
    made = std::make_unique<ButtonWidget>(site_, control);
}

} // namespace quorvane
