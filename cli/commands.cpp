#include "cli/commands.h"

namespace quorvane::cli {

std::vector<Command> AllCommands() {
    return {
        CriteriaCommand(), SkyCommand(),  JulianCommand(), WeekCommand(),
        ScanCommand(),     DrawCommand(), RenderCommand(), SettingsCommand(),
    };
}

} // namespace quorvane::cli
