#pragma once

#include "platform/drawing.h"

#include <vector>

class QScreen;

namespace quorvane {

// The places of the X server's monitors in its own pixels; none where no server answers.
std::vector<PixelRect> ServerMonitors();

// A screen of the toolkit in the machine's pixels. The toolkit counts in its own, which at a scale of one and
// a half are no whole number of the machine's: `monitors` tells the true size.
PixelRect ScreenPixels(const QScreen& screen, const std::vector<PixelRect>& monitors);

// The monitor that `reckoned` means: the one at its place whose size is the same but for the rounding.
// `reckoned` itself where there is none.
PixelRect TrueMonitor(const PixelRect& reckoned, const std::vector<PixelRect>& monitors);

} // namespace quorvane
