#pragma once

#include <string>

namespace quorvane {

class Form;
class Menu;

// The form as text: itself, its menus, its controls in the order of the Tab key, indented by containers, its
// timers. A control's line is its kind, name, caption with the number of its words, value, tool tip, look and
// state, where they are not the usual ones. Without places, so that it is the same on every platform.
std::string DumpForm(const Form& form);

// A menu as text, a line an entry.
std::string DumpMenu(const Menu& menu);

} // namespace quorvane
