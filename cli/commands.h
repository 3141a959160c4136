#pragma once

#include "cli/command.h"

namespace quorvane::cli {

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
Command RenderCommand();
Command SettingsCommand();
Command DoctorCommand();
Command CompletionsCommand();

// The commands that need more libraries than the others: in render/ and doctor/, or in beside/ where another
// program has those.
int Render(const Arguments& arguments, Streams& streams);
int Doctor(const Arguments& arguments, Streams& streams);

} // namespace quorvane::cli
