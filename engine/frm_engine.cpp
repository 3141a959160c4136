#include "engine/frm_engine.h"

#include "engine/apply.h"
#include "engine/busy_flag.h"
#include "engine/calendar_layer.h"
#include "engine/tray_report.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/tray.h"

#include <limits>

namespace quorvane {
namespace {

// One less, down to the lowest number there is.
void CountDown(std::int32_t& left) {
    if (left > std::numeric_limits<std::int32_t>::min()) --left;
}

} // namespace

frmEngine::frmEngine(Forms& forms, GlobalRecord& record, const Platform& platform,
                     const LocaleStrings& locale, Program& program)
    : Form(forms, "frmEngine")
    , record_(record)
    , platform_(platform)
    , program_(program)
    , complaints_(platform.system)
    , fileList_(record, platform.clock, platform.events, platform.files, complaints_)
    , selection_(record, fileList_, platform.clock, platform.random)
    , composition_({record, fileList_, selection_, complaints_, platform.clock, platform.events,
                    platform.drawing, platform.random},
                   CalendarLayer(record, platform.clock, platform.drawing, platform.store, platform.system,
                                 locale, &platform.desktop)) {
    Timer1.onTimer = [this] { CountDownToChange(); };
    Timer2.onTimer = [this] { CountDownToRescan(); };
}

// The list is filled anew even where the first change has just done so: that change may have been refused.
void frmEngine::OnLoad() {
    platform_.events.Pump(); // paints the splash
    if (record_.ChangeWallpaperAtStartUp) {
        record_.RESCANWALLPAPERSOURCESNOW = true;
        ChangeWallpaper("");
    }
    platform_.events.Pump();
    fileList_.ScanSources();
}

void frmEngine::ChangeWallpaper(const std::string& file, int mode) {
    if (record_.DISABLE_WALLPAPER_CHANGE || changing_) return;
    {
        const BusyFlag busy(changing_);
        platform_.desktop.ShowBusyPointer(true);
        platform_.tray.Modify(BusyReport());
        platform_.events.Pump();
        ApplyWallpaper(composition_.Compose(file, platform_.desktop.ScreenSize()), mode, record_, platform_,
                       complaints_);
    }
    if (record_.AutoExitAfterChange) program_.SaveAndEnd();
}

// Runs also while the periodic change is switched off, so that it goes on at once when it is switched on.
void frmEngine::CountDownToChange() {
    CountDown(record_.ChangeWallpaperIntervalCurrent);
    if (record_.ChangeWallpaperIntervalCurrent >= 1) return;
    if (record_.ChangeWallpaperPeriodically) ChangeWallpaper("");
    record_.ChangeWallpaperIntervalCurrent = record_.ChangeWallpaperInterval;
}

// The scan itself comes with the next change. A countdown that starts at 0 or below passes by the 0 and stays
// silent until the settings give it a new start.
void frmEngine::CountDownToRescan() {
    if (!record_.RescanWallpaperSources || record_.RescanWallpaperSrcInterval == 0) return;
    CountDown(record_.RescanWallpaperSrcIntervalCurrent);
    if (record_.RescanWallpaperSrcIntervalCurrent != 0) return;
    record_.RESCANWALLPAPERSOURCESNOW = true;
    record_.RescanWallpaperSrcIntervalCurrent = record_.RescanWallpaperSrcInterval;
}

} // namespace quorvane
