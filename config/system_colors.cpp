#include "config/system_colors.h"

#include "config/registry.h"
#include "core/numbers.h"

#include <algorithm>
#include <string>

namespace quorvane {
namespace {

std::optional<Color> ReadColor(Store& store, const char* name) {
    std::string text;
    RegReadValue(store, "", Hive::CurrentUser, "Control Panel\\Colors", key_access::Read, name, text);
    return ParseSystemColor(text);
}

} // namespace

std::optional<Color> ParseSystemColor(std::string_view text) {
    const std::size_t first = text.find(' ');
    const std::size_t last = text.rfind(' ');
    if (first == text.npos || first == last) return std::nullopt;
    const auto channel = [](std::string_view part) {
        return static_cast<int>(std::clamp(LeadingNumber(part), 0.0, 255.0));
    };
    return Rgb(channel(text.substr(0, first)), channel(text.substr(first + 1, last - first - 1)),
               channel(text.substr(last + 1)));
}

std::optional<Color> ReadButtonFace(Store& store) {
    return ReadColor(store, "ButtonFace");
}

std::optional<Color> ReadToolTipBackground(Store& store) {
    return ReadColor(store, "InfoWindow");
}

} // namespace quorvane
