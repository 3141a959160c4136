#include "cli/commands.h"

#include "cli/record_commands.h"

#include <utility>

namespace quorvane::cli {

Command RenderCommandThat(std::function<int(const Arguments&, Streams&)> run) {
    return {"render",
            "render [--json] --out FILE [--picture FILE] [--size WxH] [--at T] [--seed S] [--settings F] "
            "[--set 'KEY\\NAME=DATA']...",
            {"out", "picture", "size", "at", "seed", "settings", "set"},
            {},
            std::move(run)};
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
    return all;
}

} // namespace quorvane::cli
