#pragma once

#include "tests/contracts/conformance/conformance.h"

class QWidget;

namespace quorvane {

// A person at Qt widgets: mouse and keys as the toolkit gets them.
class QtHands final : public Hands {
  public:
    explicit QtHands(Form& form)
        : form_(form) {}

    void Click(Control& control) override;
    void DoubleClick(Control& control) override;
    void Toggle(Control& control) override;
    void Type(Control& control, const std::string& letters) override;
    void PressKey(Control& control, int code, int shift) override;
    void Choose(Control& control, int index) override;
    void CheckRow(ListView& list, int row) override;
    void Step(RangeControl& control, int by) override;
    void PickDate(Control& control, const DateTime& value) override;
    void ChooseFromMenuBar(Form& form, int menu, int entry) override;
    void Mouse(Form& form, Control* control, act::MousePhase phase, int button, int shift,
               TwipPoint at) override;
    void DoubleClickGround(Form& form) override;
    void PickFromPopup(Form& form, Control* control, int entry, const std::function<bool()>& ready) override;
    void MoveWindow(Form& form, TwipPoint upperLeft) override;
    void ResizeWindow(Form& form, TwipSize client) override;
    void Minimise(Form& form, bool minimized) override;
    void CloseByFrame(Form& form) override;
    std::string Shown(Control& control) override;
    std::string ShownLook(Control& control) override;
    PixelRect PlaceOf(Control& control) override;
    const Control* SeenAt(Control& control) override;
    void Settle() override;

  private:
    QWidget* WidgetOf(const Control& control) const;
    template<typename Kind>
    Kind* As(const Control& control) const;

    Form& form_;
};

} // namespace quorvane
