#pragma once

#include "config/global_record.h"
#include "engine/complaints.h"
#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/shared/breather.h"

namespace quorvane {

// Keeps the candidate list, `Wallpapers`, of the record.
class FileList {
  public:
    FileList(GlobalRecord& record, Clock& clock, EventLoop& events, Files& files, Complaints& complaints)
        : record_(record)
        , clock_(clock)
        , events_(events)
        , files_(files)
        , complaints_(complaints) {}

    // Scans where a rescan was asked for, or where the periodic one is switched off: then every change scans.
    // False where a source could not be read whole; the list then holds what there was.
    bool BuildFileList();

    // Empties the list and fills it from all active sources, due or not.
    bool ScanSources();

  private:
    bool ScanSource(const WallpaperSource& source, Breather& breather);

    GlobalRecord& record_;
    Clock& clock_;
    EventLoop& events_;
    Files& files_;
    Complaints& complaints_;
    bool scanning_ = false;
};

} // namespace quorvane
