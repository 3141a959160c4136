#pragma once

#include "core/date_time.h"
#include "core/locale_strings.h"
#include "platform/system.h"

#include <optional>
#include <string>

namespace quorvane {

class Store;

// The program's own date rules. They are pure and have no lower bound of the year.

// What the person's system says about dates and numbers.
struct RegionalValues {
    int iFirstDayOfWeek = 0;               // 0 Monday to 6 Sunday
    std::optional<std::string> sShortDate; // "dd.MM.yyyy"; missing where the system has none
    std::string sDecimal = ".";
    DateNames systemNames; // which the calendar's block is measured with, whatever names are printed
};
// From "Control Panel\International" of the current user, where what is missing keeps the presets above, and
// the system's own names.
RegionalValues ReadRegionalValues(Store& store, System& system);

// "Jan" or "January" by the locale's words where it has them; empty for a month outside 1 to 12.
std::string MonthName(int month, bool abbreviate, const LocaleStrings& locale);

// The selector of DayName that stands for the system's first day of the week.
inline constexpr int SystemFirstDay = 7;

// The name of day `index` (1 to 7) of a week that begins on day `firstDay` (0 Monday to 6 Sunday, or
// SystemFirstDay): "Wd" or "Wednesday". Other values of both are folded into the week.
std::string DayName(int index, bool abbreviate, int firstDay, const LocaleStrings& locale,
                    const RegionalValues& regional);

// Day, month and year in the order of the system's short date, as plain numbers without padding.
std::string BuildDateStr(int day, int month, int year, const RegionalValues& regional);

// The day of January on which the first Monday falls, 1 to 7.
int GetFirstMondayOfYear(int year);

// The day of the year, from 1. Days and months that the year does not have count on.
int GetDayNumber(int day, int month, int year);

// Weeks begin on Monday. The days before the first Monday are week 1 where that Monday is January 2, 3 or 4;
// where it is the 5th, 6th or 7th they belong to the last week of the year before. December never rolls over
// into week 1. The text has two characters, "01" to "54" (a leap year that begins on a Sunday).
std::string GetWeekNumber(int day, int month, int year);
int GetLastWeekNumberOfYear(int year);

// 1 to 7, counted from the system's first day of the week.
int SystemWeekday(const DateTime& date, const RegionalValues& regional);

// How many Mondays lie after January 1 of the date's year, up to and including the date.
int WeeksSinceNewYear(const DateTime& date);

} // namespace quorvane
