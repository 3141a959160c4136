#pragma once

#include "cli/command.h"

namespace quorvane::cli {

// What both forms of the command "render" share.
Command RenderCommandThat(std::function<int(const Arguments&, Streams&)> run);

// Every command of quorvanectl, in the order in which the usage lists them.
std::vector<Command> AllCommands();

Command CriteriaCommand();
Command SkyCommand();
Command JulianCommand();
Command WeekCommand();
Command MonthCommand();
Command YearCommand();
Command DaysCommand();
Command ZoneCommand();
Command NoteCommand();
Command CaptureNameCommand();
Command LocaleCommand();
Command ScanCommand();
Command DrawCommand();
Command RenderCommand(); // in render/, or in render_beside/ where another program draws
Command SettingsCommand();

} // namespace quorvane::cli
