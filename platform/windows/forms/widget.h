#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form_host.h"
#include "platform/windows/base/win32.h"

#include <memory>
#include <optional>

namespace quorvane {

class Widget;

// What a widget needs of the form's window.
class WidgetSite {
  public:
    virtual ~WidgetSite() = default;
    virtual HWND Window() const = 0;
    virtual TwipScale Scale() const = 0;
    // Another window of a widget that is made of several.
    virtual void Join(Widget& widget, HWND window) = 0;
    // Tells the model what a person did; nothing while a change of the model is being applied. The widget may
    // be gone afterwards.
    virtual void Report(Control& control, const Act& done) = 0;
};

// The native window of one control. It shows the model's value and reports what a person does with it.
class Widget {
  public:
    virtual ~Widget();
    Widget(const Widget&) = delete;
    Widget& operator=(const Widget&) = delete;

    HWND Window() const { return window_; } // where there are several, that which takes the keyboard
    Control& Model() const { return model_; }

    virtual void ShowValue() {}
    virtual void ShowCaption();
    virtual void ShowItems() {}
    virtual void ShowRows(const RowChange&) {} // of a list
    // Fonts and colours that a window message alone does not change.
    virtual void ShowLook() {}
    virtual void Place(const PixelRect& area);
    virtual void ShowState(bool reachable, bool shown);

    // The system's notifications; what they return is returned to it.
    virtual void OnCommand(WORD) {}
    virtual LRESULT OnNotify(NMHDR&) { return 0; }
    virtual void OnScroll(WORD) {}
    // The system asks for what the widget draws itself.
    virtual void Draw(const DRAWITEMSTRUCT&) {}
    // A button is, or is no longer, the one that Enter presses.
    virtual void FrameAsDefault(bool) {}
    // The place of the caret may have changed.
    virtual void LookAtCaret() {}
    // A message to the widget's window that its own procedure is about to see; an answer keeps it from that.
    // The widget may be gone afterwards.
    virtual std::optional<LRESULT> Hear(UINT, WPARAM, LPARAM) { return std::nullopt; }
    // The widget wants this key for itself, whatever the form would do with it.
    virtual bool Keeps(int) const { return false; }
    // Clicks come from the mouse alone, not from a notification.
    virtual bool ClicksByMouse() const { return false; }
    // The model goes, and the window a little later.
    virtual void Detach() {}

  protected:
    Widget(WidgetSite& site, Control& model, const wchar_t* className, DWORD style, DWORD extendedStyle = 0);

    void Report(const Act& done) { site_.Report(model_, done); }
    std::string WindowText() const;
    void SetText(const std::string& text);
    // In a form that reads from right to left widgets are mirrored whole. This one is not, and has these
    // extended styles in place of that.
    void Unmirror(DWORD instead);

    WidgetSite& site_;
    Control& model_;
    HWND window_ = nullptr;
};

// Makes the widget of a control: one function for each kind.
class WidgetMaker final : public ControlVisitor {
  public:
    explicit WidgetMaker(WidgetSite& site)
        : site_(site) {}

    std::unique_ptr<Widget> made;

    void Visit(Label& control) override;
    void Visit(TextBox& control) override;
    void Visit(RichTextBox& control) override;
    void Visit(Button& control) override;
    void Visit(CheckBox& control) override;
    void Visit(OptionButton& control) override;
    void Visit(ComboBox& control) override;
    void Visit(ListView& control) override;
    void Visit(TabStrip& control) override;
    void Visit(Frame& control) override;
    void Visit(Slider& control) override;
    void Visit(ProgressBar& control) override;
    void Visit(ScrollBar& control) override;
    void Visit(DatePicker& control) override;
    void Visit(MonthView& control) override;
    void Visit(PictureBox& control) override;

  private:
    WidgetSite& site_;
};

std::unique_ptr<Widget> CreateWidget(WidgetSite& site, Control& control);

} // namespace quorvane
