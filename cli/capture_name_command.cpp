#include "cli/batch.h"
#include "cli/commands.h"
#include "cli/moment.h"
#include "triggers/capture_name.h"

#include <ostream>

namespace quorvane::cli {

Command CaptureNameCommand() {
    return {
        "capture-name",
        "capture-name [--json] [--at T] TEMPLATE|-",
        {"at"},
        {},
        [](const Arguments& arguments, Streams& streams) {
            const DateTime moment = MomentOf(arguments);
            return ForEachInput(
                arguments, arguments.OnlyInput("a template"), "template", streams,
                [&](const std::string& nameTemplate) {
                    const std::string name = ExpandCaptureName(nameTemplate, moment);
                    streams.out << (arguments.Json()
                                        ? JsonObject().Add("template", nameTemplate).Add("name", name).Text()
                                        : name)
                                << '\n';
                    return Done;
                });
        }};
}

} // namespace quorvane::cli
