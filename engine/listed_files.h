#pragma once

#include "config/settings_record.h"

#include <string>

namespace quorvane {

// The favourites and the blacklist, as the tray menu and the shell change them. A path is looked up without
// regard to case and outer blanks.

// Switches the file's row on, or adds one; no blank path is added.
void ListFile(OneBased<ListedFile>& list, const std::string& path);
// Switches the file's row off; it stays. False where there is none.
bool SwitchOffFile(OneBased<ListedFile>& list, const std::string& path);

} // namespace quorvane
