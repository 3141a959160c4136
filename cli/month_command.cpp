#include "calendar/month_sheet.h"
#include "cli/commands.h"
#include "cli/moment.h"

#include <cstdio>
#include <ostream>

namespace quorvane::cli {
namespace {

JsonObject ObjectOf(const MonthSheet& month) {
    return JsonObject()
        .Add("date", DateText({month.year, month.month, month.day}))
        .Add("caption", month.caption)
        .Add("weekday", month.weekday)
        .Add("day_of_year", month.dayOfYear)
        .Add("lines", SheetLines(month));
}

void Print(const MonthSheet& month, std::ostream& out) {
    out << month.caption << "; " << month.weekday << " (" << month.dayOfYear << ")\n";
    for (const std::string& line : SheetLines(month))
        out << line << '\n';
}

// Year, month and day of "YYYY-MM-DD", whether or not there is such a day.
MonthSheet MonthOf(const std::string& text) {
    int year = 0;
    int month = 0;
    int day = 0;
    int length = 0;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d%n", &year, &month, &day, &length) != 3 || text.size() != 10 ||
        length != 10 || year < 0)
        throw RefusedInput("no date YYYY-MM-DD: \"" + text + "\"");
    const auto sheet = DescribeMonth(day, month, year);
    if (!sheet) throw RefusedInput(IllegalDay);
    return *sheet;
}

int TellMonth(const Arguments& arguments, Streams& streams) {
    const DateTime today = MomentOf(arguments);
    const MonthSheet month = arguments.Inputs().empty() ? *DescribeMonth(today.day, today.month, today.year)
                                                        : MonthOf(arguments.OnlyInput("a date"));
    if (arguments.Json()) {
        streams.out << ObjectOf(month).Text() << '\n';
    } else {
        Print(month, streams.out);
    }
    return Done;
}

int YearOf(const Arguments& arguments) {
    if (arguments.Inputs().empty()) return MomentOf(arguments).year;
    const std::string& text = arguments.OnlyInput("a year");
    const bool digits = text.size() == 4 && text.find_first_not_of("0123456789") == std::string::npos;
    if (!digits) throw RefusedInput("no year YYYY: \"" + text + "\"");
    return std::stoi(text);
}

int TellYear(const Arguments& arguments, Streams& streams) {
    const int year = YearOf(arguments);
    std::vector<JsonObject> months;
    for (int month = 1; month <= 12; ++month) {
        const MonthSheet sheet = *DescribeMonth(1, month, year);
        months.push_back(ObjectOf(sheet));
        if (arguments.Json()) continue;
        if (month > 1) streams.out << '\n';
        Print(sheet, streams.out);
    }
    if (arguments.Json()) streams.out << JsonObject().Add("year", year).Add("months", months).Text() << '\n';
    return Done;
}

} // namespace

Command MonthCommand() {
    return {"month", "month [--json] [--at T] [YYYY-MM-DD]", {"at"}, {}, TellMonth};
}

Command YearCommand() {
    return {"year", "year [--json] [--at T] [YYYY]", {"at"}, {}, TellYear};
}

} // namespace quorvane::cli
