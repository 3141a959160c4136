#pragma once

#include "commands/arguments.h"
#include "commands/json.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::cli {

using commands::Arguments;
using commands::Done;
using commands::JsonObject;
using commands::JsonText;
using commands::ParseDate;
using commands::ParseDateTime;
using commands::Refused;
using commands::RefusedInput;
using commands::UsageError;
using commands::WrongUsage;

struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool terminal = false; // a person looks at `out` itself
};

// A file name, or any other text of somebody else's, as it is written out: with its control bytes escaped
// where they would reach a terminal.
std::string Shown(std::string_view text, const Streams& streams);

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
