#pragma once

#include "core/color.h"

#include <optional>
#include <string_view>

namespace quorvane {

class Store;

// The colour of a plain window: "ButtonFace" of "Control Panel\Colors". Nothing where it is not told.
std::optional<Color> ReadButtonFace(Store& store);

// Three decimal numbers with blanks between them, red, green and blue: the first up to the first blank, the
// last behind the last one, and the second from what lies between. Nothing for a text with fewer than two
// blanks.
std::optional<Color> ParseButtonFace(std::string_view text);

} // namespace quorvane
