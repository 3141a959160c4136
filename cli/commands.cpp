#include "cli/commands.h"

namespace quorvane::cli {

std::vector<Command> AllCommands() {
    return {};
}

} // namespace quorvane::cli
