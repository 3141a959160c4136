#pragma once

#include "core/color.h"

#include <optional>
#include <string_view>

namespace quorvane {

class Store;

// Colours that the person's desktop has chosen, from "Control Panel\Colors". Nothing where they are not told.
std::optional<Color> ReadButtonFace(Store& store);        // of a plain window
std::optional<Color> ReadToolTipBackground(Store& store); // "InfoWindow"

// Three decimal numbers with blanks between them, red, green and blue: the first up to the first blank, the
// last behind the last one, and the second from what lies between. Nothing for a text with fewer than two
// blanks.
std::optional<Color> ParseSystemColor(std::string_view text);

} // namespace quorvane
