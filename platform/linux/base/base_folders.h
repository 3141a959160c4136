#pragma once

#include <string>

namespace quorvane {

// The person's base folders, without a separator at the end. Each is the variable's where that holds an
// absolute path, and otherwise lies in the home folder: that of HOME, or of the account where HOME says
// nothing.
std::string ConfigFolder(); // $XDG_CONFIG_HOME, ~/.config
std::string DataFolder();   // $XDG_DATA_HOME, ~/.local/share
std::string StateFolder();  // $XDG_STATE_HOME, ~/.local/state

} // namespace quorvane
