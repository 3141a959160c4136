#include "platform/linux/base/clock.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

struct ZoneCase {
    const char* zone;
    DateTime local;
    int inForce; // minutes to add to local time for UTC
    int bias;
    int daylightBias;
    bool daylight;
    const char* name;
};

// Offsets from the public record of each zone's rules.
const ZoneCase zoneCases[] = {
    {"Europe/Berlin", {2024, 3, 31, 1, 59, 59}, -60, -60, -60, false, "CET"},
    {"Europe/Berlin", {2024, 3, 31, 3}, -120, -60, -60, true, "CEST"},
    {"America/New_York", {2024, 7, 4, 9}, 240, 300, -60, true, "EDT"},
    {"Australia/Lord_Howe", {2024, 1, 1, 0}, -660, -630, -30, true, "+11"},
    {"Europe/Moscow", {2010, 7, 1, 0}, -240, -180, -60, true, "MSD"},
    {"Europe/Moscow", {2024, 7, 1, 0}, -180, -180, 0, false, "MSK"},
    {"Asia/Kolkata", {2024, 7, 1, 0}, -330, -330, 0, false, "IST"},
};

class LinuxClockTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const char* zone = std::getenv("TZ");
        before_ = zone ? zone : "";
    }
    void TearDown() override {
        before_.empty() ? unsetenv("TZ") : setenv("TZ", before_.c_str(), 1);
        tzset();
    }
    std::string before_;
};

TEST_F(LinuxClockTest, TellsTheZoneInForceForADateAndItsTwoBiases) {
    LinuxClock clock;
    for (const ZoneCase& row : zoneCases) {
        SCOPED_TRACE(std::string(row.zone) + " month " + std::to_string(row.local.month));
        setenv("TZ", row.zone, 1);
        const TimeZone zone = clock.ZoneAt(row.local);
        EXPECT_TRUE(zone.known);
        EXPECT_EQ(zone.bias + (zone.daylight ? zone.daylightBias : zone.standardBias), row.inForce);
        EXPECT_EQ(zone.bias, row.bias);
        EXPECT_EQ(zone.daylightBias, row.daylightBias);
        EXPECT_EQ(zone.daylight, row.daylight);
        EXPECT_EQ(zone.name, row.name);
    }
}

TEST_F(LinuxClockTest, ANameOfNoZoneIsAnUnknownZone) {
    LinuxClock clock;
    for (const char* name : {"Nowhere/Nothing", "XY", "Abc", ":/no/such/file", "<+03"}) {
        setenv("TZ", name, 1);
        const TimeZone zone = clock.ZoneAt({2024, 7, 1, 12});
        EXPECT_FALSE(zone.known) << name;
        EXPECT_EQ(zone.bias, 0);
    }
    for (const char* name : {"", ":Europe/Berlin", "UTC", "<+03>-3", "CET-1CEST,M3.5.0,M10.5.0"}) {
        setenv("TZ", name, 1);
        EXPECT_TRUE(clock.ZoneAt({2024, 7, 1, 12}).known) << name;
    }
}

TEST_F(LinuxClockTest, FollowsAZoneThatChangesWhileTheProgramRuns) {
    LinuxClock clock;
    setenv("TZ", "UTC0", 1);
    const DateTime utc = clock.Now();
    setenv("TZ", "XXX-10", 1);
    const DateTime east = clock.Now();
    const long hours =
        (DaysFromCivil(east.year, east.month, east.day) - DaysFromCivil(utc.year, utc.month, utc.day)) * 24 +
        east.hour - utc.hour;
    EXPECT_GE(hours, 10);
    EXPECT_LE(hours, 11); // the hour may have turned between the two
}

} // namespace
} // namespace quorvane
