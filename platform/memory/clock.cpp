#include "platform/memory/clock.h"

namespace quorvane {

namespace {

constexpr std::int64_t MillisecondsOfDay = 86'400'000;

} // namespace

DateTime MemoryClock::Now() {
    std::int64_t days = wall_ / MillisecondsOfDay;
    std::int64_t rest = wall_ % MillisecondsOfDay;
    if (rest < 0) {
        rest += MillisecondsOfDay;
        --days;
    }
    DateTime now = CivilFromDays(static_cast<long>(days));
    now.hour = static_cast<int>(rest / 3'600'000);
    now.minute = static_cast<int>(rest / 60'000 % 60);
    now.second = static_cast<int>(rest / 1000 % 60);
    now.millisecond = static_cast<int>(rest % 1000);
    return now;
}

void MemoryClock::SetNow(const DateTime& local) {
    const std::int64_t seconds = (local.hour * 60LL + local.minute) * 60 + local.second;
    wall_ = DaysFromCivil(local.year, local.month, local.day) * MillisecondsOfDay + seconds * 1000 +
            local.millisecond;
}

void MemoryClock::Advance(std::int64_t milliseconds) {
    MoveWall(milliseconds);
    MoveTicks(milliseconds);
}

} // namespace quorvane
