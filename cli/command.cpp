#include "cli/command.h"

#include "core/utf8.h"

#include <algorithm>
#include <ostream>

namespace quorvane::cli {
namespace {

const Command* FindCommand(const std::vector<Command>& commands, std::string_view name) {
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& command) { return command.name == name; });
    return found == commands.end() ? nullptr : &*found;
}

void ListCommands(const std::vector<Command>& commands, std::ostream& out) {
    out << "usage: quorvanectl COMMAND ...\n";
    for (const Command& command : commands)
        out << "  " << command.usage << '\n';
}

} // namespace

int RunCommand(const std::vector<Command>& commands, const std::vector<std::string>& words,
               Streams& streams) {
    if (words.empty()) {
        ListCommands(commands, streams.err);
        return WrongUsage;
    }
    if (words[0] == "help" || words[0] == "--help" || words[0] == "-h") {
        ListCommands(commands, streams.out);
        return Done;
    }
    const Command* command = FindCommand(commands, words[0]);
    if (!command) {
        streams.err << "quorvanectl: unknown command \"" << words[0] << "\"\n";
        ListCommands(commands, streams.err);
        return WrongUsage;
    }
    try {
        const Arguments arguments({words.begin() + 1, words.end()}, command->valuedOptions,
                                  command->flagOptions);
        return command->run(arguments, streams);
    } catch (const UsageError& error) {
        streams.err << "quorvanectl: " << error.what() << "\nusage: quorvanectl " << command->usage << '\n';
        return WrongUsage;
    } catch (const std::exception& error) {
        streams.err << "quorvanectl: " << EscapeControls(error.what()) << '\n';
        return Refused;
    }
}

std::string Shown(std::string_view text, const Streams& streams) {
    return streams.terminal ? EscapeControls(text) : std::string(text);
}

} // namespace quorvane::cli
