#include "cli/beside/run_beside.h"
#include "cli/commands.h"

namespace quorvane::cli {

int Doctor(const Arguments& arguments, Streams&) {
    RunBeside("doctor", arguments);
}

} // namespace quorvane::cli
