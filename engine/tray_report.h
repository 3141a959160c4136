#pragma once

#include "platform/tray.h"

#include <string_view>

namespace quorvane {

// What the icon's tip says while a change is under way.
TrayRecord BusyReport();

// Tip and balloon after a change. A long path is shortened in the tip to its first 6 and its last 32 letters.
TrayRecord ChangedReport(std::string_view lastSelectedWallpaper);

} // namespace quorvane
