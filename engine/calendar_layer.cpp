#include "engine/calendar_layer.h"

#include "calendar/painter.h"

namespace quorvane {

Composition::CalendarPainter CalendarLayer(const GlobalRecord& record, Clock& clock, Drawing& drawing,
                                           Store& store, System& system, const LocaleStrings& locale) {
    return [&](Surface& canvas) {
        const DateTime now = clock.Now();
        return PaintCalendar(record, drawing, canvas,
                             {now, clock.ZoneAt(now), locale, ReadRegionalValues(store, system)});
    };
}

} // namespace quorvane
