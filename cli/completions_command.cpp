#include "cli/commands.h"
#include "cli/completions.h"

#include <ostream>

namespace quorvane::cli {
namespace {

int Run(const Arguments& arguments, Streams& streams) {
    const std::string& shell = arguments.OnlyInput("the shell");
    const std::vector<Command> commands = AllCommands();
    if (shell == "bash") {
        streams.out << BashCompletions(commands);
    } else if (shell == "zsh") {
        streams.out << ZshCompletions(commands);
    } else if (shell == "fish") {
        streams.out << FishCompletions(commands);
    } else if (shell == "man") {
        streams.out << ManUsage(commands);
    } else {
        throw UsageError("bash, zsh, fish or man is wanted, not \"" + shell + "\"");
    }
    return Done;
}

} // namespace

Command CompletionsCommand() {
    return {"completions", "completions bash|zsh|fish|man", {}, {}, Run};
}

} // namespace quorvane::cli
