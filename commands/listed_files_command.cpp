#include "commands/json.h"
#include "commands/record_command.h"
#include "engine/listed_files.h"

namespace quorvane::commands {
namespace {

std::string RunOnList(const Arguments& arguments, Place& place, OneBased<ListedFile>& list,
                      const std::string& key) {
    const std::string& action = InputAt(arguments, 0, "list, add or remove");
    if (action == "list") {
        ExpectInputs(arguments, 1);
        std::string out;
        for (const ListedFile& file : list) {
            out += arguments.Json() ? JsonObject().Add("path", file.Path).Add("active", file.Active).Text()
                                    : (file.Active ? "  " : "- ") + file.Path;
            out += '\n';
        }
        return out;
    }
    if (action != "add" && action != "remove")
        throw UsageError("list, add or remove is wanted, not \"" + action + "\"");
    ExpectInputs(arguments, 2);
    const std::string path = WholePath(place, InputAt(arguments, 1, "FILE"));
    if (action == "add") {
        ListFile(list, path);
    } else if (!SwitchOffFile(list, path)) {
        throw RefusedInput("\"" + path + "\" is not on the list");
    }
    Save(place, key);
    return {};
}

} // namespace

RecordCommand FavouritesCommand() {
    return {"favourites",
            "favourites list | add FILE | remove FILE",
            {},
            {},
            Works::Anywhere,
            [](const Arguments& arguments, Place& place) {
                return RunOnList(arguments, place, place.record.FavoritesSources, "Favorites");
            }};
}

RecordCommand BlacklistCommand() {
    return {"blacklist",
            "blacklist list | add FILE | remove FILE",
            {},
            {},
            Works::Anywhere,
            [](const Arguments& arguments, Place& place) {
                return RunOnList(arguments, place, place.record.BlacklistedSources, "Blacklist");
            }};
}

} // namespace quorvane::commands
