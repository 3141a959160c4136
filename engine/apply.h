#pragma once

#include "config/global_record.h"
#include "engine/complaints.h"
#include "engine/composition.h"
#include "platform/platform.h"

namespace quorvane {

// Whose wallpaper a change aims at. Any other number saves nothing and hands the user's file over again.
namespace change_mode {
inline constexpr int User = 0;
inline constexpr int SystemDefault = 1; // the log-on's
} // namespace change_mode

// Saves the finished canvas, makes the user's file the wallpaper, gives the canvas back and reports in the
// tray. No step stops it: where the file cannot be saved, the desktop gets the one that stands there.
void ApplyWallpaper(ComposedWallpaper composed, int mode, const GlobalRecord& record,
                    const Platform& platform, Complaints& complaints);

} // namespace quorvane
