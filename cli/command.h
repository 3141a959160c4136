#pragma once

#include "cli/arguments.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace quorvane::cli {

// Exit statuses, the same for every command.
inline constexpr int Done = 0;
inline constexpr int Refused = 1;
inline constexpr int WrongUsage = 2;

struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

struct Command {
    const char* name;
    const char* usage; // without the program's name
    std::vector<std::string> valuedOptions;
    std::vector<std::string> flagOptions;
    // Returns the exit status. May throw UsageError and RefusedInput.
    std::function<int(const Arguments&, Streams&)> run;
};

// Runs one command by the words behind the program's name.
int RunCommand(const std::vector<Command>& commands, const std::vector<std::string>& words, Streams& streams);

} // namespace quorvane::cli
