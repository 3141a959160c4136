#include "cli/engine_rig.h"

#include "cli/settings_source.h"
#include "platform/headless.h"

namespace quorvane::cli {
namespace {

// The system's clock with its wall clock held at one moment.
class HeldClock final : public Clock {
  public:
    HeldClock(std::unique_ptr<Clock> clock, const DateTime& moment)
        : clock_(std::move(clock))
        , moment_(moment) {}

    DateTime Now() override { return moment_; }
    TimeZone ZoneAt(const DateTime& local) override { return clock_->ZoneAt(local); }
    std::int64_t Ticks() override { return clock_->Ticks(); }

  private:
    std::unique_ptr<Clock> clock_;
    DateTime moment_;
};

std::unique_ptr<Clock> ClockOf(const Arguments& arguments) {
    std::unique_ptr<Clock> clock = CreateClock();
    if (const auto moment = arguments.At()) clock = std::make_unique<HeldClock>(std::move(clock), *moment);
    return clock;
}

} // namespace

EngineRig::EngineRig(const Arguments& arguments)
    : clock(ClockOf(arguments))
    , files(CreateFiles())
    , system(CreateSystem())
    , store(OpenSettings(arguments, *files))
    , complaints(*system)
    , fileList(record, *clock, events, *files, complaints)
    , selection(record, fileList, *clock, random) {
    LoadRecord(record, ContextOf(*store, *files, *clock));
    if (const auto seed = arguments.Number("seed")) random.Seed(*seed);
}

void EngineRig::FillList() {
    fileList.ScanSources();
    record.RESCANWALLPAPERSOURCESNOW = false;
    record.RescanWallpaperSources = true;
}

} // namespace quorvane::cli
