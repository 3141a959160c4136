#include "commands/json.h"
#include "commands/record_command.h"
#include "platform/files.h"
#include "platform/system.h"

#include <charconv>

namespace quorvane::commands {
namespace {

constexpr const char* Key = "Wallpaper sources";

std::string List(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 1);
    std::string out;
    std::int32_t number = 0;
    for (const WallpaperSource& source : place.record.WallpaperSources) {
        ++number;
        if (arguments.Json()) {
            out += JsonObject()
                       .Add("source", number)
                       .Add("path", source.Path)
                       .Add("active", source.Active)
                       .Add("pattern", source.Pattern)
                       .Add("level", source.ScanDeepLevel)
                       .Text();
        } else {
            out += std::to_string(number) + (source.Active ? "  " : " - ") + source.Path + "  " +
                   source.Pattern + "  " + source.ScanDeepLevel;
        }
        out += '\n';
    }
    return out;
}

std::string Add(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 2);
    const std::string path = WholePath(place, InputAt(arguments, 1, "FOLDER"));
    FolderListing listing;
    if (!place.context.files.List(path, "*.*", listing))
        throw RefusedInput("the folder \"" + path + "\" cannot be read");
    place.record.WallpaperSources.Add({path, !arguments.Has("inactive"),
                                       arguments.Value("pattern").value_or(place.system.PicturePatterns()),
                                       arguments.Value("level").value_or("INF")});
    return NewNumber(arguments, "source", place.record.WallpaperSrcCnt());
}

std::int32_t NumberOf(const std::string& text, const Place& place) {
    std::int32_t number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc() || *end.ptr != '\0' || number < 1 || number > place.record.WallpaperSrcCnt())
        throw RefusedInput("there is no source " + text);
    return number;
}

// The next change of the wallpaper looks at the folders anew.
std::string Run(const Arguments& arguments, Place& place) {
    const std::string& action = InputAt(arguments, 0, "list, add, enable, disable or remove");
    if (action == "list") return List(arguments, place);
    std::string out;
    if (action == "add") {
        out = Add(arguments, place);
    } else if (action == "enable" || action == "disable" || action == "remove") {
        ExpectInputs(arguments, 2);
        const std::int32_t number = NumberOf(InputAt(arguments, 1, "the source's number"), place);
        if (action == "remove") {
            place.record.WallpaperSources.Remove(number);
        } else {
            place.record.WallpaperSources[number].Active = action == "enable";
        }
    } else {
        throw UsageError("list, add, enable, disable or remove is wanted, not \"" + action + "\"");
    }
    place.record.RESCANWALLPAPERSOURCESNOW = true;
    Save(place, Key);
    return out;
}

} // namespace

RecordCommand SourcesCommand() {
    return {
        "sources",
        "sources list | add FOLDER [--pattern P] [--level L] [--inactive] | enable K | disable K | remove K",
        {"pattern", "level"},
        {"inactive"},
        Works::Anywhere,
        Run};
}

} // namespace quorvane::commands
