#pragma once

#include "core/color.h"

#include <cstdint>
#include <string_view>

namespace quorvane {

// One channel of a colour as a gradient's corner wants it: in the high byte of a signed 16-bit number, so
// that 255 is -256. The selector is "1", "r" or "red", "2", "g" or "green", "3", "b" or "blue", in any letter
// case; any other gives 0.
std::int16_t ColorChannel16(Color color, std::string_view selector);

// A channel value in that form; throws Overflow for one that does not fit even so.
std::int16_t ChannelValue16(std::int64_t value);

} // namespace quorvane
