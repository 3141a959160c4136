#pragma once

#include "calendar/dates.h"
#include "config/global_record.h"
#include "core/date_time.h"
#include "core/locale_strings.h"
#include "platform/clock.h"
#include "platform/drawing.h"

#include <optional>

namespace quorvane {

// What the calendar shows besides the settings.
struct CalendarInputs {
    DateTime now;
    TimeZone zone; // in force for `now`
    const LocaleStrings& locale;
    RegionalValues regional;
    // The preview of the settings dialogue has no block of Sun and Moon and counts its weeks from January 1.
    bool preview = false;
    std::optional<PixelRect> area = {}; // of the canvas that the calendar stands in; unset: all of it
};

// Draws the month calendar and, where the settings want it, the block of Sun and Moon below it on the canvas.
// Does not look at the setting PaintCalendar. Returns the pixels that the block takes on the canvas, which is
// where its background box lies or would lie; a wide block may reach beyond the canvas. Never fails.
PixelRect PaintCalendar(const GlobalRecord& record, const Drawing& drawing, Surface& canvas,
                        const CalendarInputs& inputs);

} // namespace quorvane
