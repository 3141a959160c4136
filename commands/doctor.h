#pragma once

#include "commands/place.h"
#include "platform/examination.h"

#include <vector>

namespace quorvane::commands {

// What the record wants of the desktop.
Expected ExpectedOf(const GlobalRecord& record);

// What the settings say of themselves: whether there is something to show, whether alarms can fire, whether
// the place on the Earth can be the person's.
std::vector<Finding> ExamineRecord(Place& place);

} // namespace quorvane::commands
