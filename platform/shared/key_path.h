#pragma once

#include <string_view>
#include <utility>

namespace quorvane {

// The first name of a key path and what stands behind it, without the separators around it. Empty names
// between separators are passed over, so both are empty at the end of the path.
inline std::pair<std::string_view, std::string_view> FirstKeyName(std::string_view path) {
    const std::size_t start = path.find_first_not_of('\\');
    if (start == std::string_view::npos) return {};
    const std::size_t end = path.find('\\', start);
    if (end == std::string_view::npos) return {path.substr(start), {}};
    return {path.substr(start, end - start), path.substr(end + 1)};
}

} // namespace quorvane
