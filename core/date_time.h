#pragma once

#include <compare>

namespace quorvane {

// A local date and time of the proleptic Gregorian calendar, as the user's clock shows it.
struct DateTime {
    int year = 1899;
    int month = 12; // 1 to 12
    int day = 30;   // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;

    auto operator<=>(const DateTime&) const = default;
};

constexpr bool IsThisLeapYear(int year) {
    return year % 100 == 0 ? year % 400 == 0 : year % 4 == 0;
}

// A month that no year has counts as one of 31 days.
constexpr int DaysInMonth(int month, int year) {
    switch (month) {
    case 2:
        return IsThisLeapYear(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}

// Days since 1970-01-01; negative before it.
// Source: H. Hinnant, "chrono-Compatible Low-Level Date Algorithms", days_from_civil.
constexpr long DaysFromCivil(int year, int month, int day) {
    year -= month <= 2;
    const long era = (year >= 0 ? year : year - 399) / 400;
    const long yearOfEra = year - era * 400;
    const long dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

// The date `days` after 1970-01-01, at midnight. The inverse of DaysFromCivil.
constexpr DateTime CivilFromDays(long days) {
    days += 719468;
    const long era = (days >= 0 ? days : days - 146096) / 146097;
    const long dayOfEra = days - era * 146097;
    const long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int month = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    const int year = static_cast<int>(yearOfEra + era * 400) + (month <= 2 ? 1 : 0);
    return {year, month, static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1)};
}

// 1 for Monday to 7 for Sunday.
constexpr int WeekdayMondayFirst(int year, int month, int day) {
    const long days = DaysFromCivil(year, month, day) + 3; // 1970-01-01 was a Thursday
    return static_cast<int>(days >= 0 ? days % 7 : (days % 7 + 7) % 7) + 1;
}

// Seconds since midnight, with the fraction of a second.
constexpr double SecondsOfDay(const DateTime& time) {
    return time.hour * 3600 + time.minute * 60 + time.second + time.millisecond / 1000.0;
}

} // namespace quorvane
