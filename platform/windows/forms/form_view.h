#pragma once

#include "platform/forms/form.h"
#include "platform/windows/desktop/native_menu.h"
#include "platform/windows/forms/metrics.h"
#include "platform/windows/forms/widget.h"

#include <map>
#include <optional>

namespace quorvane {

class WindowsFormHost;

// One form's window. Widgets are all direct children of it, frames and tab strips below the controls that
// they hold; what is shown and where follows the model alone.
class WindowsFormView final : public FormView, public WidgetSite {
  public:
    static constexpr wchar_t PictureClass[] = L"QuorvanePicture";
    static constexpr wchar_t PaneClass[] = L"QuorvanePane";
    static void RegisterClasses();

    WindowsFormView(WindowsFormHost& host, Form& form);
    ~WindowsFormView() override;

    void Show() override;
    void Hide() override;
    void BringToFront() override;
    void Update(Control& control, Aspect aspect) override;
    void UpdateRows(ListView& list, const RowChange& change) override;
    void UpdateForm(FormAspect aspect) override;
    void Focus(Control& control) override;
    const MenuItem* Popup(const ShownMenu& menu, MenuPlace place) override;
    std::uintptr_t NativeHandle(Control& control) override;

    HWND Window() const override { return window_; }
    FormMetrics& Metrics() override { return *metrics_; }
    TwipScale Scale() const override { return metrics_->Scale(); }
    void Join(Widget& widget, HWND window) override;
    // Measures anew: the window came to a screen of another resolution, or the person's fonts are others.
    void Rescale(int dotsPerInch);
    void Report(Control& control, const Act& done) override;
    // A key on its way to one of the window's widgets; true where nobody else shall have it.
    bool FilterKey(const MSG& message);

  private:
    // Colours, font and native window of one control.
    struct Entry {
        std::unique_ptr<Widget> widget;
        HFONT font = nullptr;
        HBRUSH brush = nullptr;
    };
    // While one lives, what the widgets tell is the echo of the model's own change.
    class Applying {
      public:
        explicit Applying(WindowsFormView& view)
            : view_(view) {
            ++view_.applying_;
        }
        ~Applying() { --view_.applying_; }

      private:
        WindowsFormView& view_;
    };

    static LRESULT CALLBACK FormProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    static LRESULT CALLBACK WidgetProcedure(HWND window, UINT message, WPARAM wide, LPARAM low, UINT_PTR id,
                                            DWORD_PTR view);
    static LRESULT CALLBACK PaneProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    static LRESULT CALLBACK PictureProcedure(HWND window, UINT message, WPARAM wide, LPARAM low);

    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    std::optional<LRESULT> HandleOfWidgets(UINT message, WPARAM wide, LPARAM low);
    std::optional<LRESULT> HandleOwn(UINT message, WPARAM wide, LPARAM low);
    std::optional<LRESULT> HandleFormMouse(UINT message, WPARAM keys, LPARAM low);
    void HandlePlace(UINT message, WPARAM wide, LPARAM low);
    void TellSize(WPARAM kind);
    void TellCorner();
    std::optional<LRESULT> HandleWidget(Widget& widget, UINT message, WPARAM wide, LPARAM low);
    bool HandleMouse(Control& control, const POINT& at, UINT message, WPARAM keys);
    bool HandleGround(const POINT& at, UINT message, WPARAM keys);
    LRESULT LetThroughToCaret(Widget& widget, UINT message, WPARAM wide, LPARAM low);
    void HandleCapture(HWND window, UINT message, WPARAM keys);
    act::Mouse MouseOf(HWND window, const POINT& at, UINT message, WPARAM keys) const;
    void OpenTitle(HMENU submenu);
    LRESULT Colour(HDC dc, HWND child);
    HBRUSH GroundOf(const Control* control);
    void ChooseFromMenu(UINT command);

    void MakeWidgets();
    void PlaceWindow();
    RECT WithFrame(RECT inner) const;
    void PlaceControl(Control& control);
    void PlaceControls();
    PixelRect AreaOf(const Control& control);
    void ShowState(Control& control);
    void ShowLook(Control& control);
    void ShowFormLook();
    void ShowMenuBar();
    void SetOwner(HWND owner);
    void ShowStyle();

    void FrameDefaultButton(Control& focused);
    bool ChooseNeighbour(OptionButton& option, int step);
    bool TakeMnemonic(wchar_t letter);
    void Activate(Control& control);

    DWORD Style() const;
    DWORD ExtendedStyle() const;
    Entry* Find(const Control& control);
    Widget* WidgetOf(HWND window);
    Frame* FrameAt(const POINT& at);

    WindowsFormHost& host_;
    Form& form_;
    std::shared_ptr<WindowsMetrics> metrics_;
    HWND window_ = nullptr;
    HWND toolTips_ = nullptr;
    HBRUSH background_ = nullptr;
    std::vector<Control*> order_; // of the Tab key
    std::map<const Control*, Entry> entries_;
    std::map<HWND, Widget*> widgets_;
    std::unique_ptr<NativeMenu> bar_;
    HWND remembered_ = nullptr;  // had the keyboard when the window was last left
    Control* pressed_ = nullptr; // the left button went down on it, and is held
    bool groundPressed_ = false; // a button went down on the bare ground, and one is held
    bool destroyed_ = false;     // the window, by somebody else
    int applying_ = 0;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace quorvane
