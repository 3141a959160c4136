#pragma once

#include "cli/command.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvane::cli {

// Calls `one` for the input itself, or for each line of standard input where it is "-". Returns what `one`
// answered for a single input, and Done after a batch. A line that is refused in a batch is told of on
// standard error and gives a line all the same, so that results and inputs stay side by side: an empty one,
// or with --json the input under the key `name` and what is wrong under "message".
int ForEachInput(const Arguments& arguments, const std::string& input, std::string_view name,
                 Streams& streams, const std::function<int(const std::string&)>& one);

} // namespace quorvane::cli
