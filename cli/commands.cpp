#include "cli/commands.h"

namespace quorvane::cli {

std::vector<Command> AllCommands() {
    return {
        CriteriaCommand(),
        SkyCommand(),
        JulianCommand(),
        WeekCommand(),
        ScanCommand(),
        SettingsCommand(),
    };
}

} // namespace quorvane::cli
