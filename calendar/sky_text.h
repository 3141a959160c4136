#pragma once

#include "calendar/ephemerides.h"
#include "calendar/painter.h"
#include "config/global_record.h"
#include "core/color.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

struct TextLine {
    std::string text;
    Color color = 0;
};

// The block of Sun and Moon below the calendar, line by line.
struct SkyText {
    std::vector<TextLine> sun;
    std::optional<std::vector<TextLine>> moon; // missing where the Moon is not wanted
};

SkyText DescribeSky(const GlobalRecord& record, const CalendarInputs& inputs);

// The same of ephemerides that are known already.
SkyText DescribeSky(const GlobalRecord& record, const LocaleStrings& locale, const Ephemerides& sky);

} // namespace quorvane
