#include "engine/calendar_layer.h"

#include "calendar/painter.h"
#include "engine/placing.h"

namespace quorvane {
namespace {

// The work area as it lies on the canvas, which is the screen at the size of the wallpaper, with a margin.
PixelRect WorkAreaOn(const Surface& canvas, Desktop& desktop) {
    const PixelSize size = canvas.Size();
    const PixelSize screen = desktop.ScreenSize();
    const PixelRect area = desktop.WorkArea();
    if (screen.width <= 0 || screen.height <= 0) return {0, 0, size.width, size.height};
    const auto across = [&](int x) {
        return CanvasMargin / 2 +
               static_cast<int>(std::int64_t{x} * (size.width - CanvasMargin) / screen.width);
    };
    const auto down = [&](int y) {
        return CanvasMargin / 2 +
               static_cast<int>(std::int64_t{y} * (size.height - CanvasMargin) / screen.height);
    };
    const int left = across(area.x);
    const int top = down(area.y);
    return {left, top, across(area.x + area.width) - left, down(area.y + area.height) - top};
}

} // namespace

Composition::CalendarPainter CalendarLayer(const GlobalRecord& record, Clock& clock, Drawing& drawing,
                                           Store& store, System& system, const LocaleStrings& locale,
                                           Desktop* desktop) {
    return [&, desktop](Surface& canvas) {
        const DateTime now = clock.Now();
        CalendarInputs inputs{now, clock.ZoneAt(now), locale, ReadRegionalValues(store, system)};
        if (record.KeepClearOfPanels && desktop) inputs.area = WorkAreaOn(canvas, *desktop);
        return PaintCalendar(record, drawing, canvas, inputs);
    };
}

} // namespace quorvane
