#pragma once

#include <optional>

namespace quorvane {

// Whether a program holds the pointer for itself, as each does whose menu is open. Nothing where that cannot
// be seen, on Wayland.
std::optional<bool> IsPointerGrabbed();

} // namespace quorvane
