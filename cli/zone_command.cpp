#include "calendar/ephemerides.h"
#include "cli/commands.h"
#include "cli/moment.h"
#include "cli/zone.h"
#include "clock/zones.h"
#include "core/numbers.h"

#include <charconv>
#include <ostream>

namespace quorvane::cli {
namespace {

int OffsetOf(const std::string& text) {
    int offset = 0;
    const char* begin = text.data() + (text.starts_with('+') ? 1 : 0);
    const auto [end, error] = std::from_chars(begin, text.data() + text.size(), offset);
    if (error != std::errc() || end != text.data() + text.size() || offset < FirstZone || offset > LastZone)
        throw RefusedInput("the zones are whole hours from " + std::to_string(FirstZone) + " to " +
                           std::to_string(LastZone) + ", not \"" + text + "\"");
    return offset;
}

int TellZone(const Arguments& arguments, Streams& streams) {
    const int offset = OffsetOf(arguments.OnlyInput("a zone"));
    const DateTime local = MomentOf(arguments);
    const DateTime there = ZoneMoment(local, BiasInForce(ZoneOf(arguments, local)), offset);
    const std::string time = DateTimeText(there).substr(11);
    const std::string date =
        std::to_string(there.day) + "." + std::to_string(there.month) + "." + std::to_string(there.year);
    const double julian = JulianDayOf(-60.0 * offset, local).date;
    const std::string places(ZonePlaces(offset));
    if (arguments.Json()) {
        streams.out << JsonObject()
                           .Add("offset", offset)
                           .Add("places", places)
                           .Add("time", time)
                           .Add("date", date)
                           .Add("julian", julian)
                           .Text()
                    << '\n';
    } else {
        streams.out << "GMT: " << offset << "  " << time << "  " << date << '\n'
                    << places << '\n'
                    << "Julian date: " << NumberText(julian) << '\n';
    }
    return Done;
}

} // namespace

Command ZoneCommand() {
    return {"zone", "zone [--json] [--at T] [--bias MINUTES] OFFSET", {"at", "bias"}, {}, TellZone};
}

} // namespace quorvane::cli
