#include "platform/windows/base/wide.h"
#include "platform/windows/forms/form_view.h"
#include "platform/windows/forms/widget.h"

#include <algorithm>

namespace quorvane {
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

// A check box or an option button: the model says what it shows, a click only asks for it.
template<typename Kind, DWORD buttonStyle>
class ToggleWidget final : public Widget {
  public:
    ToggleWidget(WidgetSite& site, Kind& model)
        : Widget(site, model, WC_BUTTONW, WS_TABSTOP | buttonStyle)
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

class FrameWidget final : public Widget {
  public:
    FrameWidget(WidgetSite& site, Frame& model)
        : Widget(site, model, WC_BUTTONW, BS_GROUPBOX) {}
    // A coloured ground without a caption has no line around it.
    std::optional<LRESULT> Hear(UINT message, WPARAM, LPARAM) override {
        if (message != WM_PAINT || !model_.BackColor() || !model_.Caption().empty()) return std::nullopt;
        PAINTSTRUCT paint{};
        BeginPaint(window_, &paint); // has the ground erased
        EndPaint(window_, &paint);
        return 0;
    }
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
        Unmirror(0); // or the parts of the date would change places
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
        Unmirror(0); // a picture has no reading direction
    }
    void ShowCaption() override {}
    void ShowValue() override { InvalidateRect(window_, nullptr, FALSE); }
    void Detach() override { SetWindowLongPtrW(window_, GWLP_USERDATA, 0); }
    bool ClicksByMouse() const override { return true; }
};

} // namespace

void WidgetMaker::Visit(Label& control) {
    made = std::make_unique<LabelWidget>(site_, control);
}

void WidgetMaker::Visit(CheckBox& control) {
    made = std::make_unique<ToggleWidget<CheckBox, BS_CHECKBOX>>(site_, control);
}

void WidgetMaker::Visit(OptionButton& control) {
    made = std::make_unique<ToggleWidget<OptionButton, BS_RADIOBUTTON>>(site_, control);
}

void WidgetMaker::Visit(Frame& control) {
    made = std::make_unique<FrameWidget>(site_, control);
}

void WidgetMaker::Visit(Slider& control) {
    made = std::make_unique<SliderWidget>(site_, control);
}

void WidgetMaker::Visit(ProgressBar& control) {
    made = std::make_unique<ProgressWidget>(site_, control);
}

void WidgetMaker::Visit(ScrollBar& control) {
    made = std::make_unique<ScrollWidget>(site_, control);
}

void WidgetMaker::Visit(DatePicker& control) {
    made = std::make_unique<DateWidget>(site_, control);
}

void WidgetMaker::Visit(MonthView& control) {
    made = std::make_unique<MonthWidget>(site_, control);
}

void WidgetMaker::Visit(PictureBox& control) {
    made = std::make_unique<PictureWidget>(site_, control);
}

} // namespace quorvane
