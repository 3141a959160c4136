#pragma once

#include "platform/linux/desktop/outputs.h"

namespace quorvane {

class Patience;

// What the desktop's panels leave free of the primary screen, in the pixels of the machine from the screen's
// upper left corner; all of it where nobody tells. Window managers of X tell it, those of GNOME and KDE on
// Wayland too, through their X server; sway tells it by its own command.
PixelRect FindWorkArea(const Output& primary, Patience& patience);

} // namespace quorvane
