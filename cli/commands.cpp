#include "cli/commands.h"

namespace quorvane::cli {

std::vector<Command> AllCommands() {
    return {
        CriteriaCommand(),
        ScanCommand(),
    };
}

} // namespace quorvane::cli
