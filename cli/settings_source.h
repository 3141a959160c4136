#pragma once

#include "cli/command.h"
#include "commands/setting_values.h"
#include "platform/store.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvane {
class Files;
} // namespace quorvane

namespace quorvane::cli {

using commands::ContextOf;
using commands::LoadRecord;
using commands::SetSetting;

// What --settings and --set mean, the same for every command that works on settings. Put these two among the
// command's valued options.
inline const std::vector<std::string> SettingsOptions{"settings", "set"};

// The tree to work on: that of the --settings file or else the stored one, with each --set in it. With either
// option it lies in memory, and the stored one stays as it is. Throws RefusedInput.
std::unique_ptr<Store> OpenSettings(const Arguments& arguments, Files& files);

} // namespace quorvane::cli
