#include "calendar/month_sheet.h"

#include "calendar/dates.h"

#include <cstdlib>

namespace quorvane {
namespace {

constexpr int DaysInWeek = 7;
constexpr std::size_t ColumnWidth = 4;
constexpr const char* Captions[] = {"January, ",   "February, ", "March, ",    "April, ",
                                    "May, ",       "June, ",     "July, ",     "August, ",
                                    "September, ", "October, ",  "November, ", "December, "};
constexpr const char* Weekdays[] = {"Mon", "Tue", "Wen", "Thu", "Fri", "Sat", "Sun"};
constexpr const char* Heading = "Mon Tue Wen Thu Fri Sat Sun  WN";
constexpr const char* DashLine = "--------------------------------";

// 1 for Monday to 7, reckoned from the year's first Monday.
int ColumnOf(int day, int month, int year) {
    const int sinceMonday = GetDayNumber(day, month, year) - GetFirstMondayOfYear(year);
    return (sinceMonday % DaysInWeek + DaysInWeek) % DaysInWeek + 1;
}

std::string RightAligned(const std::string& text) {
    return std::string(ColumnWidth - text.size(), ' ') + text;
}

std::string LineOf(const SheetWeek& week) {
    std::string line(ColumnWidth * static_cast<std::size_t>(week.firstColumn - 1), ' ');
    for (const int day : week.days)
        line += RightAligned(std::to_string(day));
    line.resize(ColumnWidth * DaysInWeek, ' ');
    return line + "[" + week.number + "]";
}

} // namespace

std::optional<MonthSheet> DescribeMonth(int day, int month, int year) {
    if (month < 1 || month > 12 || day < 1 || day > DaysInMonth(month, year)) return std::nullopt;
    MonthSheet sheet{day, month, year, Captions[month - 1] + std::to_string(year), {}, 0, {}};
    sheet.weekday = Weekdays[ColumnOf(day, month, year) - 1];
    sheet.dayOfYear = GetDayNumber(day, month, year);
    for (int at = 1; at <= DaysInMonth(month, year); ++at) {
        const int column = ColumnOf(at, month, year);
        if (at == 1 || column == 1) sheet.weeks.push_back({column, {}, GetWeekNumber(at, month, year)});
        sheet.weeks.back().days.push_back(at);
    }
    return sheet;
}

std::vector<std::string> SheetLines(const MonthSheet& month) {
    std::vector<std::string> lines{Heading, DashLine};
    for (const SheetWeek& week : month.weeks)
        lines.push_back(LineOf(week));
    return lines;
}

std::int64_t CalculeDiffrences(const DateTime& one, const DateTime& other) {
    return std::abs(DaysFromCivil(one.year, one.month, one.day) -
                    DaysFromCivil(other.year, other.month, other.day));
}

std::optional<DateTime> PlusDays(const DateTime& date, std::int64_t days) {
    constexpr std::int64_t First = DaysFromCivil(1, 1, 1);
    constexpr std::int64_t Last = DaysFromCivil(9999, 12, 31);
    if (std::abs(days) > Last - First) return std::nullopt;
    const std::int64_t sum = DaysFromCivil(date.year, date.month, date.day) + days;
    if (sum < First || sum > Last) return std::nullopt;
    return CivilFromDays(static_cast<long>(sum));
}

} // namespace quorvane
