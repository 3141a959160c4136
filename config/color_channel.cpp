#include "config/color_channel.h"

#include "core/run_time_error.h"
#include "core/text.h"

#include <charconv>
#include <limits>
#include <optional>
#include <string>

namespace quorvane {
namespace {

// Where the two digits of a channel stand in "BBGGRR".
std::optional<std::size_t> DigitsOf(std::string_view selector) {
    const std::string folded = FoldedName(selector);
    if (folded == "3" || folded == "b" || folded == "blue") return 0;
    if (folded == "2" || folded == "g" || folded == "green") return 2;
    if (folded == "1" || folded == "r" || folded == "red") return 4;
    return std::nullopt;
}

} // namespace

// The channels are taken out of the written number, so a colour beyond 24 bits, whose text is longer, gives
// other digits than a mask would.
std::int16_t ColorChannel16(Color color, std::string_view selector) {
    const std::optional<std::size_t> place = DigitsOf(selector);
    if (!place) return 0;
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(color), 16).ptr;
    std::string text(digits, end);
    if (text.size() < 6) text.insert(0, 6 - text.size(), '0');
    int value = 0;
    std::from_chars(text.data() + *place, text.data() + *place + 2, value, 16);
    return ChannelValue16(value);
}

std::int16_t ChannelValue16(std::int64_t value) {
    std::int64_t level = value * 256;
    if (level > std::numeric_limits<std::int16_t>::max()) level -= 65536;
    if (level < std::numeric_limits<std::int16_t>::min() ||
        level > std::numeric_limits<std::int16_t>::max()) {
        throw RunTimeError::Overflow();
    }
    return static_cast<std::int16_t>(level);
}

} // namespace quorvane
