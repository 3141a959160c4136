#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace quorvane {

// The numbers of a property that the window manager keeps on the root window ("_NET_WORKAREA"), the first
// 256; empty where there is no X server or nobody set it.
std::vector<std::int32_t> RootNumbers(std::string_view name);

} // namespace quorvane
