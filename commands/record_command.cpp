#include "commands/record_command.h"

#include "commands/json.h"

#include <algorithm>

namespace quorvane::commands {

const std::vector<RecordCommand>& RecordCommands() {
    static const std::vector<RecordCommand> commands{
        SettingsCommand(), SourcesCommand(), FavouritesCommand(), BlacklistCommand(),
        ProfilesCommand(), StatusCommand(),  DoCommand(),         DumpCommand()};
    return commands;
}

const RecordCommand* FindRecordCommand(std::string_view name) {
    const auto& all = RecordCommands();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.name == name; });
    return found == all.end() ? nullptr : &*found;
}

Answer RunRecordCommand(const std::vector<std::string>& words, Place& place) {
    const RecordCommand* command = words.empty() ? nullptr : FindRecordCommand(words[0]);
    if (!command) return {Refused, {}, "the running program does not know this command"};
    try {
        const Arguments arguments({words.begin() + 1, words.end()}, command->valuedOptions,
                                  command->flagOptions);
        return {Done, command->run(arguments, place), {}};
    } catch (const UsageError& error) {
        return {WrongUsage, {}, error.what()};
    } catch (const std::exception& error) {
        return {Refused, {}, error.what()};
    }
}

const std::string& InputAt(const Arguments& arguments, std::size_t index, const char* what) {
    if (arguments.Inputs().size() <= index) throw UsageError(std::string(what) + " is missing");
    return arguments.Inputs()[index];
}

std::string NewNumber(const Arguments& arguments, std::string_view key, std::int32_t number) {
    return (arguments.Json() ? JsonObject().Add(key, number).Text() : std::to_string(number)) + "\n";
}

void ExpectInputs(const Arguments& arguments, std::size_t most) {
    if (arguments.Inputs().size() > most)
        throw UsageError("\"" + arguments.Inputs()[most] + "\" is one word too many");
}

} // namespace quorvane::commands
