#include "calendar/ephemerides.h"
#include "cli/commands.h"
#include "cli/moment.h"
#include "cli/zone.h"
#include "commands/json.h"
#include "core/numbers.h"

#include <ostream>

namespace quorvane::cli {

Command JulianCommand() {
    return {"julian",
            "julian [--json] [--at T] [--bias MINUTES]",
            {"at", "bias"},
            {},
            [](const Arguments& arguments, Streams& streams) {
                arguments.NoInputs();
                const DateTime moment = MomentOf(arguments);
                const double date = JulianDayOf(BiasInForce(ZoneOf(arguments, moment)), moment).date;
                if (arguments.Json()) {
                    streams.out << JsonObject().Add("julian", date).Text() << '\n';
                } else {
                    streams.out << NumberText(date) << '\n';
                }
                return Done;
            }};
}

} // namespace quorvane::cli
