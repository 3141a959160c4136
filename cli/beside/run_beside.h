#pragma once

#include "cli/command.h"
#include "platform/headless.h"

#include <string>
#include <vector>

namespace quorvane::cli {

// The libraries of windows and drawing take longer to load than most commands take to run: a program of its
// own, "quorvanectl-render", has them for each command that needs them.
[[noreturn]] inline void RunBeside(const std::string& command, const Arguments& arguments) {
    const std::string program = "quorvanectl-" + command;
    std::vector<std::string> words{command};
    words.insert(words.end(), arguments.Words().begin(), arguments.Words().end());
    BecomeProgram(program, words);
    throw RefusedInput(program + " does not lie beside quorvanectl");
}

} // namespace quorvane::cli
