#include "calendar/dates.h"
#include "cli/batch.h"
#include "cli/commands.h"
#include "commands/json.h"

#include <ostream>

namespace quorvane::cli {
namespace {

int TellWeek(const std::string& input, bool json, std::ostream& out) {
    const auto date = ParseDate(input);
    if (!date) throw RefusedInput("no date YYYY-MM-DD: \"" + input + "\"");
    const std::string week = GetWeekNumber(date->day, date->month, date->year);
    const int day = GetDayNumber(date->day, date->month, date->year);
    const int firstMonday = GetFirstMondayOfYear(date->year);
    const int lastWeek = GetLastWeekNumberOfYear(date->year);
    const bool leap = IsThisLeapYear(date->year);
    if (json) {
        out << JsonObject()
                   .Add("date", input)
                   .Add("week", week)
                   .Add("day", day)
                   .Add("first_monday", firstMonday)
                   .Add("last_week", lastWeek)
                   .Add("leap", leap)
                   .Text();
    } else {
        out << input << ": week " << week << " of " << lastWeek << ", day " << day
            << ", first Monday on January " << firstMonday << (leap ? ", leap year" : ", common year");
    }
    out << '\n';
    return Done;
}

} // namespace

Command WeekCommand() {
    return {"week", "week [--json] YYYY-MM-DD|-", {}, {}, [](const Arguments& arguments, Streams& streams) {
                return ForEachInput(
                    arguments, arguments.OnlyInput("a date"), "date", streams,
                    [&](const std::string& date) { return TellWeek(date, arguments.Json(), streams.out); });
            }};
}

} // namespace quorvane::cli
