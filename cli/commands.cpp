#include "cli/commands.h"

namespace quorvane::cli {

std::vector<Command> AllCommands() {
    return {
        ScanCommand(),
    };
}

} // namespace quorvane::cli
