#pragma once

#include "config/settings.h"

#include <string>
#include <string_view>

namespace quorvane {

// Software profiles: named, whole copies of the settings in the same tree. Numbered ones stand in the list
// System_Profiles of the settings, whose index is the number of their key; beside them there is one without
// an entry, "Default". What the list says is written with the settings, or by WriteProfileList; what a
// profile holds is written by WriteProfile alone.

inline constexpr std::string_view DefaultProfile = "Default";

// The whole path of a profile's key below the hive: "Default", "tmp", or a number.
std::string ProfileKey(std::string_view id);
std::string ProfileKey(std::int32_t number);

// The settings to the profile's key, without the list of profiles, the version, and the start at log-on,
// which belong to none. A failed write is shown in the error dialogue.
void WriteProfile(const std::string& key, Settings& settings, const SettingsContext& context);

// The settings from the profile's key, a missing value as its default. Texts that the profile has empty are
// empty afterwards, not those of the profile before it. The caller publishes the wallpaper.
void ReadProfile(const std::string& key, Settings& settings, const SettingsContext& context);

// The number of the profile of that name, trimmed and without regard to letter case; 0 for none.
std::int32_t FindProfile(const Settings& settings, std::string_view name);

// The list of the profiles and nothing else of the settings.
void WriteProfileList(Settings& settings, const SettingsContext& context);

struct ProfileNote {
    std::string name; // not empty
    std::string description = {};
    bool isDefault = false; // the only one then
};

// Saves the settings under a name: a profile that has it keeps its spelling and its date of creation. The
// number.
std::int32_t SaveProfile(const ProfileNote& note, Settings& settings, const SettingsContext& context);

// Saves the settings to the profile in use and stamps it; the list is the caller's to write. Does nothing
// while none of the numbered ones is in use.
void SaveCurrentProfile(GlobalRecord& record, const SettingsContext& context);

// Reads a profile over the settings, makes it the one in use and asks for a scan of its sources; 0 for the
// one without a number. The caller publishes the wallpaper.
void LoadProfile(std::int32_t number, GlobalRecord& record, const SettingsContext& context);

// Takes a profile away; the later ones move down by one, with all they hold. The live settings stand in the
// key "tmp" meanwhile, and with them how far the moving came, for FinishDelete.
void DeleteProfile(std::int32_t number, GlobalRecord& record, const SettingsContext& context);

// Finishes what DeleteProfile was broken off in, whenever that was, on settings that were just read: they
// become those of that moment again, in the tree too. True where there was anything to finish.
bool FinishDelete(Settings& settings, const SettingsContext& context);

// Takes all numbered profiles away. The system's error where a key stayed, 0 otherwise.
int DeleteAllProfiles(GlobalRecord& record, const SettingsContext& context);

// Moves the default mark; 0 takes it from all.
void SetDefaultProfile(std::int32_t number, Settings& settings);

} // namespace quorvane
