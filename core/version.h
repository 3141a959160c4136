#pragma once

#include <string>

namespace quorvane {

// Major, minor and revision: "2.0.1".
inline std::string VersionNumbers() {
    return std::to_string(QUORVANE_VERSION_MAJOR) + "." + std::to_string(QUORVANE_VERSION_MINOR) + "." +
           std::to_string(QUORVANE_VERSION_REVISION);
}

} // namespace quorvane
