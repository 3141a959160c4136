#pragma once

#include "commands/place.h"

#include <string>

namespace quorvane::commands {

// Makes a profile the settings of the place, and keeps them. Throws RefusedInput where no profile has the
// name.
void LoadNamedProfile(Place& place, const std::string& name);

} // namespace quorvane::commands
