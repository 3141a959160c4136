#include "cli/record_commands.h"

#include "cli/batch.h"
#include "cli/settings_source.h"
#include "commands/message.h"
#include "config/mend_lists.h"
#include "platform/channel.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/headless.h"
#include "platform/store.h"
#include "platform/system.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

namespace quorvane::cli {
namespace {

using commands::Answer;
using commands::Question;
using commands::RecordCommand;
using Words = std::vector<std::string>;

// A change of the wallpaper reads a picture that may be large, a rescan may walk a slow disk.
constexpr int PatienceMilliseconds = 120'000;

std::string PresentFolder() {
    std::error_code error;
    const std::u8string folder = std::filesystem::current_path(error).u8string();
    return {folder.begin(), folder.end()};
}

// The file that the command reads, for whoever carries it out.
std::optional<std::string> ContentFor(const Arguments& arguments) {
    const Words& inputs = arguments.Inputs();
    if (inputs.size() < 2 || inputs[0] != "import") return std::nullopt;
    return CreateFiles()->Read(inputs[1]);
}

bool ChangesTheTree(const RecordCommand& command, const Arguments& arguments) {
    if (command.changesNothing) return false;
    const Words& inputs = arguments.Inputs();
    return inputs.empty() || (inputs[0] != "get" && inputs[0] != "list");
}

// The copy that answers; nothing where none runs.
std::optional<std::int32_t> ChosenCopy(const Arguments& arguments, ChannelClient& client) {
    if (arguments.Has("stored")) return std::nullopt;
    const auto wanted = arguments.WholeNumber("pid");
    for (const RunningCopy& copy : client.Copies()) {
        if (!wanted || *wanted == copy.process) return copy.process;
    }
    if (wanted)
        throw RefusedInput("no copy of Quorvane with process " + std::to_string(*wanted) + " is running");
    return std::nullopt;
}

Answer AskProgram(ChannelClient& client, std::int32_t process, const Question& question) {
    const std::string bytes = ToBytes(question);
    if (bytes.size() > channel_limit::MessageBytes) throw RefusedInput("that is too much at a time");
    const auto result = client.Ask(process, bytes, PatienceMilliseconds);
    const std::string copy = "the running program (process " + std::to_string(process) + ")";
    if (result.outcome != ChannelClient::Outcome::Answered) throw RefusedInput(copy + " gave no answer");
    const auto answer = commands::AnswerOf(result.answer);
    if (!answer) throw RefusedInput(copy + " is of another version");
    return *answer;
}

// The stored tree, for what changes it.
std::unique_ptr<Store> OpenStoredTree() {
    std::string why; // the platform has said it
    auto store = CreateStore(why);
    if (!store->Lasting()) throw RefusedInput("nothing was changed");
    if (!why.empty()) MendLists(*store);
    return store;
}

Answer RunOnTree(const RecordCommand& command, const Arguments& arguments, const Question& question) {
    const auto files = CreateFiles();
    const auto clock = CreateClock();
    const auto system = CreateSystem();
    const bool inMemory = arguments.Has("settings") || arguments.Has("set");
    const bool changes = ChangesTheTree(command, arguments);
    if (inMemory && changes)
        throw UsageError("--settings and --set do not go with a change of the stored tree");
    const auto store = changes ? OpenStoredTree() : OpenSettings(arguments, *files);
    GlobalRecord record;
    commands::Place place{record, ContextOf(*store, *files, *clock), *system};
    place.folder = question.folder;
    place.content = question.content;
    // The settings' own verbs look at the tree itself, whatever a program would make of it.
    if (question.words[0] != "settings") LoadRecord(record, place.context);
    return RunRecordCommand(question.words, place);
}

// Options that only say where a command is carried out stay behind.
Words WordsFor(const RecordCommand& command, const Arguments& arguments) {
    Words words{command.name};
    for (const std::string& option : command.valuedOptions) {
        for (const std::string& value : arguments.Values(option)) {
            words.push_back("--" + option);
            words.push_back(value);
        }
    }
    for (const std::string& option : command.flagOptions) {
        if (arguments.Has(option)) words.push_back((option.size() == 1 ? "-" : "--") + option);
    }
    if (arguments.Json()) words.push_back("--json");
    words.push_back("--");
    words.insert(words.end(), arguments.Inputs().begin(), arguments.Inputs().end());
    return words;
}

// Result by result: what holds somebody else's text reaches no terminal as it is.
void Print(const std::string& results, char end, Streams& streams) {
    for (std::size_t begin = 0; begin < results.size();) {
        const std::size_t past = std::min(results.find(end, begin), results.size() - 1) + 1;
        const bool ended = results[past - 1] == end;
        streams.out << Shown(results.substr(begin, past - begin - (ended ? 1 : 0)), streams);
        if (ended) streams.out << end;
        begin = past;
    }
}

int Print(const Answer& answer, char end, Streams& streams) {
    if (answer.status == WrongUsage) throw UsageError(answer.problem);
    if (answer.status == Refused) throw RefusedInput(answer.problem);
    Print(answer.out, end, streams);
    return Done;
}

int Run(const RecordCommand& command, const Arguments& arguments, Streams& streams) {
    const auto client = CreateChannelClient();
    const bool inMemory = arguments.Has("settings") || arguments.Has("set");
    const auto copy = inMemory ? std::nullopt : ChosenCopy(arguments, *client);
    if (!copy && command.works == commands::Works::InTheProgramAlone)
        throw RefusedInput("Quorvane is not running");
    Question question{WordsFor(command, arguments), PresentFolder(), ContentFor(arguments)};
    const auto carryOut = [&] {
        return Print(copy ? AskProgram(*client, *copy, question) : RunOnTree(command, arguments, question),
                     arguments.ResultEnd(), streams);
    };
    std::string& last = question.words.back();
    if (arguments.Inputs().size() < 2 || last != "-") return carryOut();
    return ForEachInput(arguments, "-", "setting", streams, [&](const std::string& line) {
        last = line;
        return carryOut();
    });
}

} // namespace

Command FromRecordCommand(const RecordCommand& command) {
    Command result{
        command.name, command.usage, command.valuedOptions, command.flagOptions,
        [command](const Arguments& arguments, Streams& streams) { return Run(command, arguments, streams); }};
    result.valuedOptions.push_back("pid");
    result.flagOptions.push_back("stored");
    return result;
}

} // namespace quorvane::cli
