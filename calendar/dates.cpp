#include "calendar/dates.h"

#include "config/registry.h"
#include "config/settings.h"
#include "core/locale_ids.h"
#include "core/numbers.h"
#include "core/run_time_error.h"
#include "core/text.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace quorvane {
namespace {

constexpr std::array<std::string_view, 12> ShortMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<std::string_view, 12> FullMonths = {"January",   "February", "March",    "April",
                                                         "May",       "June",     "July",     "August",
                                                         "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> ShortDays = {"Mo", "Tu", "Wd", "Th", "Fr", "Sa", "Su"};
constexpr std::array<std::string_view, 7> FullDays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                      "Friday", "Saturday", "Sunday"};

std::string NameOr(const LocaleStrings& locale, int id, std::string_view builtIn) {
    const std::string_view name = locale.Loaded() ? locale.Text(id) : std::string_view();
    return std::string(Trim(name).empty() ? builtIn : name);
}

// 1 where the days before the first Monday make a week of their own, which is counted in front.
int WeekInFront(int firstMonday) {
    return firstMonday == 1 || firstMonday > 4 ? 0 : 1;
}

int WeekOfDay(int dayNumber, int firstMonday) {
    return static_cast<int>(
        std::floor((dayNumber - firstMonday + 1) / 7.0 + WeekInFront(firstMonday) + 0.999));
}

// Days by which the centuries without a leap day move the weekday, 1 standing for 1900 itself. Years after
// 1900 count the centuries up to themselves, earlier ones those behind them.
std::int64_t CenturyCorrection(std::int64_t year) {
    std::int64_t correction = 1;
    const auto count = [&](std::int64_t century) { correction -= century % 400 != 0 ? 1 : 0; };
    if (year >= 1900) {
        for (std::int64_t century = 1900; century <= year; century += 100)
            count(century);
    } else {
        for (std::int64_t century = 1900; century >= year + 1; century -= 100)
            count(century);
    }
    return correction;
}

} // namespace

RegionalValues ReadRegionalValues(Store& store, System& system) {
    RegionalValues values;
    values.systemNames = system.ShortDateNames();
    const auto read = [&store](const char* name, std::string& text) {
        return RegReadValue(store, "", Hive::CurrentUser, "Control Panel\\International", key_access::Read,
                            name, text) == 1;
    };
    std::string text;
    if (read("iFirstDayOfWeek", text))
        PassOver([&] { values.iFirstDayOfWeek = static_cast<int>(std::fmod(LeadingNumber(text), 7)); });
    text.clear();
    if (read("sShortDate", text)) values.sShortDate = text;
    values.sDecimal = DecimalSign(store);
    return values;
}

std::string MonthName(int month, bool abbreviate, const LocaleStrings& locale) {
    if (month < 1 || month > 12) return {};
    const auto place = static_cast<std::size_t>(month - 1);
    return abbreviate ? NameOr(locale, locale_id::ShortMonth + month, ShortMonths[place])
                      : NameOr(locale, locale_id::FullMonth + month, FullMonths[place]);
}

std::string DayName(int index, bool abbreviate, int firstDay, const LocaleStrings& locale,
                    const RegionalValues& regional) {
    const std::int64_t first = firstDay == SystemFirstDay ? regional.iFirstDayOfWeek : firstDay;
    const std::int64_t position = std::abs(std::int64_t{index} - 1) % 7 + 1;
    const int day = static_cast<int>((position + std::abs(first) % 7 - 1) % 7);
    const auto place = static_cast<std::size_t>(day);
    return abbreviate ? NameOr(locale, locale_id::ShortDay + day, ShortDays[place])
                      : NameOr(locale, locale_id::FullDay + day, FullDays[place]);
}

std::string BuildDateStr(int day, int month, int year, const RegionalValues& regional) {
    const std::string dayText = std::to_string(day);
    const std::string monthText = std::to_string(month);
    const std::string yearText = std::to_string(year);
    if (!regional.sShortDate) return dayText + "." + monthText + "." + yearText;
    std::string text = *regional.sShortDate;
    text = Replace(Replace(text, "dd", dayText), "d", dayText);
    text = Replace(Replace(text, "MM", monthText), "M", monthText);
    return Replace(Replace(text, "yyyy", yearText), "yy", yearText);
}

int GetFirstMondayOfYear(int year) {
    const std::int64_t sinceBase = year >= 1900 ? std::int64_t{year} - 1900 : 1899 - std::int64_t{year};
    const std::int64_t leapDays = sinceBase / 4 + CenturyCorrection(year);
    const std::int64_t shift = (sinceBase % 7 + leapDays) % 7;
    const std::int64_t weekday = year >= 1900 ? shift : 6 - shift;
    const std::int64_t january = IsThisLeapYear(year) ? (3 + 6) % 7 : 3;
    for (int day = 1; day <= 7; ++day)
        if (((3 + day) % 7 + (january + weekday) % 7) % 7 == 0) return day;
    return 1;
}

int GetDayNumber(int day, int month, int year) {
    int number = day;
    for (int before = 1; before < month && before <= 12; ++before)
        number += DaysInMonth(before, year);
    return number;
}

int GetLastWeekNumberOfYear(int year) {
    return WeekOfDay(IsThisLeapYear(year) ? 366 : 365, GetFirstMondayOfYear(year));
}

std::string GetWeekNumber(int day, int month, int year) {
    int week = WeekOfDay(GetDayNumber(day, month, year), GetFirstMondayOfYear(year));
    if (week == 0) week = GetLastWeekNumberOfYear(year - 1);
    return (week < 10 ? "0" : "") + std::to_string(week);
}

int SystemWeekday(const DateTime& date, const RegionalValues& regional) {
    const int mondayFirst = WeekdayMondayFirst(date.year, date.month, date.day);
    const int first = std::abs(regional.iFirstDayOfWeek % 7);
    return (mondayFirst - 1 - first + 7) % 7 + 1;
}

int WeeksSinceNewYear(const DateTime& date) {
    const int newYear = WeekdayMondayFirst(date.year, 1, 1);
    return (GetDayNumber(date.day, date.month, date.year) + newYear - 2) / 7;
}

} // namespace quorvane
