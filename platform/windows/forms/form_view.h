#pragma once

#include "platform/forms/form.h"
#include "platform/windows/desktop/native_menu.h"
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

    void Show(bool modal) override;
    void Hide() override;
    void BringToFront() override;
    void Update(Control& control, Aspect aspect) override;
    void UpdateRows(ListView& list, const RowChange& change) override;
    void UpdateForm(FormAspect aspect) override;
    void Focus(Control& control) override;
    void Popup(Menu& menu) override;
    std::uintptr_t NativeHandle(Control& control) override;

    HWND Window() const override { return window_; }
    TwipScale Scale() const override { return scale_; }
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
    std::optional<LRESULT> HandleWidget(Widget& widget, UINT message, WPARAM wide, LPARAM low);
    bool HandleMouse(Control& control, const POINT& at, UINT message, WPARAM keys);
    void HandlePlace(UINT message, WPARAM wide);
    LRESULT Colour(HDC dc, HWND child);
    HBRUSH GroundOf(const Control* control);
    void ChooseFromMenu(UINT command);

    void MakeWidgets();
    void PlaceWindow();
    void PlaceControl(Control& control);
    PixelRect AreaOf(const Control& control);
    void ShowState(Control& control);
    void ShowLook(Control& control);
    void ShowFormLook();
    void ShowMenuBar();
    void SetModal(bool modal);

    bool MoveFocus(bool backwards);
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
    TwipScale scale_;
    HWND window_ = nullptr;
    HWND toolTips_ = nullptr;
    HBRUSH background_ = nullptr;
    std::vector<Control*> order_; // of the Tab key
    std::map<const Control*, Entry> entries_;
    std::map<HWND, Widget*> widgets_;
    std::unique_ptr<NativeMenu> bar_;
    std::vector<HWND> disabled_; // by this window as a modal one
    HWND remembered_ = nullptr;  // had the keyboard when the window was last left
    int applying_ = 0;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace quorvane
