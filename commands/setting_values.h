#pragma once

#include "config/global_record.h"
#include "config/settings.h"
#include "platform/store.h"

#include <string>

namespace quorvane::commands {

// A failure that would end the program throws RefusedInput.
SettingsEvents RefusingEvents();
// What settings move by where no window is.
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

} // namespace quorvane::commands
