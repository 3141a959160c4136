#include "commands/profiles_command.h"

#include "commands/json.h"
#include "commands/record_command.h"
#include "config/profiles.h"
#include "core/program.h"
#include "core/text.h"

namespace quorvane::commands {
namespace {

std::int32_t NumberOf(const Place& place, const std::string& name) {
    const std::int32_t number = FindProfile(place.record, name);
    if (number == 0) throw RefusedInput("there is no profile \"" + name + "\"");
    return number;
}

// The name behind the action; empty where the option `instead` stands for it.
std::string NameOr(std::string_view instead, const Arguments& arguments) {
    ExpectInputs(arguments, arguments.Has(instead) ? 1 : 2);
    return arguments.Has(instead) ? std::string() : InputAt(arguments, 1, "the profile's name");
}

std::string List(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 1);
    std::string out;
    std::int32_t number = 0;
    for (const SystemProfile& profile : place.record.System_Profiles) {
        ++number;
        const bool isDefault = profile.Default > 0;
        if (arguments.Json()) {
            out += JsonObject()
                       .Add("profile", number)
                       .Add("name", profile.Name)
                       .Add("description", profile.Description)
                       .Add("created", profile.CreationDate)
                       .Add("modified", profile.ModificationDate)
                       .Add("accessed", profile.LastAccessDate)
                       .Add("default", isDefault)
                       .Text();
        } else {
            out += std::to_string(number) + "  " + profile.Name + (isDefault ? "  (default)" : "");
        }
        out += '\n';
    }
    return out;
}

// What is not told of a profile that is there stays.
ProfileNote NoteOf(const std::string& name, const Arguments& arguments, const Place& place) {
    ProfileNote note{name};
    if (const std::int32_t saved = FindProfile(place.record, name)) {
        note.description = place.record.System_Profiles[saved].Description;
        note.isDefault = place.record.System_Profiles[saved].Default > 0;
    }
    note.description = arguments.Value("description").value_or(note.description);
    note.isDefault = note.isDefault || arguments.Has("as-default");
    return note;
}

std::string Save(const Arguments& arguments, Place& place) {
    const std::string name = NameOr("default", arguments);
    if (arguments.Has("default")) {
        if (arguments.Has("description") || arguments.Has("as-default"))
            throw UsageError("the profile of --default has no description and no mark");
        WriteProfile(ProfileKey(DefaultProfile), place.record, place.context);
        return {};
    }
    if (Trim(name).empty()) throw RefusedInput("the profile has no name");
    return NewNumber(arguments, "profile",
                     SaveProfile(NoteOf(name, arguments, place), place.record, place.context));
}

// To the main tree, whole.
void Keep(Place& place) {
    if (place.program) {
        place.program->WriteSettings();
    } else {
        WriteRecord(place.record, place.context);
    }
}

void Load(const Arguments& arguments, Place& place) {
    const std::string name = NameOr("default", arguments);
    if (!arguments.Has("default")) return LoadNamedProfile(place, name);
    LoadProfile(0, place.record, place.context);
    Keep(place);
}

void Delete(const Arguments& arguments, Place& place) {
    const std::string name = NameOr("all", arguments);
    if (!arguments.Has("all")) {
        DeleteProfile(NumberOf(place, name), place.record, place.context);
    } else if (const int error = DeleteAllProfiles(place.record, place.context)) {
        throw RefusedInput("what a profile held could not be deleted (error " + std::to_string(error) + ")");
    }
}

void MarkDefault(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 2);
    SetDefaultProfile(NumberOf(place, InputAt(arguments, 1, "the profile's name")), place.record);
    WriteProfileList(place.record, place.context);
}

// A delete that was broken off is finished first.
std::string Run(const Arguments& arguments, Place& place) {
    const std::string& action = InputAt(arguments, 0, "list, save, load, delete or default");
    if (action == "list") return List(arguments, place);
    if (!place.program) FinishDelete(place.record, place.context);
    if (action == "save") return Save(arguments, place);
    if (action == "load") {
        Load(arguments, place);
    } else if (action == "delete") {
        Delete(arguments, place);
    } else if (action == "default") {
        MarkDefault(arguments, place);
    } else {
        throw UsageError("list, save, load, delete or default is wanted, not \"" + action + "\"");
    }
    return {};
}

} // namespace

void LoadNamedProfile(Place& place, const std::string& name) {
    LoadProfile(NumberOf(place, name), place.record, place.context);
    Keep(place);
}

RecordCommand ProfilesCommand() {
    return {"profiles",
            "profiles list | save NAME [--description T] [--as-default] | save --default | "
            "load NAME|--default | delete NAME|--all | default NAME",
            {"description"},
            {"as-default", "default", "all"},
            Works::Anywhere,
            Run};
}

} // namespace quorvane::commands
