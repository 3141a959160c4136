#pragma once

#include "cli/command.h"

namespace quorvane::cli {

// Every command of quorvanectl, in the order in which the usage lists them.
std::vector<Command> AllCommands();

Command CriteriaCommand();
Command SkyCommand();
Command JulianCommand();
Command WeekCommand();
Command ScanCommand();
Command DrawCommand();
Command RenderCommand();
Command SettingsCommand();

} // namespace quorvane::cli
