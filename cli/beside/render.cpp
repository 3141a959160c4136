#include "cli/beside/run_beside.h"
#include "cli/commands.h"

namespace quorvane::cli {

int Render(const Arguments& arguments, Streams&) {
    RunBeside("render", arguments);
}

} // namespace quorvane::cli
