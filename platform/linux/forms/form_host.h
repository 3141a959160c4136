#pragma once

#include "platform/forms/form_host.h"

#include <map>

namespace quorvane {

// Forms on Qt widgets. Needs a QApplication. Widgets count in the toolkit's pixels, which on a screen of high
// resolution are larger than those of a surface.
class QtFormHost final : public FormHost {
  public:
    QtFormHost();

    std::unique_ptr<FormView> Create(Form& form) override;
    FontSpec DefaultFont() override;
    TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) override;
    // Measured at widgets of the person's own style.
    Insets Chrome(ControlKind kind) override;
    TwipScale Scale() override;
    double PixelRatio() override;
    TwipRect WorkArea() override;

  private:
    std::map<ControlKind, Insets> chromes_;
};

} // namespace quorvane
