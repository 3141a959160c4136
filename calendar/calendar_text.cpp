#include "calendar/calendar_text.h"

#include "calendar/dates.h"
#include "core/text.h"

namespace quorvane {
namespace {

constexpr int SaturdayColumn = 6;
constexpr int SundayColumn = 7;

class Describer {
  public:
    Describer(const GlobalRecord& record, const CalendarInputs& inputs)
        : record_(record)
        , inputs_(inputs)
        , presentWeek_(WeekText(inputs.now)) {}

    CalendarText Describe() const {
        CalendarText text;
        text.caption = {Caption(), record_.Caption_Color};
        text.shortCaption = SystemCaption();
        text.systemDayNames = inputs_.regional.systemNames.days;
        if (record_.ShowWeekNumbers) {
            text.weekLine = {record_.Week_Str_Name + presentWeek_, record_.Week_Caption_Color};
            text.countedWeekLine = record_.Week_Str_Name + std::to_string(WeeksSinceNewYear(inputs_.now));
        }
        text.weekMark = WeekMark(presentWeek_);
        for (int day = 1; day <= 7; ++day)
            text.dayNames[static_cast<std::size_t>(day - 1)] = DayHeading(day);
        const int first = record_.ShowPreviousMonth > 0 ? -1 : 0;
        const int last = record_.ShowNextMonth > 0 ? 1 : 0;
        for (int offset = first; offset <= last; ++offset)
            text.months.push_back(Month(offset, last > first));
        if (record_.Calculate_Ephemeredes >= 1 && !inputs_.preview) text.sky = DescribeSky(record_, inputs_);
        return text;
    }

  private:
    std::string WeekText(const DateTime& date) const {
        return inputs_.preview ? std::to_string(WeeksSinceNewYear(date))
                               : GetWeekNumber(date.day, date.month, date.year);
    }

    static std::string WeekMark(const std::string& week) { return "[" + week + "] "; }

    std::string CaptionOf(const std::string& month, const std::string& weekday) const {
        return month + ", " + UpperFirst(weekday) + " " + std::to_string(inputs_.now.day) + ", " +
               std::to_string(inputs_.now.year);
    }
    std::string Caption() const {
        const DateTime& now = inputs_.now;
        return CaptionOf(MonthName(now.month, false, inputs_.locale),
                         DayName(SystemWeekday(now, inputs_.regional), true, SystemFirstDay, inputs_.locale,
                                 inputs_.regional));
    }
    std::string SystemCaption() const {
        const DateTime& now = inputs_.now;
        const DateNames& names = inputs_.regional.systemNames;
        const int weekday = WeekdayMondayFirst(now.year, now.month, now.day);
        return CaptionOf(names.months[static_cast<std::size_t>(now.month - 1)],
                         names.days[static_cast<std::size_t>(weekday - 1)]);
    }

    // The names roll with the system's first day of the week while the columns stay Monday first.
    TextLine DayHeading(int column) const {
        Color color = record_.Caption_Color;
        if (column == SaturdayColumn) color = WeekendHeading(record_.Holiday_Color_Minor);
        if (column == SundayColumn) color = WeekendHeading(record_.Holiday_Color);
        return {DayName(column, true, SystemFirstDay, inputs_.locale, inputs_.regional), color};
    }
    Color WeekendHeading(Color color) const {
        return color == record_.Workday_Color ? record_.Caption_Color : color;
    }

    MonthText Month(int offset, bool withHeading) const {
        DateTime date{inputs_.now.year, inputs_.now.month + offset, 1};
        if (date.month < 1) date = {date.year - 1, 12, 1};
        if (date.month > 12) date = {date.year + 1, 1, 1};

        MonthText month;
        if (withHeading)
            month.heading = {"[" + MonthName(date.month, false, inputs_.locale) + ", " +
                                 std::to_string(date.year) + "]",
                             offset == 0 ? record_.Week_Caption_Color : record_.Caption_Color};
        const int days = DaysInMonth(date.month, date.year);
        int column = WeekdayMondayFirst(date.year, date.month, 1);
        for (; date.day <= days; ++date.day) {
            if (column > SundayColumn) column = 1;
            if (date.day == 1 || column == 1) month.weeks.push_back(Week(date, column));
            month.weeks.back().days.push_back({date.day, DayColor(date, column, offset == 0)});
            ++column;
        }
        return month;
    }

    WeekRow Week(const DateTime& firstDay, int firstColumn) const {
        WeekRow row;
        row.firstColumn = firstColumn;
        if (record_.ShowAllWeekNumbers > 0) {
            const std::string week = WeekText(firstDay);
            row.weekMark = {WeekMark(week),
                            week == presentWeek_ ? record_.Week_Caption_Color : record_.WeekNumberColor};
        }
        return row;
    }

    Color DayColor(const DateTime& date, int column, bool presentMonth) const {
        Color color = column < SaturdayColumn    ? record_.Workday_Color
                      : column == SaturdayColumn ? record_.Holiday_Color_Minor
                                                 : record_.Holiday_Color;
        const bool today = presentMonth && date.day == inputs_.now.day;
        if (today) color = record_.CurrentDay_Color;
        for (const CustomDay& custom : record_.Custom_Days) {
            if (custom.Day == date.day && custom.Month == date.month)
                color = today ? record_.CurrentDay_Color | custom.color : custom.color;
        }
        return color;
    }

    const GlobalRecord& record_;
    const CalendarInputs& inputs_;
    std::string presentWeek_;
};

} // namespace

CalendarText DescribeCalendar(const GlobalRecord& record, const CalendarInputs& inputs) {
    return Describer(record, inputs).Describe();
}

} // namespace quorvane
