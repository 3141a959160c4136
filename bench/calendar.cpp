// Measuring and painting the calendar with its block on a 3840x2160 canvas of the platform's own drawing,
// with both neighbour months and all week numbers. To hold against 30 milliseconds.

#include "calendar/painter.h"
#include "platform/headless.h"

#include <benchmark/benchmark.h>

namespace quorvane {
namespace {

GlobalRecord FullCalendar() {
    GlobalRecord record;
    record.CaptionFont = {true, false, 18, false, false, "Microsoft Sans Serif"};
    record.CalendarFont = record.EphemeredesFont = {false, false, 14, false, false, "Microsoft Sans Serif"};
    record.Calendar_Position = 5;
    record.Use_Calendar_Bkgrnd = 1;
    record.ShowWeekNumbers = true;
    record.ShowAllWeekNumbers = record.ShowPreviousMonth = record.ShowNextMonth = 1;
    record.Calculate_Ephemeredes = record.CalculateSunEphemeredes = record.CalculateMoonEphemeredes = 1;
    record.Week_Str_Name = "Week #";
    record.Latitude = 54.2;
    record.Longitude = 37.6;
    return record;
}

void Calendar_PaintOn4K(benchmark::State& state) {
    const GlobalRecord record = FullCalendar();
    const LocaleStrings locale;
    const CalendarInputs inputs{{2026, 11, 15, 12, 0, 0}, {true, -180, 0, 0, false, "MSK"}, locale, {}};
    const auto drawing = CreateDrawing();
    const auto canvas = drawing->CreateSurface({3844, 2164});
    for (auto _ : state)
        benchmark::DoNotOptimize(PaintCalendar(record, *drawing, *canvas, inputs));
}
// The first calendar of a process still has the fonts to find: what a command-line program pays.
BENCHMARK(Calendar_PaintOn4K)->Name("Calendar_FirstOfAProcess")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Calendar_PaintOn4K)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvane
