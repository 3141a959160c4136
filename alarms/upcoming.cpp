#include "alarms/upcoming.h"

#include "alarms/scheduler.h"
#include "platform/shared/seeded_random.h"

namespace quorvane {
namespace {

constexpr int TicksPerSecond = 1000 / AlarmScheduler::TickMilliseconds;

// Switches off what cannot be foretold, and tells which.
std::vector<std::int32_t> LeaveOut(OneBased<AlarmRecord>& alarms, AlarmScheduler& scheduler) {
    std::vector<std::int32_t> leftOut;
    for (std::int32_t number = 1; number <= alarms.Count(); ++number) {
        if (!IsLive(alarms[number]) || scheduler.CanForetell(number)) continue;
        alarms[number].Active = false;
        leftOut.push_back(number);
    }
    return leftOut;
}

} // namespace

UpcomingFirings ForetellFirings(OneBased<AlarmRecord> alarms, const DateTime& from, const DateTime& until,
                                std::size_t most) {
    SeededRandom random;
    AlarmScheduler scheduler(alarms, random);
    UpcomingFirings upcoming;
    upcoming.leftOut = LeaveOut(alarms, scheduler);
    const LocalSecond begin = LocalSecondOf(from);
    const LocalSecond end = LocalSecondOf(until) + 1;
    for (LocalSecond second = begin; upcoming.firings.size() < most; ++second) {
        const std::optional<LocalSecond> next = scheduler.NextFiring(second, end);
        if (!next) break;
        second = *next;
        for (int half = 0; half < TicksPerSecond; ++half) {
            const std::int64_t tick = (second - begin) * TicksPerSecond + half;
            const DateTime at = DateTimeOf(second);
            scheduler.Tick(
                [&] { return at; },
                [&](std::int32_t alarm) {
                    if (upcoming.firings.size() < most)
                        upcoming.firings.push_back({tick, at, alarm, alarms[alarm].CurrentExecCount});
                });
        }
    }
    return upcoming;
}

} // namespace quorvane
