#include "alarms/scheduler.h"

#include "alarms/criteria/compiler.h"
#include "alarms/upcoming.h"
#include "platform/shared/seeded_random.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace quorvane {
namespace {

constexpr DateTime Start{2026, 11, 30, 23, 58, 0};

AlarmRecord Alarm(const std::string& criterion, double firings) {
    AlarmRecord alarm;
    alarm.Active = true;
    alarm.Criteria = CompileCriteria(criterion).compiled;
    alarm.ExecCount = firings;
    return alarm;
}

OneBased<AlarmRecord> Alarms(const std::vector<AlarmRecord>& records) {
    OneBased<AlarmRecord> alarms;
    for (const AlarmRecord& record : records)
        alarms.Add(record);
    return alarms;
}

class SchedulerTest : public testing::Test {
  protected:
    // One tick at a second behind the start; the numbers of the alarms that fired.
    std::string Tick(LocalSecond second = 0) {
        std::string fired;
        scheduler_.Tick([&] { return DateTimeOf(LocalSecondOf(Start) + second); },
                        [&](std::int32_t alarm) {
                            fired += std::to_string(alarm);
                            if (action_) action_(alarm);
                        });
        return fired;
    }

    OneBased<AlarmRecord> alarms_;
    SeededRandom random_;
    AlarmScheduler scheduler_{alarms_, random_};
    std::function<void(std::int32_t)> action_;
};

TEST_F(SchedulerTest, FiresInOrderUntilTheCountIsUsedUp) {
    alarms_ = Alarms({Alarm("1", 1), Alarm("0", 5), Alarm("hh=23", 2), Alarm("1", 0), Alarm("1", 0.5),
                      Alarm("1", alarm_count::Infinite), Alarm("1/0", 5)});
    alarms_[3].CurrentState = 7;
    alarms_[2].Criteria = std::string("\0 0;1 \0", 7);
    alarms_[6].Active = false;
    EXPECT_EQ(Tick(), "1235");
    EXPECT_EQ(Tick(), "23");
    EXPECT_EQ(Tick(), "2");
    alarms_[6].Active = true;
    EXPECT_EQ(Tick(), "26");
    EXPECT_FALSE(alarms_[1].Active || alarms_[3].Active || alarms_[5].Active);
    EXPECT_TRUE(alarms_[4].Active) << "never fired, never switched off";
    EXPECT_EQ(alarms_[3].LastExecStatus, 0) << "the second firing took the cleared state";
    EXPECT_EQ(alarms_[3].CurrentExecCount, 2);
}

TEST_F(SchedulerTest, GoesOnWhateverAFiringDoes) {
    alarms_ = Alarms({Alarm("1", 3), Alarm("1", 1), Alarm("1", 1)});
    action_ = [&](std::int32_t alarm) {
        if (alarm != 1) throw RunTimeError::FileNotFound();
        if (alarms_[1].CurrentExecCount > 1) return;
        EXPECT_EQ(Tick(), "123") << "a tick inside a box of the first";
    };
    EXPECT_EQ(Tick(), "1");
    action_ = [&](std::int32_t) { alarms_.Clear(); };
    EXPECT_EQ(Tick(), "1");
    EXPECT_EQ(Tick(), "");
}

TEST_F(SchedulerTest, ReadsTheClockAgainBehindAFiring) {
    alarms_ = Alarms({Alarm("ss=0", 9), Alarm("ss=0", 9), Alarm("ss=5", 9)});
    LocalSecond second = 0;
    std::string fired;
    scheduler_.Tick([&] { return DateTimeOf(LocalSecondOf(Start) + second); },
                    [&](std::int32_t alarm) {
                        fired += std::to_string(alarm);
                        second += 5;
                    });
    EXPECT_EQ(fired, "13");
}

// Firings of the plain loop that ticks twice in each second.
std::vector<UpcomingFiring> PlainFirings(OneBased<AlarmRecord> alarms, LocalSecond seconds) {
    SeededRandom random;
    AlarmScheduler scheduler(alarms, random);
    std::vector<UpcomingFiring> firings;
    for (std::int64_t tick = 0; tick < 2 * (seconds + 1); ++tick) {
        const DateTime at = DateTimeOf(LocalSecondOf(Start) + tick / 2);
        scheduler.Tick([&] { return at; },
                       [&](std::int32_t alarm) {
                           firings.push_back({tick, at, alarm, alarms[alarm].CurrentExecCount});
                       });
    }
    return firings;
}

TEST(UpcomingFirings, AreThoseOfTheLoopThatTicksAllTheTime) {
    const std::vector<std::string> parts{"hh=0", "hh<3",    "nn=30",      "nn\\7=2", "ss=0",     "ss>=50",
                                         "dd=1", "wd=2",    "(ss\\13)=5", "mm=12",   "1/(ss-3)", "fst(nn)=4",
                                         "wn=1", "hh+nn=9", "0",          "1"};
    std::mt19937 numbers(5);
    const auto part = [&] { return parts[numbers() % parts.size()]; };
    for (int round = 0; round < 12; ++round) {
        OneBased<AlarmRecord> alarms;
        for (int number = 0; number < 12; ++number) {
            alarms.Add(Alarm(part() + "&" + part() + (number % 3 == 0 ? "^" + part() : ""),
                             number % 4 == 0 ? alarm_count::Infinite : number));
        }
        constexpr LocalSecond Seconds = 4 * 3600;
        const std::vector<UpcomingFiring> plain = PlainFirings(alarms, Seconds);
        EXPECT_EQ(
            ForetellFirings(alarms, Start, DateTimeOf(LocalSecondOf(Start) + Seconds), 1'000'000).firings,
            plain)
            << "round " << round;
    }
}

TEST(UpcomingFirings, EndInTimeAndLeaveOutWhatCannotBeForetold) {
    const OneBased<AlarmRecord> alarms = Alarms({Alarm("rr<2", 9), Alarm("hh=0", 9), Alarm("frst(1)", 9)});
    const UpcomingFirings upcoming = ForetellFirings(alarms, Start, {2026, 12, 1}, 3);
    EXPECT_EQ(upcoming.leftOut, (std::vector<std::int32_t>{1, 3}));
    const std::vector<UpcomingFiring> last{{240, {2026, 12, 1}, 2, 1}, {241, {2026, 12, 1}, 2, 2}};
    EXPECT_EQ(upcoming.firings, last) << "the second of the end belongs to it";
    EXPECT_EQ(ForetellFirings(alarms, Start, {2026, 12, 2}, 3).firings.size(), 3u);
}

} // namespace
} // namespace quorvane
