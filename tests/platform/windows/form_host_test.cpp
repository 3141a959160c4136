#include "core/utf8.h"
#include "platform/forms/form.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_host.h"
#include "platform/windows/forms/form_view.h"
#include "tests/contracts/conformance/conformance.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quorvane {
namespace {

// A person at native widgets: keys and mouse as messages, choices as the widgets' own commands.
class WindowsHands final : public Hands {
  public:
    WindowsHands(Form& form, EventLoop& events)
        : form_(form)
        , events_(events) {}

    void Click(Control& control) override {
        if (control.Kind() == ControlKind::Button) {
            SendMessageW(Window(control), BM_CLICK, 0, 0);
            return;
        }
        HWND window = Window(control);
        RECT area{};
        GetClientRect(window, &area);
        POINT at{area.right / 2, area.bottom / 2};
        if (control.Kind() == ControlKind::Frame) { // the window behind the caption gets it
            at = {area.right / 2, 3};
            MapWindowPoints(window, GetParent(window), &at, 1);
            window = GetParent(window);
        }
        SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    }
    void DoubleClick(Control& control) override {
        RECT row{};
        ListView_GetItemRect(Window(control), static_cast<ListView&>(control).SelectedRow(), &row,
                             LVIR_LABEL);
        SendMessageW(Window(control), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(row.left + 5, row.top + 3));
    }
    void Toggle(Control& control) override { SendMessageW(Window(control), BM_CLICK, 0, 0); }
    void Type(Control& control, const std::string& letters) override {
        const HWND window = EditOf(control);
        SetFocus(window);
        SendMessageW(window, EM_SETSEL, 1 << 20, 1 << 20);
        for (const wchar_t letter : Wide(letters))
            SendMessageW(window, WM_CHAR, letter == L'\n' ? WPARAM{VK_RETURN} : letter, 0);
    }
    void PressKey(Control& control, int code, int shift) override {
        const HWND window = EditOf(control);
        SetFocus(window);
        events_.Pump();
        HoldKeys(shift);
        PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(code), 1);
        PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(code), static_cast<LPARAM>(0xC0000001));
        events_.Pump();
        HoldKeys(0);
    }
    void Choose(Control& control, int index) override {
        const HWND window = Window(control);
        if (control.Kind() == ControlKind::ComboBox) {
            SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
            SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(window));
        } else if (control.Kind() == ControlKind::TabStrip) {
            for (const HWND row : TabRows(window)) {
                const int tabs = TabCtrl_GetItemCount(row);
                if (index >= 0 && index < tabs) {
                    RECT tab{};
                    SendMessageW(row, TCM_GETITEMRECT, static_cast<WPARAM>(index),
                                 reinterpret_cast<LPARAM>(&tab));
                    SendMessageW(row, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(tab.left + 8, tab.top + 8));
                    SendMessageW(row, WM_LBUTTONUP, 0, MAKELPARAM(tab.left + 8, tab.top + 8));
                }
                index -= tabs;
            }
        } else {
            ListView_SetItemState(window, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        }
    }
    void CheckRow(ListView& list, int row) override {
        const HWND window = Window(list);
        RECT area{};
        ListView_GetItemRect(window, row, &area, LVIR_BOUNDS);
        LVHITTESTINFO hit{};
        for (hit.pt = {area.left, area.top + 3}; hit.pt.x < area.right; ++hit.pt.x) {
            SendMessageW(window, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
            if (hit.flags & LVHT_ONITEMSTATEICON) break;
        }
        SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(hit.pt.x + 3, hit.pt.y));
        SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(hit.pt.x + 3, hit.pt.y));
    }
    void Step(RangeControl& control, int by) override {
        const WPARAM key = by > 0 ? VK_RIGHT : VK_LEFT;
        SendMessageW(Window(control), WM_KEYDOWN, key, 1);
        SendMessageW(Window(control), WM_KEYUP, key, 1);
    }
    void PickDate(Control& control, const DateTime& value) override {
        // A sheet's places are the system's secret: what it tells after a click stands for one.
        const HWND window = Window(control);
        SYSTEMTIME time{static_cast<WORD>(value.year),
                        static_cast<WORD>(value.month),
                        0,
                        static_cast<WORD>(value.day),
                        static_cast<WORD>(value.hour),
                        static_cast<WORD>(value.minute),
                        static_cast<WORD>(value.second),
                        0};
        if (control.Kind() == ControlKind::MonthView) {
            SendMessageW(window, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
            NMSELCHANGE told{{window, 0, static_cast<UINT>(MCN_SELECT)}, time, {}};
            SendMessageW(GetParent(window), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
        } else {
            SendMessageW(window, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
            NMDATETIMECHANGE told{{window, 0, static_cast<UINT>(DTN_DATETIMECHANGE)}, GDT_VALID, time};
            SendMessageW(GetParent(window), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
        }
    }
    void ChooseFromMenuBar(Form& form, int menu, int entry) override {
        const HWND window = WindowOf(form);
        const HMENU submenu = GetSubMenu(GetMenu(window), menu);
        SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(submenu), menu);
        SendMessageW(window, WM_COMMAND, GetMenuItemID(submenu, entry), 0);
    }
    void Mouse(Form& form, Control* control, act::MousePhase phase, int button, int shift,
               TwipPoint at) override {
        const UINT down = button == 1 ? WM_LBUTTONDOWN : button == 2 ? WM_RBUTTONDOWN : WM_MBUTTONDOWN;
        const WPARAM held = button == 1 ? MK_LBUTTON : button == 2 ? MK_RBUTTON : MK_MBUTTON;
        const UINT message = phase == act::MousePhase::Move ? WM_MOUSEMOVE
                             : phase == act::MousePhase::Up ? down + 1
                                                            : down;
        HoldKeys(shift);
        SendMessageW(control ? Window(*control) : WindowOf(form), message,
                     phase == act::MousePhase::Up ? 0 : held, PointIn(form, at));
    }
    void DoubleClickGround(Form& form) override {
        const LPARAM place = PointIn(form, GroundOf(form));
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
            SendMessageW(WindowOf(form), message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, place);
    }
    void PickFromPopup(Form& form, Control* control, int entry, const std::function<bool()>& ready) override {
        const HWND window = WindowOf(form);
        int rounds = 0;
        TimerId pick = events_.StartTimer("pick", 10, [&] {
            const bool open = FindWindowW(L"#32768", nullptr) && ready();
            if (!open && ++rounds < 1000) return;
            events_.StopTimer(pick);
            pick = 0;
            for (int i = 0; i <= entry; ++i)
                PostMessageW(window, WM_KEYDOWN, VK_DOWN, 1);
            PostMessageW(window, WM_KEYDOWN, VK_RETURN, 1);
        });
        if (control) {
            SetFocus(Window(*control));
            PostMessageW(Window(*control), WM_KEYDOWN, VK_APPS, 1);
            PostMessageW(Window(*control), WM_KEYUP, VK_APPS, static_cast<LPARAM>(0xC0000001));
            events_.RunWhile([&pick] { return pick != 0; });
        } else {
            Mouse(form, nullptr, act::MousePhase::Down, 2, 0, GroundOf(form));
            Mouse(form, nullptr, act::MousePhase::Up, 2, 0, GroundOf(form));
        }
    }
    void MoveWindow(Form& form, TwipPoint upperLeft) override {
        const TwipScale scale = form.Host().Scale();
        SetWindowPos(WindowOf(form), nullptr, scale.PixelsX(upperLeft.x), scale.PixelsY(upperLeft.y), 0, 0,
                     SWP_NOZORDER | SWP_NOSIZE);
    }
    void ResizeWindow(Form& form, TwipSize client) override {
        const TwipScale scale = form.Host().Scale();
        RECT frame{};
        RECT inner{};
        GetWindowRect(WindowOf(form), &frame);
        GetClientRect(WindowOf(form), &inner);
        SetWindowPos(WindowOf(form), nullptr, 0, 0,
                     frame.right - frame.left - inner.right + scale.PixelsX(client.width),
                     frame.bottom - frame.top - inner.bottom + scale.PixelsY(client.height),
                     SWP_NOZORDER | SWP_NOMOVE);
    }
    void Minimise(Form& form, bool minimized) override {
        SendMessageW(WindowOf(form), WM_SYSCOMMAND, minimized ? SC_MINIMIZE : SC_RESTORE, 0);
    }
    void CloseByFrame(Form& form) override { SendMessageW(WindowOf(form), WM_SYSCOMMAND, SC_CLOSE, 0); }
    std::string Shown(Control& control) override {
        const HWND window = Window(control);
        const auto ask = [window](UINT message) {
            return static_cast<int>(SendMessageW(window, message, 0, 0));
        };
        switch (control.Kind()) {
        case ControlKind::TextBox:
        case ControlKind::RichTextBox:
            return Quoted(TextOf(window));
        case ControlKind::CheckBox:
            return ask(BM_GETCHECK) == BST_CHECKED ? "checked" : "clear";
        case ControlKind::OptionButton:
            return ask(BM_GETCHECK) == BST_CHECKED ? "chosen" : "clear";
        case ControlKind::ComboBox:
            return std::to_string(ask(CB_GETCURSEL)) + ' ' + Quoted(TextOf(window)) + " of " +
                   std::to_string(ask(CB_GETCOUNT));
        case ControlKind::ListView:
            return ShownRows(window);
        case ControlKind::TabStrip:
            return ShownTabs(window);
        case ControlKind::Slider:
            return Range(ask(TBM_GETPOS), ask(TBM_GETRANGEMIN), ask(TBM_GETRANGEMAX));
        case ControlKind::ProgressBar: {
            PBRANGE range{};
            SendMessageW(window, PBM_GETRANGE, 0, reinterpret_cast<LPARAM>(&range));
            return Range(ask(PBM_GETPOS), range.iLow, range.iHigh);
        }
        case ControlKind::ScrollBar: {
            SCROLLINFO info{sizeof info, SIF_POS | SIF_RANGE, 0, 0, 0, 0, 0};
            GetScrollInfo(window, SB_CTL, &info);
            return Range(info.nPos, info.nMin, info.nMax);
        }
        case ControlKind::DatePicker:
            return ShownDate(window, DTM_GETSYSTEMTIME, true);
        case ControlKind::MonthView:
            return ShownDate(window, MCM_GETCURSEL, false);
        case ControlKind::Label:
        case ControlKind::Frame:
        case ControlKind::Button:
            EXPECT_EQ(TextOf(window), control.Caption());
            return {};
        case ControlKind::PictureBox:
            return {};
        }
        return "unknown kind";
    }
    std::string ShownLook(Control& control) override {
        const HWND window = Window(control);
        const HDC dc = GetDC(window);
        const UINT message = control.Kind() == ControlKind::TextBox ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
        SendMessageW(WindowOf(form_), message, reinterpret_cast<WPARAM>(dc),
                     reinterpret_cast<LPARAM>(window));
        const auto fore = static_cast<Color>(GetTextColor(dc));
        const auto back = static_cast<Color>(GetBkColor(dc));
        ReleaseDC(window, dc);
        return LookText(TipOf(window), fore, back);
    }
    PixelRect PlaceOf(Control& control) override {
        // Made of several windows.
        if (control.Kind() == ControlKind::TabStrip) return ToPixels(control.Bounds(), form_.Host().Scale());
        const HWND window = Window(control);
        RECT area{};
        GetWindowRect(window, &area);
        RECT inner{};
        const HWND form = GetParent(window);
        GetClientRect(form, &inner);
        POINT corner{0, 0};
        MapWindowPoints(form, nullptr, &corner, 1);
        const bool mirrored = GetWindowLongW(form, GWL_EXSTYLE) & WS_EX_LAYOUTRTL;
        const LONG left = mirrored ? corner.x - inner.right : corner.x;
        return {static_cast<int>(area.left - left), static_cast<int>(area.top - corner.y),
                static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)};
    }
    const Control* SeenAt(Control& control) override {
        RECT area{};
        GetWindowRect(Window(control), &area);
        const HWND form = GetParent(Window(control));
        POINT middle{(area.left + area.right) / 2, (area.top + area.bottom) / 2};
        MapWindowPoints(nullptr, form, &middle, 1);
        const HWND seen = ChildWindowFromPointEx(form, middle, CWP_SKIPINVISIBLE);
        for (Control* each : form_.Controls()) {
            if (Window(*each) == seen) return each;
        }
        return nullptr;
    }
    void Settle() override { events_.Pump(); }

  private:
    static HWND WindowOf(Form& form) { return static_cast<WindowsFormView*>(form.View())->Window(); }
    static void HoldKeys(int shift) {
        BYTE keys[256]{};
        if (shift & shift_state::Ctrl) keys[VK_CONTROL] = 0x80;
        if (shift & shift_state::Shift) keys[VK_SHIFT] = 0x80;
        SetKeyboardState(keys);
    }
    static LPARAM PointIn(Form& form, TwipPoint at) {
        const TwipScale scale = form.Host().Scale();
        return MAKELPARAM(scale.PixelsX(at.x), scale.PixelsY(at.y));
    }
    // The form's tool tips are a window that belongs to its own.
    std::string TipOf(HWND widget) {
        struct Search {
            HWND owner;
            HWND found;
        } search{WindowOf(form_), nullptr};
        const auto look = [](HWND window, LPARAM data) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(data);
            wchar_t name[40]{};
            GetClassNameW(window, name, 40);
            if (GetWindow(window, GW_OWNER) == wanted.owner && std::wstring(name) == TOOLTIPS_CLASSW)
                wanted.found = window;
            return !wanted.found;
        };
        EnumThreadWindows(GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&search));
        wchar_t text[200]{};
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V1_SIZE;
        tool.hwnd = search.owner;
        tool.uId = reinterpret_cast<UINT_PTR>(widget);
        tool.lpszText = text;
        SendMessageW(search.found, TTM_GETTEXTW, 200, reinterpret_cast<LPARAM>(&tool));
        return Utf8(text);
    }
    HWND Window(Control& control) const {
        return reinterpret_cast<HWND>(form_.View()->NativeHandle(control));
    }
    HWND EditOf(Control& control) const {
        const HWND inner = FindWindowExW(Window(control), nullptr, L"Edit", nullptr);
        return inner ? inner : Window(control);
    }
    static std::string TextOf(HWND window) {
        wchar_t text[1000]{};
        GetWindowTextW(window, text, 1000);
        return Utf8(text);
    }
    static std::string Range(int value, int minimum, int maximum) {
        return std::to_string(value) + " in " + std::to_string(minimum) + ".." + std::to_string(maximum);
    }
    static std::string ShownRows(HWND window) {
        std::string rows = std::to_string(ListView_GetNextItem(window, -1, LVNI_SELECTED));
        const int columns = Header_GetItemCount(ListView_GetHeader(window));
        for (int row = 0; row < ListView_GetItemCount(window); ++row) {
            rows += ListView_GetCheckState(window, row) ? " [x] " : " [ ] ";
            for (int column = 0; column < columns; ++column) {
                wchar_t text[100]{};
                LVITEMW item{};
                item.iSubItem = column;
                item.pszText = text;
                item.cchTextMax = 100;
                SendMessageW(window, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                             reinterpret_cast<LPARAM>(&item));
                rows += (column > 0 ? "|" : "") + Quoted(Utf8(text));
            }
        }
        return rows;
    }
    // The windows of a strip's rows; the form has no other strip. Each lies directly below the one before.
    static std::vector<HWND> TabRows(HWND window) {
        std::vector<HWND> rows;
        HWND row = nullptr;
        while ((row = FindWindowExW(GetParent(window), row, WC_TABCONTROLW, nullptr)))
            rows.push_back(row);
        return rows;
    }
    static std::string ShownTabs(HWND window) {
        std::string tabs;
        int chosen = -1;
        int first = 0;
        for (const HWND row : TabRows(window)) {
            if (TabCtrl_GetCurSel(row) >= 0) chosen = first + TabCtrl_GetCurSel(row);
            for (int tab = 0; tab < TabCtrl_GetItemCount(row); ++tab, ++first) {
                wchar_t text[100]{};
                TCITEMW item{};
                item.mask = TCIF_TEXT;
                item.pszText = text;
                item.cchTextMax = 100;
                SendMessageW(row, TCM_GETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
                tabs += ' ' + Quoted(Utf8(text));
            }
        }
        return std::to_string(chosen) + tabs;
    }
    static std::string ShownDate(HWND window, UINT message, bool withTime) {
        SYSTEMTIME time{};
        SendMessageW(window, message, 0, reinterpret_cast<LPARAM>(&time));
        char text[40]{};
        std::snprintf(text, sizeof text, "%04d-%02d-%02d", time.wYear, time.wMonth, time.wDay);
        std::string date = text;
        std::snprintf(text, sizeof text, " %02d:%02d:%02d", time.wHour, time.wMinute, time.wSecond);
        return withTime ? date + text : date;
    }

    Form& form_;
    EventLoop& events_;
};

class WindowsFormHostTest : public testing::Test {
  protected:
    WindowsEventLoop events_;
    WindowsDrawing drawing_;
    WindowsFormHost host_{events_};
    LocaleStrings strings_;
    Forms forms_{host_, events_, drawing_, &strings_};
};

TEST_F(WindowsFormHostTest, BehavesAsEverywhere) {
    ConformanceForm form(forms_);
    WindowsHands hands(form, events_);
    CheckConformance(form, hands, strings_);
}

TEST_F(WindowsFormHostTest, BlocksAsEverywhere) {
    CheckModality(forms_, [](SmallForm& form) {
        const HWND window = static_cast<WindowsFormView*>(form.View())->Window();
        const HWND button = reinterpret_cast<HWND>(form.View()->NativeHandle(form.cmdPress));
        if (IsWindowEnabled(window)) SendMessageW(button, BM_CLICK, 0, 0);
    });
}

TEST_F(WindowsFormHostTest, LieWhereTheLayoutSaysInBothDirections) {
    LayoutForm form(forms_);
    WindowsHands hands(form, events_);
    CheckLayout(form, hands);
}

TEST_F(WindowsFormHostTest, KeepTheColumnsThatAPersonMade) {
    LayoutForm form(forms_);
    form.Show();
    const HWND list = reinterpret_cast<HWND>(form.View()->NativeHandle(form.lvwRows));
    ListView_SetColumnWidth(list, 0, 77);
    form.lvwRows.AddRow({{"third"}, false, ""});
    form.lvwRows.SetColumns({{"Nome", 2000}, {"Stato", 1500}});
    EXPECT_EQ(ListView_GetColumnWidth(list, 0), 77);
    form.lvwRows.SetColumns({{"Nome", 3000}, {"Stato", 1500}});
    EXPECT_EQ(ListView_GetColumnWidth(list, 0), host_.Scale().PixelsX(3000));
}

// What is read of a form's place and keyboard, of its own and of others.
class KeyForm : public Form {
  public:
    explicit KeyForm(Forms& forms)
        : Form(forms, "frmSmall") {
        SetCaption("Small");
        SetLayout(Column({lblName, txtName, chkOn, Row({optA, optB}), Row({cmdOk, cmdOther})}));
        optA.SetValue(true);
        cmdOk.onClick = [this] { Hide(); };
    }

    Label lblName{*this, "lblName", "&Name"};
    TextBox txtName{*this, "txtName"};
    CheckBox chkOn{*this, "chkOn", "&On"};
    OptionButton optA{*this, "opt", "A", 0};
    OptionButton optB{*this, "opt", "B", 1};
    Button cmdOk{*this, "cmdOk", "O&k"};
    Button cmdOther{*this, "cmdOther", "Othe&r"};
};

class KeyboardTest : public WindowsFormHostTest {
  protected:
    void Press(int key, UINT message = WM_KEYDOWN) {
        PostMessageW(GetFocus(), message, static_cast<WPARAM>(key), 1);
        events_.Pump();
    }
    HWND Window(Form& form) { return static_cast<WindowsFormView*>(form.View())->Window(); }
};

TEST_F(KeyboardTest, MnemonicsLead) {
    KeyForm form(forms_);
    form.Show();
    events_.Pump();
    EXPECT_EQ(form.ActiveControl(), &form.txtName) << "the first one begins";
    form.cmdOk.SetFocus();
    Press('n', WM_SYSCHAR);
    EXPECT_EQ(form.ActiveControl(), &form.txtName) << "the label's mnemonic leads to what follows it";
    Press('o', WM_SYSCHAR);
    EXPECT_TRUE(form.chkOn.Value());
    form.optA.SetFocus();
    Press(VK_DOWN);
    EXPECT_TRUE(form.optB.Value());
    EXPECT_EQ(form.ActiveControl(), &form.optB);
    Press('k', WM_SYSCHAR);
    EXPECT_FALSE(form.IsVisible());
}

TEST_F(KeyboardTest, AModalFormOutlivesTheOneThatItCameUpOver) {
    auto below = std::make_unique<KeyForm>(forms_);
    KeyForm above(forms_);
    below->Show();
    SetActiveWindow(Window(*below));
    int stage = 0;
    events_.Post([&] {
        EXPECT_EQ(GetWindow(Window(above), GW_OWNER), Window(*below));
        EXPECT_FALSE(GetWindowLongW(Window(above), GWL_STYLE) & WS_MINIMIZEBOX);
        EXPECT_FALSE(GetWindowLongW(Window(above), GWL_EXSTYLE) & WS_EX_APPWINDOW);
        below->Unload();
        events_.Post([&] {
            ++stage;
            EXPECT_TRUE(IsWindowVisible(Window(above)));
            // Destroyed by somebody else a window ends its form, and the wait.
            DestroyWindow(Window(above));
        });
    });
    above.ShowModal();
    EXPECT_EQ(stage, 1);
    EXPECT_FALSE(above.IsLoaded());
}

TEST_F(KeyboardTest, LettersAloneAreMnemonicsAndTheFocusedButtonIsFramed) {
    KeyForm form(forms_);
    form.SetDefaultButton(&form.cmdOk);
    form.Show();
    events_.Pump();
    const auto kind = [&form](Control& control) {
        return GetWindowLongW(reinterpret_cast<HWND>(form.View()->NativeHandle(control)), GWL_STYLE) &
               BS_TYPEMASK;
    };
    Press('o', WM_CHAR);
    EXPECT_FALSE(form.chkOn.Value()) << "a letter in a text box is written";
    form.cmdOther.SetFocus();
    EXPECT_EQ(kind(form.cmdOther), BS_DEFPUSHBUTTON);
    EXPECT_EQ(kind(form.cmdOk), BS_PUSHBUTTON);
    Press('o', WM_CHAR);
    EXPECT_TRUE(form.chkOn.Value());
    EXPECT_EQ(kind(form.cmdOther), BS_PUSHBUTTON);
    EXPECT_EQ(kind(form.cmdOk), BS_DEFPUSHBUTTON) << "where no button has the keyboard";
}

TEST_F(KeyboardTest, AClickIsOneWhereItsPressBegan) {
    KeyForm form(forms_);
    std::string log;
    form.lblName.onClick = [&] { log += "click "; };
    form.lblName.onDoubleClick = [&] { log += "double "; };
    form.Show();
    const HWND label = reinterpret_cast<HWND>(form.View()->NativeHandle(form.lblName));
    const LPARAM inside = MAKELPARAM(3, 3);
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        SendMessageW(label, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, inside);
    EXPECT_EQ(log, "click double ");
    SendMessageW(Window(form), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
    SendMessageW(label, WM_LBUTTONUP, 0, inside);
    SendMessageW(label, WM_LBUTTONDOWN, MK_LBUTTON, inside);
    SendMessageW(label, WM_LBUTTONUP, 0, MAKELPARAM(-20, 3));
    EXPECT_EQ(log, "click double ");
}

TEST_F(KeyboardTest, AButtonHasItsColoursAndEveryClick) {
    KeyForm form(forms_);
    form.cmdOther.SetBackColor(Rgb(200, 40, 60));
    int clicks = 0;
    form.cmdOther.onClick = [&] { ++clicks; };
    form.Show();
    events_.Pump();
    const HWND button = reinterpret_cast<HWND>(form.View()->NativeHandle(form.cmdOther));
    RECT area{};
    GetClientRect(button, &area);
    const auto ground = [&] {
        UpdateWindow(button);
        const HDC dc = GetDC(button);
        const COLORREF color = GetPixel(dc, 6, area.bottom / 2);
        ReleaseDC(button, dc);
        return color;
    };
    EXPECT_EQ(ground(), RGB(200, 40, 60));
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        SendMessageW(button, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(clicks, 2);
    form.cmdOther.SetBackColor(std::nullopt);
    EXPECT_NE(ground(), RGB(200, 40, 60));
}

TEST_F(KeyboardTest, AScreenOfAnotherResolutionGetsLargerPixelsAndTheSameTwips) {
    KeyForm form(forms_);
    form.Show();
    auto* view = static_cast<WindowsFormView*>(form.View());
    RECT before{};
    GetClientRect(Window(form), &before);
    RECT wanted{40, 50, 900, 700};
    SendMessageW(Window(form), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&wanted));
    RECT frame{};
    GetWindowRect(Window(form), &frame);
    EXPECT_EQ(frame.left, 40);
    EXPECT_EQ(frame.top, 50);
    RECT after{};
    GetClientRect(Window(form), &after);
    EXPECT_NEAR(after.right, before.right * 1.5, before.right * 0.15);
    EXPECT_EQ(after.right, view->Scale().PixelsX(form.ClientSize().width));
    LOGFONTW font{};
    const auto handle = reinterpret_cast<HFONT>(
        SendMessageW(reinterpret_cast<HWND>(view->NativeHandle(form.cmdOk)), WM_GETFONT, 0, 0));
    GetObjectW(handle, sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -std::lround(host_.DefaultFont().size * 144 / 72));
    EXPECT_EQ(font.lfQuality, DEFAULT_QUALITY);
    SendMessageW(events_.Window(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
    GetClientRect(Window(form), &after);
    EXPECT_EQ(after.right, before.right) << "measured anew, at the resolution of the window's screen";
}

LRESULT CALLBACK CountNewColours(HWND window, UINT message, WPARAM wide, LPARAM low, UINT_PTR,
                                 DWORD_PTR count) {
    if (message == WM_SYSCOLORCHANGE) ++*reinterpret_cast<int*>(count);
    return DefSubclassProc(window, message, wide, low);
}

TEST_F(KeyboardTest, ControlsHearOfNewColours) {
    KeyForm form(forms_);
    form.Show();
    const auto button = reinterpret_cast<HWND>(form.View()->NativeHandle(form.cmdOk));
    int count = 0;
    SetWindowSubclass(button, CountNewColours, 1, reinterpret_cast<DWORD_PTR>(&count));
    SendMessageW(Window(form), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(count, 1);
}

TEST_F(KeyboardTest, OpacityAndOrderAreTheSystems) {
    KeyForm form(forms_);
    form.Show();
    form.SetOpacity(128);
    BYTE alpha = 0;
    DWORD flags = 0;
    EXPECT_TRUE(GetLayeredWindowAttributes(Window(form), nullptr, &alpha, &flags));
    EXPECT_EQ(alpha, 128);
    EXPECT_TRUE(flags & LWA_ALPHA);
    form.SetAlwaysOnTop(true);
    EXPECT_TRUE(GetWindowLongW(Window(form), GWL_EXSTYLE) & WS_EX_TOPMOST);
}

} // namespace
} // namespace quorvane
