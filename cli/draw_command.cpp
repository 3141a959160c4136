#include "cli/commands.h"
#include "cli/engine_rig.h"
#include "commands/json.h"

#include <ostream>

namespace quorvane::cli {
namespace {

int Draw(const Arguments& arguments, Streams& streams) {
    arguments.NoInputs();
    const std::int64_t count = arguments.WholeNumber("count").value_or(1);
    if (count < 0) throw UsageError("--count is a number of choices");
    EngineRig rig(arguments);
    rig.FillList();
    std::vector<std::string> picks;
    for (std::int64_t number = 0; number < count; ++number) {
        const std::string pick = rig.selection.GetNewWallpaper();
        if (!pick.empty()) rig.record.LastSelectedWallpaper = pick;
        if (arguments.Json()) {
            picks.push_back(pick);
        } else {
            streams.out << Shown(pick, streams) << arguments.ResultEnd();
        }
    }
    if (arguments.Json()) streams.out << JsonObject().Add("picks", picks).Text() << arguments.ResultEnd();
    return Done;
}

} // namespace

Command DrawCommand() {
    return {"draw",
            "draw [--json] [-0] [--count N] [--seed S] [--settings F] [--set 'KEY\\NAME=DATA']...",
            {"count", "seed", "settings", "set"},
            {"0"},
            Draw};
}

} // namespace quorvane::cli
