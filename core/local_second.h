#pragma once

#include "core/date_time.h"

#include <cstdint>

namespace quorvane {

// Seconds of the local calendar since 1970-01-01 00:00:00. Every day has 86,400 of them.
using LocalSecond = std::int64_t;

inline constexpr LocalSecond SecondsPerDay = 86'400;

// Without its milliseconds.
constexpr LocalSecond LocalSecondOf(const DateTime& time) {
    return DaysFromCivil(time.year, time.month, time.day) * SecondsPerDay + time.hour * 3600 +
           time.minute * 60 + time.second;
}

constexpr DateTime DateTimeOf(LocalSecond second) {
    const LocalSecond ofDay = (second % SecondsPerDay + SecondsPerDay) % SecondsPerDay;
    DateTime time = CivilFromDays(static_cast<long>((second - ofDay) / SecondsPerDay));
    time.hour = static_cast<int>(ofDay / 3600);
    time.minute = static_cast<int>(ofDay / 60 % 60);
    time.second = static_cast<int>(ofDay % 60);
    return time;
}

} // namespace quorvane
