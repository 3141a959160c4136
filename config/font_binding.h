#pragma once

#include "config/font_spec.h"
#include "platform/forms/binding.h"

namespace quorvane {

// A font's field and the button that is set in it (see platform/forms/binding.h). A font without a name is
// none: the button keeps the form's own.
inline void ShowField(Button& control, const FontRecord& value) {
    control.SetFont(value.FontName.empty() ? std::nullopt : std::optional(ToFontSpec(value)));
}
inline void TakeField(const Button& control, FontRecord& value) {
    if (control.Font()) value = ToFontRecord(*control.Font());
}

} // namespace quorvane
