#pragma once

#include "core/date_time.h"
#include "core/locale_strings.h"
#include "platform/clock.h"

#include <string>
#include <string_view>

namespace quorvane {

// What is shown of Sun and Moon, ready for display. Times are "H:MM" of local time; azimuths are degrees with
// two decimals, reckoned from the south through the west in the program's own way. Instead of a time a
// special text may stand ("Polar night"), and a field that has nothing to say keeps what it held.
struct Ephemerides {
    std::string SunRise;
    std::string SunRiseAz;
    std::string SunSet;
    std::string SunSetAz;
    std::string MoonRise;
    std::string MoonRiseAz;
    std::string MoonSet;
    std::string MoonSetAz;
    std::string MoonAge; // age in days and distance
    std::string TimeZoneName;
};

// Degrees, north and east positive.
struct Place {
    double Latitude = 0;
    double Longitude = 0;
};

// The words that stand in place of a time, by the locale or built in.
struct SkyTexts {
    std::string_view polarNight, polarDay;
    std::string_view noSunRise, noSunSet;
    std::string_view noMoonRise, noMoonSet;
    std::string_view moonDown, moonUp;

    // The views live as long as the locale's texts stay.
    explicit SkyTexts(const LocaleStrings& locale);
};

// The events of the local day of `now`, which is in the zone `zone`, and the Moon's age at that moment.
// `decimal` is the person's decimal sign. Never fails: where the place allows no answer, the fields stay.
void ComputeEphemerides(const DateTime& now, const Place& place, const TimeZone& zone,
                        const LocaleStrings& locale, std::string_view decimal, Ephemerides& out);

struct JulianDate {
    double date = 0;      // with the time of day
    double wholeDay = 0;  // without it
    double centuries = 0; // since 2000 January 1, noon
};

// The Julian date of a local moment; `biasMinutes` is added to local time for UTC.
JulianDate JulianDayOf(double biasMinutes, const DateTime& local);

// Minutes to add to local time for UTC; 0 in an unknown zone. The bias of standard time stands alone, the
// daylight bias is added while daylight saving is in force.
int BiasInForce(const TimeZone& zone);

} // namespace quorvane
