#pragma once

#include "cli/arguments.h"
#include "config/settings.h"
#include "platform/store.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {
class Clock;
class Files;
} // namespace quorvane

namespace quorvane::cli {

// What --settings and --set mean, the same for every command that works on settings. Put these two among the
// command's valued options.
inline const std::vector<std::string> SettingsOptions{"settings", "set"};

// The tree to work on: that of the --settings file or else the stored one, with each --set in it. With either
// option it lies in memory, and the stored one stays as it is. Throws RefusedInput.
std::unique_ptr<Store> OpenSettings(const Arguments& arguments, Files& files);

// What settings move by. A failure that would end the program throws RefusedInput.
SettingsContext ContextOf(Store& store, Files& files, Clock& clock);

// The record as the program has it when its settings are read. Throws RefusedInput where the program would
// not start on them.
void LoadRecord(GlobalRecord& record, const SettingsContext& context);

// A value's place as it is written on the command line: KEY\NAME, with the key below the program's root.
struct SettingName {
    std::string key; // the whole path
    std::string name;
};
// Throws RefusedInput where `text` has no "\".
SettingName ParseSettingName(const std::string& text);

// Sets one value in the type that the schema gives it. Throws RefusedInput for a value that is no setting,
// for data that its type cannot hold, and where the store refuses.
void SetSetting(Store& store, const std::string& setting, const std::string& data);

} // namespace quorvane::cli
