#pragma once

#include "platform/platform.h"

#include <functional>

namespace quorvane {

// Sees to it that the families are there that the program's windows and the wallpaper are set in: one that is
// missing is sought in font files beside the program, and the person is warned where that does not help. A
// family that the font system shows in another one of its choice is missed by nobody. `progress` is told the
// splash bar, 3 to 11, along the walk through the system's fonts. Always true.
bool CheckFonts(const Platform& platform, const std::function<void(int bar)>& progress);

} // namespace quorvane
