#include "engine/file_list.h"

#include "core/run_time_error.h"
#include "core/text.h"
#include "engine/busy_flag.h"
#include "engine/folder_scan.h"

#include <cmath>

namespace quorvane {

bool FileList::BuildFileList() {
    if (!record_.RESCANWALLPAPERSOURCESNOW && record_.RescanWallpaperSources) return true;
    // A tick inside a scan may come back here. A second scan would empty the list that the first one fills,
    // and with a short interval and a slow disk the scans would pile up without end.
    if (scanning_) return true;
    const bool whole = ScanSources();
    record_.RESCANWALLPAPERSOURCESNOW = false;
    return whole;
}

bool FileList::ScanSources() {
    const BusyFlag busy(scanning_);
    record_.Wallpapers.Clear();
    const double start = SecondsOfDay(clock_.Now());
    Breather breather(clock_, events_);
    bool whole = true;
    for (std::int32_t number = 1; number <= record_.WallpaperSrcCnt(); ++number) {
        const WallpaperSource source = record_.WallpaperSources[number]; // it may change while events run
        if (source.Active) whole = ScanSource(source, breather) && whole;
    }
    record_.Scan_Time = std::abs(SecondsOfDay(clock_.Now()) - start);
    return whole;
}

bool FileList::ScanSource(const WallpaperSource& source, Breather& breather) {
    std::string path = source.Path;
    if (Trim(path).empty()) { // with a separator behind it, it would be the root of everything
        complaints_.Tell("Wallpaper sources", "a source names no folder");
        return false;
    }
    if (!path.ends_with(files_.Separator())) path.push_back(files_.Separator());
    bool whole = false;
    PassOver([&] {
        FolderScan scan(files_, breather, complaints_, record_.Wallpapers);
        whole = scan.GetFiles(path, source.Pattern, ScanLevel(source.ScanDeepLevel), 0);
    });
    return whole;
}

} // namespace quorvane
