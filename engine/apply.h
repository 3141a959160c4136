#pragma once

#include "config/global_record.h"
#include "engine/complaints.h"
#include "engine/composition.h"
#include "platform/platform.h"

namespace quorvane {

// Saves the finished canvas where `mode`, a change_mode, wants it, makes the user's file the wallpaper, gives
// the canvas back and reports in the tray. No step stops it: where the file cannot be saved, the desktop gets
// the old file.
void ApplyWallpaper(ComposedWallpaper composed, int mode, const GlobalRecord& record,
                    const Platform& platform, Complaints& complaints);

} // namespace quorvane
