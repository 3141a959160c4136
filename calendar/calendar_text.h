#pragma once

#include "calendar/painter.h"
#include "calendar/sky_text.h"
#include "config/global_record.h"
#include "core/color.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

// The calendar as text, before it has a place or a size: measuring and painting both walk this.

struct DayText {
    int day = 0;
    Color color = 0;
};

// One printed line of a month: the days of a week, Monday first.
struct WeekRow {
    int firstColumn = 1; // 1 for Monday to 7
    std::vector<DayText> days;
    TextLine weekMark; // "[47] " in front of the first day; no text where it is not shown
};

struct MonthText {
    TextLine heading; // no text where the month stands alone
    std::vector<WeekRow> weeks;
};

struct CalendarText {
    TextLine caption;            // "November, Su 15, 2026"
    std::string shortCaption;    // the same by the system's own short names, whose width counts
    TextLine weekLine;           // "Week #45", or no text: an empty line
    std::string countedWeekLine; // the same by the weeks since New Year, whose width counts
    std::array<TextLine, 7> dayNames;
    std::array<std::string, 7> systemDayNames; // the system's own, whose width counts
    std::string weekMark; // "[45] " of the present week, by whose width things are shifted
    std::vector<MonthText> months;
    std::optional<SkyText> sky;
};

CalendarText DescribeCalendar(const GlobalRecord& record, const CalendarInputs& inputs);

} // namespace quorvane
