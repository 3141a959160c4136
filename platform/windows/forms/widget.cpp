#include "platform/windows/forms/widget.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_view.h"

#include <algorithm>

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

namespace {

SYSTEMTIME SystemTimeOf(const DateTime& time) {
    return {
        static_cast<WORD>(time.year),   static_cast<WORD>(time.month),      0,
        static_cast<WORD>(time.day),    static_cast<WORD>(time.hour),       static_cast<WORD>(time.minute),
        static_cast<WORD>(time.second), static_cast<WORD>(time.millisecond)};
}

DateTime DateTimeOf(const SYSTEMTIME& time) {
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond, 0};
}

class LabelWidget final : public Widget {
  public:
    LabelWidget(WidgetSite& site, Label& model)
        : Widget(site, model, WC_STATICW, Style(model)) {}
    bool ClicksByMouse() const override { return true; }
    void ShowLook() override {
        const auto style = static_cast<DWORD>(GetWindowLongW(window_, GWL_STYLE));
        SetWindowLongW(window_, GWL_STYLE,
                       static_cast<LONG>((style & ~DWORD{SS_TYPEMASK}) | Style(static_cast<Label&>(model_))));
    }

  private:
    static DWORD Style(const Label& model) {
        switch (model.Alignment()) {
        case Label::Align::Center:
            return SS_NOTIFY | SS_CENTER;
        case Label::Align::Right:
            return SS_NOTIFY | SS_RIGHT;
        case Label::Align::Left:
            break;
        }
        return SS_NOTIFY | (model.WrapWidth() > 0 ? DWORD{SS_LEFT} : DWORD{SS_LEFTNOWORDWRAP});
    }
};

class TextWidget final : public Widget {
  public:
    TextWidget(WidgetSite& site, TextControl& model)
        : Widget(site, model, WC_EDITW,
                 WS_TABSTOP | (model.MultiLine() ? ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL
                                                 : DWORD{ES_AUTOHSCROLL}),
                 WS_EX_CLIENTEDGE)
        , text_(model) {
        SendMessageW(window_, EM_SETLIMITTEXT, 0, 0);
    }

    void ShowCaption() override {}
    void ShowValue() override {
        SendMessageW(window_, EM_SETREADONLY, text_.ReadOnly(), 0);
        SetText(text_.Text());
        const WPARAM start = Letters(text_.SelectionStart());
        const LPARAM end = static_cast<LPARAM>(Letters(text_.SelectionStart() + text_.SelectionLength()));
        DWORD shownStart = 0;
        DWORD shownEnd = 0;
        SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&shownStart),
                     reinterpret_cast<LPARAM>(&shownEnd));
        if (shownStart != start || static_cast<LPARAM>(shownEnd) != end) {
            SendMessageW(window_, EM_SETSEL, start, end);
            SendMessageW(window_, EM_SCROLLCARET, 0, 0);
        }
    }
    void OnCommand(WORD code) override {
        if (code != EN_CHANGE) return;
        const std::string text = WindowText();
        if (text == text_.Text()) return;
        const act::Select selection = Selection(text);
        Report(act::Type{text, selection.caret, selection.selectionLength});
    }
    void LookAtCaret() override {
        const std::string text = WindowText();
        if (text != text_.Text()) return;
        const act::Select selection = Selection(text);
        if (selection.caret != text_.SelectionStart() ||
            selection.selectionLength != text_.SelectionLength()) {
            Report(selection);
        }
    }
    bool Keeps(int code) const override { return code == VK_RETURN && text_.MultiLine(); }

  private:
    // The model counts in bytes of UTF-8, the widget in letters of UTF-16.
    WPARAM Letters(int bytes) const {
        return Wide(std::string_view(text_.Text()).substr(0, static_cast<std::size_t>(bytes))).size();
    }
    act::Select Selection(const std::string& text) const {
        DWORD start = 0;
        DWORD end = 0;
        SendMessageW(window_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        const std::wstring wide = Wide(text);
        const auto bytes = [&wide](DWORD letters) {
            return static_cast<int>(Utf8(std::wstring_view(wide).substr(0, letters)).size());
        };
        return {bytes(start), bytes(end) - bytes(start)};
    }

    TextControl& text_;
};

class ButtonWidget final : public Widget {
  public:
    ButtonWidget(WidgetSite& site, Button& model)
        : Widget(site, model, WC_BUTTONW, WS_TABSTOP | BS_NOTIFY | BS_PUSHBUTTON | BS_MULTILINE) {
        if (model.OwnerForm().DefaultButton() == &model)
            SendMessageW(window_, BM_SETSTYLE, BS_DEFPUSHBUTTON | BS_MULTILINE, FALSE);
    }
    void OnCommand(WORD code) override {
        if (code == BN_CLICKED) Report(act::Click{});
    }
};

// A check box or an option button: the model says what it shows, a click only asks for it.
template<typename Kind, DWORD buttonStyle>
class ToggleWidget final : public Widget {
  public:
    ToggleWidget(WidgetSite& site, Kind& model)
        : Widget(site, model, WC_BUTTONW, WS_TABSTOP | BS_NOTIFY | buttonStyle)
        , toggle_(model) {}
    void ShowValue() override {
        SendMessageW(window_, BM_SETCHECK, toggle_.Value() ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    void OnCommand(WORD code) override {
        if (code == BN_CLICKED || code == BN_DOUBLECLICKED) {
            Report(act::Check{buttonStyle == BS_RADIOBUTTON || !toggle_.Value()});
        }
    }

  private:
    Kind& toggle_;
};

class ComboWidget final : public Widget {
  public:
    ComboWidget(WidgetSite& site, ComboBox& model)
        : Widget(site, model, WC_COMBOBOXW,
                 WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL |
                     (model.Editable() ? DWORD{CBS_DROPDOWN} : DWORD{CBS_DROPDOWNLIST}))
        , combo_(model) {}

    void ShowCaption() override {}
    void ShowItems() override {
        SendMessageW(window_, CB_RESETCONTENT, 0, 0);
        for (const std::string& item : combo_.Items()) {
            SendMessageW(window_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item).c_str()));
        }
        ShowValue();
    }
    void ShowValue() override {
        if (SendMessageW(window_, CB_GETCURSEL, 0, 0) != combo_.ListIndex())
            SendMessageW(window_, CB_SETCURSEL, static_cast<WPARAM>(combo_.ListIndex()), 0);
        if (combo_.Editable()) SetText(combo_.Text());
    }
    void Place(const PixelRect& area) override {
        // The height given to the system is that of the open box; the closed one follows its edit line.
        constexpr int OpenLines = 12;
        constexpr int Borders = 6;
        SendMessageW(window_, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(area.height - Borders, 8));
        Widget::Place({area.x, area.y, area.width, area.height * OpenLines});
    }
    void OnCommand(WORD code) override {
        if (code == CBN_SELCHANGE) {
            Report(act::Choose{static_cast<int>(SendMessageW(window_, CB_GETCURSEL, 0, 0))});
        } else if (code == CBN_EDITCHANGE) {
            const std::string text = WindowText();
            Report(act::Type{text, static_cast<int>(text.size()), 0});
        } else if (code == CBN_SETFOCUS || code == CBN_KILLFOCUS) {
            if (combo_.Editable()) Report(act::Focus{code == CBN_SETFOCUS});
        }
    }
    bool Keeps(int code) const override {
        return (code == VK_RETURN || code == VK_ESCAPE) && SendMessageW(window_, CB_GETDROPPEDSTATE, 0, 0);
    }

  private:
    ComboBox& combo_;
};

class ListWidget final : public Widget {
  public:
    ListWidget(WidgetSite& site, ListView& model)
        : Widget(site, model, WC_LISTVIEWW, WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                 WS_EX_CLIENTEDGE)
        , list_(model) {}

    void ShowCaption() override {}
    void ShowItems() override {
        SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
        DWORD extended = LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP;
        if (list_.CheckBoxes()) extended |= LVS_EX_CHECKBOXES;
        ListView_SetExtendedListViewStyle(window_, extended);
        ShowColumns();
        ListView_DeleteAllItems(window_);
        for (int row = 0; row < list_.RowCount(); ++row)
            InsertRow(row);
        ShowValue();
        SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window_, nullptr, TRUE);
    }
    void ShowValue() override {
        for (int row = 0; row < std::min(list_.RowCount(), ListView_GetItemCount(window_)); ++row) {
            const bool checked = list_.Rows()[static_cast<std::size_t>(row)].checked;
            if (list_.CheckBoxes() && IsChecked(row) != checked)
                ListView_SetCheckState(window_, row, checked);
        }
        const int shown = ListView_GetNextItem(window_, -1, LVNI_SELECTED);
        if (shown == list_.SelectedRow()) return;
        constexpr UINT Chosen = LVIS_SELECTED | LVIS_FOCUSED;
        if (shown >= 0) ListView_SetItemState(window_, shown, 0, Chosen);
        if (list_.SelectedRow() < 0) return;
        ListView_SetItemState(window_, list_.SelectedRow(), Chosen, Chosen);
        ListView_EnsureVisible(window_, list_.SelectedRow(), FALSE);
    }
    LRESULT OnNotify(NMHDR& header) override {
        if (header.code != LVN_ITEMCHANGED) return 0;
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
        if (!(change.uChanged & LVIF_STATE)) return 0;
        const UINT boxes = change.uNewState & LVIS_STATEIMAGEMASK;
        if (boxes && boxes != (change.uOldState & LVIS_STATEIMAGEMASK)) {
            Report(act::Check{boxes == INDEXTOSTATEIMAGEMASK(2), change.iItem});
        } else if ((change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED)) {
            Report(act::Choose{change.iItem});
        }
        return 0;
    }

  private:
    bool IsChecked(int row) const { return ListView_GetCheckState(window_, row) != 0; }

    void ShowColumns() {
        while (ListView_DeleteColumn(window_, 0)) {
        }
        int position = 0;
        for (const ListView::Column& column : list_.Columns()) {
            std::wstring caption = Wide(column.caption);
            LVCOLUMNW data{};
            data.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
            data.cx = site_.Scale().PixelsX(column.width);
            data.pszText = caption.data();
            data.iSubItem = position;
            SendMessageW(window_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(position),
                         reinterpret_cast<LPARAM>(&data));
            ++position;
        }
    }

    void InsertRow(int row) {
        const ListView::RowData& data = list_.Rows()[static_cast<std::size_t>(row)];
        LVITEMW item{};
        item.iItem = row;
        wchar_t nothing[] = L"";
        item.mask = LVIF_TEXT;
        item.pszText = nothing;
        SendMessageW(window_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        for (const std::string& cell : data.cells) {
            std::wstring text = Wide(cell);
            item.pszText = text.data();
            SendMessageW(window_, LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                         reinterpret_cast<LPARAM>(&item));
            ++item.iSubItem;
        }
    }

    ListView& list_;
};

// The native strip takes the row of tabs alone; the pane below is an outline with the form's own
// ground, so that controls on it need no colour of their own.
class TabWidget final : public Widget {
  public:
    TabWidget(WidgetSite& site, TabStrip& model)
        : Widget(site, model, WC_TABCONTROLW, WS_TABSTOP | TCS_FOCUSONBUTTONDOWN)
        , tabs_(model)
        , pane_(CreateWindowExW(0, WindowsFormView::PaneClass, L"", WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0,
                                site.Window(), nullptr, GetModuleHandleW(nullptr), nullptr)) {}

    void ShowCaption() override { ShowItems(); }
    void ShowItems() override {
        TabCtrl_DeleteAllItems(window_);
        int position = 0;
        for (const std::string& caption : tabs_.Tabs()) {
            std::wstring text = Wide(caption);
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = text.data();
            SendMessageW(window_, TCM_INSERTITEMW, static_cast<WPARAM>(position++),
                         reinterpret_cast<LPARAM>(&item));
        }
        ShowValue();
    }
    void ShowValue() override {
        if (TabCtrl_GetCurSel(window_) != tabs_.SelectedTab())
            TabCtrl_SetCurSel(window_, tabs_.SelectedTab());
    }
    void Place(const PixelRect& area) override {
        RECT inner{0, 0, area.width, area.height};
        TabCtrl_AdjustRect(window_, FALSE, &inner);
        const int header = std::clamp(static_cast<int>(inner.top) - 1, 8, std::max(area.height, 8));
        Widget::Place({area.x, area.y, area.width, header});
        SetWindowPos(pane_, HWND_BOTTOM, area.x, area.y + header - 1, area.width, area.height - header + 1,
                     SWP_NOACTIVATE);
        ShowWindow(pane_, model_.IsShown() ? SW_SHOWNA : SW_HIDE);
    }
    LRESULT OnNotify(NMHDR& header) override {
        if (header.code == TCN_SELCHANGE) Report(act::Choose{TabCtrl_GetCurSel(window_)});
        return 0;
    }

  private:
    TabStrip& tabs_;
    HWND pane_;
};

class FrameWidget final : public Widget {
  public:
    FrameWidget(WidgetSite& site, Frame& model)
        : Widget(site, model, WC_BUTTONW, BS_GROUPBOX) {}
};

class SliderWidget final : public Widget {
  public:
    SliderWidget(WidgetSite& site, Slider& model)
        : Widget(site, model, TRACKBAR_CLASSW, WS_TABSTOP | TBS_HORZ | TBS_NOTICKS)
        , slider_(model) {}
    void ShowCaption() override {}
    void ShowItems() override {
        SendMessageW(window_, TBM_SETRANGEMIN, FALSE, slider_.Minimum());
        SendMessageW(window_, TBM_SETRANGEMAX, FALSE, slider_.Maximum());
        ShowValue();
    }
    void ShowValue() override {
        if (Shown() != slider_.Value()) SendMessageW(window_, TBM_SETPOS, TRUE, slider_.Value());
    }
    void OnScroll(WORD code) override {
        if (code == TB_THUMBPOSITION) return; // the end of the drag follows
        Report(act::Slide{Shown(), code == TB_THUMBTRACK});
    }

  private:
    int Shown() const { return static_cast<int>(SendMessageW(window_, TBM_GETPOS, 0, 0)); }

    Slider& slider_;
};

class ProgressWidget final : public Widget {
  public:
    ProgressWidget(WidgetSite& site, ProgressBar& model)
        : Widget(site, model, PROGRESS_CLASSW, PBS_SMOOTH)
        , progress_(model) {}
    void ShowCaption() override {}
    void ShowItems() override {
        SendMessageW(window_, PBM_SETRANGE32, static_cast<WPARAM>(progress_.Minimum()), progress_.Maximum());
        ShowValue();
    }
    void ShowValue() override {
        SendMessageW(window_, PBM_SETPOS, static_cast<WPARAM>(progress_.Value()), 0);
    }

  private:
    ProgressBar& progress_;
};

class ScrollWidget final : public Widget {
  public:
    ScrollWidget(WidgetSite& site, ScrollBar& model)
        : Widget(site, model, WC_SCROLLBARW,
                 WS_TABSTOP | (model.Vertical() ? DWORD{SBS_VERT} : DWORD{SBS_HORZ}))
        , scroll_(model) {}
    void ShowCaption() override {}
    void ShowItems() override {
        SCROLLINFO info{sizeof info,
                        SIF_RANGE | SIF_PAGE | SIF_POS,
                        scroll_.Minimum(),
                        scroll_.Maximum(),
                        0,
                        scroll_.Value(),
                        0};
        SetScrollInfo(window_, SB_CTL, &info, TRUE);
    }
    void ShowValue() override { ShowItems(); }
    void OnScroll(WORD code) override {
        const int page = std::max((scroll_.Maximum() - scroll_.Minimum()) / 10, 1);
        switch (code) {
        case SB_LINELEFT:
            return Move(-1);
        case SB_LINERIGHT:
            return Move(1);
        case SB_PAGELEFT:
            return Move(-page);
        case SB_PAGERIGHT:
            return Move(page);
        case SB_LEFT:
            return Report(act::Slide{scroll_.Minimum(), false});
        case SB_RIGHT:
            return Report(act::Slide{scroll_.Maximum(), false});
        case SB_THUMBTRACK:
            return Report(act::Slide{TrackPosition(), true});
        case SB_THUMBPOSITION:
            return Report(act::Slide{TrackPosition(), false});
        default:
            break;
        }
    }

  private:
    void Move(int by) {
        Report(act::Slide{std::clamp(scroll_.Value() + by, scroll_.Minimum(), scroll_.Maximum()), false});
    }
    int TrackPosition() const {
        SCROLLINFO info{sizeof info, SIF_TRACKPOS, 0, 0, 0, 0, 0};
        GetScrollInfo(window_, SB_CTL, &info);
        return info.nTrackPos;
    }

    ScrollBar& scroll_;
};

class DateWidget final : public Widget {
  public:
    DateWidget(WidgetSite& site, DatePicker& model)
        : Widget(site, model, DATETIMEPICK_CLASSW, WS_TABSTOP)
        , picker_(model) {
        wchar_t format[80]{};
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, format, 64);
        const std::wstring whole = std::wstring(format) + L" HH:mm:ss";
        SendMessageW(window_, DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(whole.c_str()));
    }
    void ShowCaption() override {}
    void ShowValue() override {
        SYSTEMTIME time = SystemTimeOf(picker_.Value());
        if (DateTimeOf(Shown()) != picker_.Value())
            SendMessageW(window_, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
    }
    LRESULT OnNotify(NMHDR& header) override {
        if (header.code == DTN_DATETIMECHANGE) Report(act::PickDate{DateTimeOf(Shown())});
        return 0;
    }

  private:
    SYSTEMTIME Shown() const {
        SYSTEMTIME time{};
        SendMessageW(window_, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
        return time;
    }

    DatePicker& picker_;
};

class MonthWidget final : public Widget {
  public:
    MonthWidget(WidgetSite& site, MonthView& model)
        : Widget(site, model, MONTHCAL_CLASSW, WS_TABSTOP | WS_BORDER)
        , month_(model) {}
    void ShowCaption() override {}
    void ShowValue() override {
        SYSTEMTIME time{};
        SendMessageW(window_, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
        if (DayOf(time) == month_.Value()) return;
        time = SystemTimeOf(month_.Value());
        SendMessageW(window_, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
    }
    LRESULT OnNotify(NMHDR& header) override {
        if (header.code == MCN_SELCHANGE || header.code == MCN_SELECT) {
            Report(act::PickDate{DayOf(reinterpret_cast<const NMSELCHANGE&>(header).stSelStart)});
        }
        return 0;
    }

  private:
    static DateTime DayOf(const SYSTEMTIME& time) { return {time.wYear, time.wMonth, time.wDay}; }

    MonthView& month_;
};

class PictureWidget final : public Widget {
  public:
    PictureWidget(WidgetSite& site, PictureBox& model)
        : Widget(site, model, WindowsFormView::PictureClass, 0) {
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&model));
    }
    void ShowCaption() override {}
    void ShowValue() override { InvalidateRect(window_, nullptr, FALSE); }
    void Detach() override { SetWindowLongPtrW(window_, GWLP_USERDATA, 0); }
    bool ClicksByMouse() const override { return true; }
};

class WidgetMaker final : public ControlVisitor {
  public:
    explicit WidgetMaker(WidgetSite& site)
        : site_(site) {}

    std::unique_ptr<Widget> made;

    void Visit(Label& control) override { Make<LabelWidget>(control); }
    void Visit(TextBox& control) override { Make<TextWidget>(control); }
    void Visit(RichTextBox& control) override { Make<TextWidget>(control); }
    void Visit(Button& control) override { Make<ButtonWidget>(control); }
    void Visit(CheckBox& control) override { Make<ToggleWidget<CheckBox, BS_CHECKBOX>>(control); }
    void Visit(OptionButton& control) override { Make<ToggleWidget<OptionButton, BS_RADIOBUTTON>>(control); }
    void Visit(ComboBox& control) override { Make<ComboWidget>(control); }
    void Visit(ListView& control) override { Make<ListWidget>(control); }
    void Visit(TabStrip& control) override { Make<TabWidget>(control); }
    void Visit(Frame& control) override { Make<FrameWidget>(control); }
    void Visit(Slider& control) override { Make<SliderWidget>(control); }
    void Visit(ProgressBar& control) override { Make<ProgressWidget>(control); }
    void Visit(ScrollBar& control) override { Make<ScrollWidget>(control); }
    void Visit(DatePicker& control) override { Make<DateWidget>(control); }
    void Visit(MonthView& control) override { Make<MonthWidget>(control); }
    void Visit(PictureBox& control) override { Make<PictureWidget>(control); }

  private:
    template<typename Made, typename Kind>
    void Make(Kind& control) {
        made = std::make_unique<Made>(site_, control);
    }

    WidgetSite& site_;
};

} // namespace

std::unique_ptr<Widget> CreateWidget(WidgetSite& site, Control& control) {
    WidgetMaker maker(site);
    control.Accept(maker);
    return std::move(maker.made);
}

} // namespace quorvane
