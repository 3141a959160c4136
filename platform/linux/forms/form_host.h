#pragma once

#include "platform/forms/form_host.h"

#include <map>

namespace quorvane {

class Drawing;

// Forms on Qt widgets. Needs a QApplication. `drawing` says how large a pixel is, so that forms and surfaces
// agree.
class QtFormHost final : public FormHost {
  public:
    explicit QtFormHost(Drawing& drawing);

    std::unique_ptr<FormView> Create(Form& form) override;
    FontSpec DefaultFont() override;
    TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) override;
    // Measured at widgets of the person's own style.
    Insets Chrome(ControlKind kind) override;
    TwipScale Scale() override;
    TwipRect WorkArea() override;

  private:
    Drawing& drawing_;
    std::map<ControlKind, Insets> chromes_;
};

} // namespace quorvane
