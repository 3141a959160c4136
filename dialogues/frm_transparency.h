#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <cstdint>

namespace quorvane {

// A slider that sets how opaque a tool window is. The window shows each step at once.
class frmTransparency : public Form {
  public:
    explicit frmTransparency(Forms& forms);

    // Waits until the person has applied or cancelled. `Transparency_Value` is the window's alpha, 0 to 255,
    // and changes only when it is applied.
    void Adjust(Form& window, std::int32_t& Transparency_Value);

    Frame Frame1{*this, "Frame1", {"Transparency value", 124}};
    Slider Slider1{Frame1, "Slider1"};
    Label lblValue{Frame1, "lblValue", "255"};
    Button Command1{*this, "Command1", {"&Apply", 122}};
    Button Command2{*this, "Command2", {"&Cancel", 121}};

  protected:
    bool OnCloseByFrame() override;

  private:
    void ApplyTransparency(int alpha);
    void Cancel();

    // While the dialogue is open.
    Form* window_ = nullptr;
    std::int32_t* value_ = nullptr;
};

} // namespace quorvane
