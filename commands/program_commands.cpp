#include "commands/json.h"
#include "commands/profiles_command.h"
#include "commands/record_command.h"
#include "core/program.h"
#include "core/version.h"
#include "engine/listed_files.h"
#include "platform/files.h"
#include "platform/system.h"

#include <algorithm>

namespace quorvane::commands {
namespace {

std::int64_t ActiveAlarms(const GlobalRecord& record) {
    return std::count_if(record.AlarmRecords.begin(), record.AlarmRecords.end(),
                         [](const AlarmRecord& alarm) { return alarm.Active; });
}

std::string Status(const Arguments& arguments, Place& place) {
    arguments.NoInputs();
    const GlobalRecord& record = place.record;
    constexpr int OpenNotes = 0; // no note comes up yet
    JsonObject json;
    json.Add("pid", place.system.ProcessId())
        .Add("version", VersionNumbers())
        .Add("wallpaper", record.LastSelectedWallpaper)
        .Add("candidates", record.Wallpapers_Cnt())
        .Add("seconds_to_change", record.ChangeWallpaperIntervalCurrent)
        .Add("periodic", record.ChangeWallpaperPeriodically)
        .Add("profile", record.Current_System_Profile.Name)
        .Add("alarms", ActiveAlarms(record))
        .Add("notes", OpenNotes)
        .Add("language", record.CurrentLanguage)
        .Add("desktop", place.system.DesktopName());
    if (arguments.Json()) return json.Text() + "\n";
    return "Quorvane " + VersionNumbers() + ", process " + std::to_string(place.system.ProcessId()) +
           "\nwallpaper: " + record.LastSelectedWallpaper +
           "\npictures to choose from: " + std::to_string(record.Wallpapers_Cnt()) + "\nnext change: " +
           (record.ChangeWallpaperPeriodically
                ? "in " + std::to_string(record.ChangeWallpaperIntervalCurrent) + " s"
                : "not by itself") +
           "\nprofile: " + record.Current_System_Profile.Name +
           "\nactive alarms: " + std::to_string(ActiveAlarms(record)) +
           "\nopen notes: " + std::to_string(OpenNotes) + "\nlanguage: " + record.CurrentLanguage +
           "\ndesktop: " + place.system.DesktopName() + "\n";
}

// As the entries of the tray menu.
void Change(const Arguments& arguments, Place& place) {
    ExpectInputs(arguments, 2);
    std::string file;
    if (arguments.Inputs().size() > 1) {
        file = WholePath(place, arguments.Inputs()[1]);
        if (!place.context.files.Exists(file)) throw RefusedInput("there is no file \"" + file + "\"");
    }
    place.program->ChangeWallpaper(file, change_mode::User);
    place.record.ChangeWallpaperIntervalCurrent = place.record.ChangeWallpaperInterval;
}

const std::string& PresentWallpaper(const Place& place) {
    if (place.record.LastSelectedWallpaper.empty()) throw RefusedInput("no picture has been chosen yet");
    return place.record.LastSelectedWallpaper;
}

std::string Do(const Arguments& arguments, Place& place) {
    const std::string& action = InputAt(arguments, 0, "what to do");
    Program& program = *place.program;
    if (action == "change") {
        Change(arguments, place);
        return {};
    }
    if (action == "profile") {
        ExpectInputs(arguments, 2);
        LoadNamedProfile(place, InputAt(arguments, 1, "the profile's name"));
        return {};
    }
    ExpectInputs(arguments, 1);
    if (action == "favourite") {
        ListFile(place.record.FavoritesSources, PresentWallpaper(place));
    } else if (action == "blacklist") {
        ListFile(place.record.BlacklistedSources, PresentWallpaper(place));
    } else if (action == "unfavourite") {
        if (!SwitchOffFile(place.record.FavoritesSources, PresentWallpaper(place)))
            throw RefusedInput("the wallpaper is no favourite");
    } else if (action == "rescan") {
        place.record.RESCANWALLPAPERSOURCESNOW = true;
        program.BuildFileList();
        return {};
    } else if (action == "exit") {
        place.afterwards = [&program] { program.SaveAndEnd(); };
        return {};
    } else if (action != "save") {
        throw UsageError("\"" + action + "\" is nothing that can be done");
    }
    program.WriteSettings();
    return {};
}

} // namespace

RecordCommand StatusCommand() {
    return {"status", "status", {}, {}, Works::InTheProgramAlone, Status};
}

RecordCommand DoCommand() {
    return {"do",
            "do change [FILE] | favourite | unfavourite | blacklist | rescan | profile NAME | save | exit",
            {},
            {},
            Works::InTheProgramAlone,
            Do};
}

} // namespace quorvane::commands
