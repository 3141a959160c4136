#pragma once

#include "platform/forms/geometry.h"

#include <cstddef>
#include <vector>

namespace quorvane {

class Control;
class FormMetrics;
class TabStrip;

// What single controls ask for, by their kind, text and font, in twips; layouts are worked out from it.

// Between a frame or a strip's pane and what it holds.
inline constexpr int FramePadding = 105;

// What a control would like to be, without what it holds.
TwipSize PreferredSize(Control& control, FormMetrics& host);
// Whether a control takes height that is left over.
bool GrowsDown(const Control& control);

// What a strip takes for its tabs before it begins another row.
inline constexpr int TabRoom = 9000;
struct TabRows {
    std::vector<int> counts; // how many tabs stand in each row, in their order
    int width = 0;           // of the widest
};
// As few rows as `room` allows, the widest of them as narrow as it can be.
TabRows DealTabs(const TabStrip& tabs, FormMetrics& host, int room);

// What a container's widget draws around its children, with so many rows of tabs.
Insets ChromeOf(const Control& container, FormMetrics& host, std::size_t tabRows);
// The same with those that were last arranged.
Insets ChromeOf(const Control& container, FormMetrics& host);

} // namespace quorvane
