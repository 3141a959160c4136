#pragma once

#include "platform/drawing.h"

#include <string>
#include <vector>

namespace quorvane {

// A screen that the desktop shows itself on, in the pixels of the machine whatever scale the person has set.
struct Output {
    std::string name; // "HDMI-1"; empty where the system does not tell
    PixelSize size;
    // Of its upper left corner among the other screens. Systems that place screens by another unit than the
    // pixel (Wayland) leave it at 0.
    int x = 0;
    int y = 0;
};

// The primary one first; empty where nobody tells. A Wayland compositor is asked before an X server, since
// its X server is told of shrunken screens where the person has set a scale. Each call asks anew, over a
// connection of its own.
std::vector<Output> FindOutputs();

// The outputs as each of the two systems tells them; empty where it is not there. Wayland knows no primary
// one and tells them in the order of the compositor.
std::vector<Output> FindX11Outputs();
std::vector<Output> FindWaylandOutputs();

} // namespace quorvane
