#pragma once

#include <string>

namespace quorvane {

class Form;

// The form as text, one line a control in the order of the Tab key, indented by containers: kind, name,
// caption, value, state. Without places, so that it is the same on every platform.
std::string DumpForm(const Form& form);

} // namespace quorvane
