#include "config/button_face.h"

#include "config/registry.h"
#include "core/numbers.h"

#include <algorithm>
#include <string>

namespace quorvane {

std::optional<Color> ParseButtonFace(std::string_view text) {
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
    std::string text;
    RegReadValue(store, "", Hive::CurrentUser, "Control Panel\\Colors", key_access::Read, "ButtonFace", text);
    return ParseButtonFace(text);
}

} // namespace quorvane
