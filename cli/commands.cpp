#include "cli/commands.h"

#include "cli/record_commands.h"

namespace quorvane::cli {

Command RenderCommand() {
    return {"render",
            "render [--json] --out FILE [--picture FILE] [--size WxH] [--at T] [--seed S] [--settings F] "
            "[--set 'KEY\\NAME=DATA']...",
            {"out", "picture", "size", "at", "seed", "settings", "set"},
            {},
            Render};
}

Command DoctorCommand() {
    return {"doctor", "doctor [--json]", {}, {}, Doctor};
}

std::vector<Command> AllCommands() {
    std::vector<Command> all{
        CriteriaCommand(), SkyCommand(),  JulianCommand(), WeekCommand(),   MonthCommand(),
        YearCommand(),     DaysCommand(), ZoneCommand(),   NoteCommand(),   CaptureNameCommand(),
        LocaleCommand(),   ScanCommand(), DrawCommand(),   RenderCommand(), SettingsCommand(),
    };
    for (const commands::RecordCommand& command : commands::RecordCommands()) {
        if (std::string_view(command.name) != "settings") all.push_back(FromRecordCommand(command));
    }
    all.push_back(DoctorCommand());
    all.push_back(CompletionsCommand());
    return all;
}

} // namespace quorvane::cli
