#pragma once

#include "core/date_time.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// A month as the calendar tool prints it, in a fixed pitch: columns of four letters from Monday to Sunday,
// and behind each line its week. The words are English and no locale's, "Wen" among them.

struct SheetWeek {
    int firstColumn = 1; // of the first day: 1 for Monday to 7
    std::vector<int> days;
    std::string number; // by GetWeekNumber
};

struct MonthSheet {
    int day = 0; // the one that stands out
    int month = 0;
    int year = 0;
    std::string caption; // "November, 2026"
    std::string weekday; // of the day, in three letters
    int dayOfYear = 0;
    std::vector<SheetWeek> weeks;
};

// What is said of a day that the month does not have.
inline constexpr const char* IllegalDay = "Illegal Day!";

// Nothing for such a day, nor for a month outside 1 to 12.
std::optional<MonthSheet> DescribeMonth(int day, int month, int year);

// The heading of weekdays, the dash line and a line a week: its days, then its number between brackets.
std::vector<std::string> SheetLines(const MonthSheet& month);

// How many days lie between two dates, in whichever order they come.
std::int64_t CalculeDiffrences(const DateTime& one, const DateTime& other);

// The date that lies `days` behind another, or before it; nothing outside the years 1 to 9999.
std::optional<DateTime> PlusDays(const DateTime& date, std::int64_t days);

} // namespace quorvane
