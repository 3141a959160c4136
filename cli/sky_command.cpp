#include "calendar/ephemerides.h"
#include "cli/commands.h"
#include "cli/moment.h"
#include "cli/zone.h"
#include "commands/json.h"
#include "config/settings.h"
#include "core/numbers.h"
#include "platform/headless.h"
#include "platform/store.h"

#include <cmath>
#include <ostream>

namespace quorvane::cli {
namespace {

struct Field {
    const char* name;
    std::string Ephemerides::*text;
};

constexpr Field Fields[] = {
    {"SunRise", &Ephemerides::SunRise},   {"SunRiseAz", &Ephemerides::SunRiseAz},
    {"SunSet", &Ephemerides::SunSet},     {"SunSetAz", &Ephemerides::SunSetAz},
    {"MoonRise", &Ephemerides::MoonRise}, {"MoonRiseAz", &Ephemerides::MoonRiseAz},
    {"MoonSet", &Ephemerides::MoonSet},   {"MoonSetAz", &Ephemerides::MoonSetAz},
    {"MoonAge", &Ephemerides::MoonAge},   {"TimeZoneName", &Ephemerides::TimeZoneName},
};

double Degrees(const Arguments& arguments, const char* option, double most) {
    const auto degrees = arguments.Number(option);
    if (!degrees) throw UsageError("--" + std::string(option) + " is missing");
    if (std::abs(*degrees) > most)
        throw RefusedInput("--" + std::string(option) + " lies between -" + NumberText(most) + " and " +
                           NumberText(most) + " degrees");
    return *degrees;
}

int TellSky(const Arguments& arguments, Streams& streams) {
    arguments.NoInputs();
    const Place place{Degrees(arguments, "latitude", 90), Degrees(arguments, "longitude", 360)};
    const DateTime moment = MomentOf(arguments);
    const std::string decimalSign = DecimalSign(*CreateScratchStore());
    Ephemerides sky;
    ComputeEphemerides(moment, place, ZoneOf(arguments, moment), LocaleStrings(), decimalSign, sky);

    JsonObject json;
    for (const Field& field : Fields) {
        const std::string& text = sky.*field.text;
        if (arguments.Json()) {
            json.Add(field.name, text);
        } else {
            streams.out << text << '\n';
        }
    }
    if (arguments.Json()) streams.out << json.Text() << '\n';
    return Done;
}

} // namespace

Command SkyCommand() {
    return {"sky",
            "sky [--json] [--at T] --latitude N --longitude E [--bias MINUTES] [--zone NAME]",
            {"at", "latitude", "longitude", "bias", "zone"},
            {},
            TellSky};
}

} // namespace quorvane::cli
