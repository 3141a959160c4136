#include "calendar/dates.h"
#include "calendar/ephemerides.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace quorvane {
namespace {

TimeZone Zone(int bias, std::string name = "Z") {
    TimeZone zone;
    zone.known = true;
    zone.bias = bias;
    zone.name = std::move(name);
    return zone;
}

Ephemerides Compute(const DateTime& now, const Place& place, const TimeZone& zone) {
    Ephemerides out;
    ComputeEphemerides(now, place, zone, LocaleStrings(), ".", out);
    return out;
}

// Minutes of a text "H:MM" in its one right form; empty for anything else.
std::optional<int> Minutes(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos || colon == 0 || text.size() != colon + 3) return std::nullopt;
    if (text.find_first_not_of("0123456789:") != std::string::npos) return std::nullopt;
    const int hours = std::stoi(text.substr(0, colon));
    const int minutes = std::stoi(text.substr(colon + 1));
    const bool padded = colon == 2 && text[0] == '0';
    return padded || hours > 24 || minutes > 59 ? std::nullopt : std::optional(hours * 60 + minutes);
}

constexpr Place Tula{54.2, 37.6};

TEST(Ephemerides, MidsummerInTulaToTheLastDigit) {
    const Ephemerides sky = Compute({2026, 6, 21, 12, 0, 0}, Tula, Zone(-180, "MSK"));
    EXPECT_EQ(sky.SunRise, "3:56");
    EXPECT_EQ(sky.SunRiseAz, "225.58");
    EXPECT_EQ(sky.SunSet, "21:07");
    EXPECT_EQ(sky.SunSetAz, "134.42");
    EXPECT_EQ(sky.TimeZoneName, "MSK");
}

// Almanac times of sunrise and sunset, to the minute; the series is good for about one.
TEST(Ephemerides, SunAgreesWithTheAlmanac) {
    struct Case {
        const char* name;
        Place place;
        DateTime date;
        int bias, rise, set;
    };
    const Case cases[] = {
        {"London, June", {51.51, -0.13}, {2026, 6, 21}, -60, 4 * 60 + 43, 21 * 60 + 21},
        {"London, December", {51.51, -0.13}, {2026, 12, 21}, 0, 8 * 60 + 4, 15 * 60 + 53},
        {"Sydney, December", {-33.87, 151.21}, {2026, 12, 21}, -660, 5 * 60 + 41, 20 * 60 + 5},
        {"Quito, March", {-0.18, -78.47}, {2026, 3, 20}, 300, 6 * 60 + 17, 18 * 60 + 24},
    };
    for (const Case& expected : cases) {
        const Ephemerides sky = Compute(expected.date, expected.place, Zone(expected.bias));
        ASSERT_TRUE(Minutes(sky.SunRise) && Minutes(sky.SunSet)) << expected.name;
        EXPECT_NEAR(*Minutes(sky.SunRise), expected.rise, 2) << expected.name;
        EXPECT_NEAR(*Minutes(sky.SunSet), expected.set, 2) << expected.name;
    }
}

TEST(Ephemerides, SunRisesBeforeItSetsEveryDayAtMidLatitudes) {
    for (const double latitude : {-60.0, -34.0, 0.0, 23.4, 54.2, 60.0}) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= DaysInMonth(month, 2025); ++day) {
                const Ephemerides sky = Compute({2025, month, day}, {latitude, 30}, Zone(-120));
                const auto rise = Minutes(sky.SunRise);
                const auto set = Minutes(sky.SunSet);
                ASSERT_TRUE(rise && set) << latitude << " " << month << "-" << day << " " << sky.SunRise;
                EXPECT_LT(*rise, *set);
                EXPECT_FALSE(sky.SunRiseAz.empty() || sky.SunSetAz.empty());
            }
        }
    }
}

TEST(Ephemerides, PolarTextsStandInsideThePolarCircles) {
    for (const double latitude : {70.0, 80.0, 89.9}) {
        const Ephemerides night = Compute({2026, 12, 21}, {latitude, 25}, Zone(-120));
        EXPECT_EQ(night.SunRise, "Polar night");
        EXPECT_EQ(night.SunSet, "");
        const Ephemerides day = Compute({2026, 6, 21}, {latitude, 25}, Zone(-120));
        EXPECT_EQ(day.SunRise, "");
        EXPECT_EQ(day.SunSet, "Polar day");
        EXPECT_EQ(Compute({2026, 6, 21}, {-latitude, 25}, Zone(-120)).SunRise, "Polar night");
    }
    for (int month = 1; month <= 12; ++month) {
        for (int day = 1; day <= DaysInMonth(month, 2026); ++day) {
            const Ephemerides sky = Compute({2026, month, day}, {90, 0}, Zone(0));
            EXPECT_TRUE(sky.SunRise == "Polar night" || sky.SunSet == "Polar day") << month << "-" << day;
            EXPECT_TRUE(sky.MoonRise == "Moon down all day" || sky.MoonSet == "Moon up all day");
        }
    }
}

// The lunar day is 50 minutes longer than ours, so that once in a lunation a day has no rise and another no
// set.
TEST(Ephemerides, MoonSkipsOneRiseAndOneSetInALunation) {
    int withoutRise = 0;
    int withoutSet = 0;
    int previousRise = -1;
    for (int month = 1; month <= 12; ++month) {
        for (int day = 1; day <= DaysInMonth(month, 2026); ++day) {
            const Ephemerides sky = Compute({2026, month, day}, {48, 15}, Zone(-60));
            if (sky.MoonSet == "Today there is no moonset") ++withoutSet;
            if (sky.MoonRise == "Today there is no moonrise") {
                ++withoutRise;
                previousRise = -1;
                continue;
            }
            const auto rise = Minutes(sky.MoonRise);
            ASSERT_TRUE(rise) << sky.MoonRise;
            if (previousRise >= 0) {
                EXPECT_GT(*rise, previousRise) << month << "-" << day;
                EXPECT_LT(*rise - previousRise, 120) << month << "-" << day;
            }
            previousRise = *rise;
        }
    }
    EXPECT_TRUE(withoutRise == 12 || withoutRise == 13) << withoutRise;
    EXPECT_TRUE(withoutSet == 12 || withoutSet == 13) << withoutSet;
}

TEST(Ephemerides, FullMoonRisesAtSunset) {
    // Full on 2026 January 3, 10:03 UTC, and 2026 May 31, 08:45 UTC.
    for (const DateTime& date : {DateTime{2026, 1, 3, 10, 3}, DateTime{2026, 5, 31, 8, 45}}) {
        const Ephemerides sky = Compute(date, {48, 0}, Zone(0));
        EXPECT_NEAR(Minutes(sky.MoonRise).value_or(-999), Minutes(sky.SunSet).value_or(999), 75);
        EXPECT_NEAR(std::stod(sky.MoonAge), 29.53 / 2, 0.8) << sky.MoonAge;
    }
}

TEST(Ephemerides, MoonAgeText) {
    // New on 2000 January 6, 18:14 UTC. Near perigee on January 19 and apogee on January 4, 2000.
    EXPECT_LT(std::stod(Compute({2000, 1, 7, 6, 0}, Tula, Zone(0)).MoonAge), 1.0);
    EXPECT_GT(std::stod(Compute({2000, 1, 6, 6, 0}, Tula, Zone(0)).MoonAge), 29.0);
    const std::string age = Compute({2000, 1, 19, 0, 0}, Tula, Zone(0)).MoonAge;
    const std::size_t distance = age.find("; dist: ");
    ASSERT_NE(distance, std::string::npos);
    EXPECT_NEAR(std::stod(age.substr(distance + 8)), 360, 8) << age;
    EXPECT_EQ(age.substr(age.size() - 4), " Kkm");
}

TEST(Ephemerides, ZonesShiftByTheBiasInForce) {
    const DateTime now{2026, 4, 10, 9, 30, 0};
    TimeZone summer{true, -60, -5, -60, true, std::string("MESZ\0\0 ", 7)};
    const Ephemerides sky = Compute(now, Tula, summer);
    EXPECT_EQ(sky.TimeZoneName, "MESZ");
    EXPECT_EQ(sky.SunRise, Compute(now, Tula, Zone(-120)).SunRise);
    summer.daylight = false;
    EXPECT_EQ(Compute(now, Tula, summer).SunRise, Compute(now, Tula, Zone(-60)).SunRise);
    EXPECT_EQ(BiasInForce(summer), -60) << "the bias of standard time stands alone";

    TimeZone unknown = Zone(-180);
    unknown.known = false;
    EXPECT_EQ(Compute(now, Tula, unknown).TimeZoneName, "Unknown...");
    EXPECT_EQ(Compute(now, Tula, unknown).MoonSet, Compute(now, Tula, Zone(0)).MoonSet);
}

TEST(Ephemerides, TextsFollowLocaleAndDecimalSign) {
    LocaleStrings locale;
    locale.SetLoaded(true);
    locale.Set(44, "Abstand:");
    locale.Set(45, "Unbekannt");
    locale.Set(47, "Polarnacht");
    locale.Set(55, "Tkm");
    Ephemerides sky;
    sky.SunSet = sky.SunSetAz = "before";
    ComputeEphemerides({2026, 12, 21, 12, 0, 0}, {75, 20}, TimeZone(), locale, ",", sky);
    EXPECT_EQ(sky.SunRise, "Polarnacht");
    EXPECT_EQ(sky.SunSet + sky.SunSetAz, "beforebefore") << "where there is no answer";
    EXPECT_EQ(sky.TimeZoneName, "Unbekannt");
    EXPECT_NE(sky.MoonAge.find("; Abstand: "), std::string::npos);
    EXPECT_EQ(sky.MoonAge.substr(sky.MoonAge.size() - 4), " Tkm");
    EXPECT_EQ(sky.MoonAge.find('.'), std::string::npos);
}

TEST(Ephemerides, AnyPlaceAndYearIsSurvived) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double latitude : {-1e308, -91.0, -90.0, 89.99999999, 0.0, infinity, std::nan("")}) {
        for (const double longitude : {-1e308, -180.0, 720.0, infinity, std::nan("")}) {
            for (const int year : {-4712, 0, 1582, 1583, 9999}) {
                const Ephemerides sky = Compute({year, 3, 20}, {latitude, longitude}, Zone(-720));
                EXPECT_FALSE(sky.MoonAge.empty());
            }
        }
    }
}

TEST(JulianDay, KnownDates) {
    EXPECT_EQ(JulianDayOf(0, {2000, 1, 1, 12, 0, 0}).date, 2451545);
    EXPECT_EQ(JulianDayOf(0, {2000, 1, 1, 12, 0, 0}).centuries, 0);
    EXPECT_EQ(JulianDayOf(-180, {2000, 1, 1, 15, 0, 0}).date, 2451545);
    // Examples of Meeus, "Astronomical Algorithms", chapter 7.
    EXPECT_NEAR(JulianDayOf(0, {1957, 10, 4, 19, 26, 24}).date, 2436116.31, 1e-8);
    EXPECT_EQ(JulianDayOf(0, {333, 1, 27, 12, 0, 0}).date, 1842713);
    EXPECT_EQ(JulianDayOf(0, {1988, 6, 19, 12, 0, 0}).date, 2447332);
    EXPECT_EQ(JulianDayOf(0, {1600, 12, 31, 0, 0, 0}).date, 2305812.5);
    EXPECT_EQ(JulianDayOf(0, {1600, 12, 31, 0, 0, 0}).wholeDay, 2305812);
    EXPECT_EQ(JulianDayOf(0, {1583, 1, 1}).date - JulianDayOf(0, {1582, 12, 31}).date, 1 - 10)
        << "the calendar changes with the year";
}

} // namespace
} // namespace quorvane
