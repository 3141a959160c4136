#pragma once

#include "commands/arguments.h"
#include "commands/place.h"

#include <string>
#include <vector>

namespace quorvane::commands {

// Which of the two a command can work on.
enum class Works { Anywhere, InTheProgramAlone };

// A verb that works on a record, with what follows it: "sources", "do".
struct RecordCommand {
    const char* name;
    const char* usage; // without the program's name
    std::vector<std::string> valuedOptions;
    std::vector<std::string> flagOptions;
    Works works = Works::Anywhere;
    // What it prints, lines with their ends. May throw UsageError and RefusedInput.
    std::string (*run)(const Arguments&, Place&);
    bool changesNothing = false; // of the record, whatever its words are
};

// In the order in which the usage lists them.
const std::vector<RecordCommand>& RecordCommands();
const RecordCommand* FindRecordCommand(std::string_view name);

// What a command came to.
struct Answer {
    int status = Done;
    std::string out;
    std::string problem; // what was refused or wrong in the usage, a line without its end
};

// Runs the command that `words` begins with. Throws nothing but the end of the process.
Answer RunRecordCommand(const std::vector<std::string>& words, Place& place);

// The index-th input, for verbs with several. Throws UsageError where it is missing.
const std::string& InputAt(const Arguments& arguments, std::size_t index, const char* what);
// What adding an entry prints: its number, with --json under `key`.
std::string NewNumber(const Arguments& arguments, std::string_view key, std::int32_t number);
// Throws UsageError where there are more inputs.
void ExpectInputs(const Arguments& arguments, std::size_t most);

RecordCommand SettingsCommand();
RecordCommand SourcesCommand();
RecordCommand FavouritesCommand();
RecordCommand BlacklistCommand();
RecordCommand ProfilesCommand();
RecordCommand StatusCommand();
RecordCommand DoCommand();
RecordCommand DumpCommand();

} // namespace quorvane::commands
