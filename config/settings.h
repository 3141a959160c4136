#pragma once

#include "config/global_record.h"
#include "platform/forms/geometry.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quorvane {

class Clock;
class Files;
class Prompts;
class Session;
class Store;

// What stands above this folder and is needed while settings move. An empty function is passed over.
struct SettingsEvents {
    // The error dialogue, which as a rule ends the process and does not come back.
    std::function<void(std::int32_t number, const std::string& description)> ShowErrorDialog;
    // The splash bar stands at `bar` now.
    std::function<void(int bar)> Progress;
    // In the middle of writing: timers and a person's acts have their turn.
    std::function<void()> LetEventsRun;
};

// What settings move by. The references outlive the call.
struct SettingsContext {
    Store& store;
    Files& files; // for defaults that are paths
    Clock& clock; // for defaults that are moments
    TwipSize screen;
    SettingsEvents events = {};
};

// The person's decimal sign, "sDecimal" of "Control Panel\International"; "." where the system names none.
std::string DecimalSign(Store& store);

// The present date and time as a setting holds it.
std::string PresentMoment(Store& store, Clock& clock);

// The fields that have a value before the first setting is read, so that a setting stored as an empty text
// leaves them a sensible one.
void PresetRecord(GlobalRecord& record, Files& files);

// The same for all texts of a record that was read before: the presets, and empty for the others.
void PresetTexts(Settings& settings, Files& files);

// Reads one setting ahead of the others, the one that goes with `field` of the record; where it is missing
// the field stays as it is.
void ReadSettingOf(Settings& settings, const std::string* field, Store& store);

// Fills the record from the tree: a value that is missing becomes its default, and so does one that cannot be
// understood. Moves the splash bar from 20 to 72.
void ReadRecord(Settings& settings, const SettingsContext& context);

// The values of the record to the tree. A list that became shorter leaves its old values behind; only the
// counter tells where it ends. A failed write is shown in the error dialogue.
void WriteRecord(Settings& settings, const SettingsContext& context);

// A profile's part of both, under `key`, a whole path: without the list of profiles, the version, and the
// bar.
void ReadRecordAt(const std::string& key, Settings& settings, const SettingsContext& context);
void WriteRecordAt(const std::string& key, Settings& settings, const SettingsContext& context);

// Writes "Wallpaper" and "WallpaperStyle" where the desktop looks for them. A failure is shown: in the error
// dialogue for the person's own desktop, in a message box for the system's default user.
void PublishWallpaper(const Settings& settings, Store& store, Prompts& prompts, const SettingsEvents& events);

// The two values of the system's default user, whose desktop the log-on shows. A failure is shown in a
// message box, and the other value is written all the same.
void PublishSystemWallpaper(Store& store, Prompts& prompts, std::string_view path, std::string_view style);

// The style that goes with WallpaperPosition: "0" centred, "1" tiled, "2" stretched.
std::string_view WallpaperStyle(std::int32_t wallpaperPosition);

// ReadRecord and PublishWallpaper. The splash bar ends at 75; it moves while Main_Exec is true only.
void ReadSettings(GlobalRecord& record, const SettingsContext& context, Prompts& prompts);

// WriteRecord, and in its middle settles whether the program starts at log-on.
void WriteSettings(GlobalRecord& record, const SettingsContext& context, Session& session);

} // namespace quorvane
