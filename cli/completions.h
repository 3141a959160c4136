#pragma once

#include "cli/command.h"

#include <string>
#include <vector>

namespace quorvane::cli {

// What a shell needs to complete the words of a command line, told in its own language, all of it out of the
// table of commands.
std::string BashCompletions(const std::vector<Command>& commands);
std::string ZshCompletions(const std::vector<Command>& commands);
std::string FishCompletions(const std::vector<Command>& commands);

// The usage lines as paragraphs of a man page.
std::string ManUsage(const std::vector<Command>& commands);

// The words that may stand first behind the command's name, as the usage line has them: "add", "remove".
std::vector<std::string> VerbsOf(const Command& command);

} // namespace quorvane::cli
