#include "engine/apply.h"

#include "config/settings.h"
#include "core/program.h"
#include "engine/tray_report.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/painting/bitmap_file.h"

namespace quorvane {
namespace {

void SaveCanvas(Surface& canvas, const std::string& path, const GlobalRecord& record,
                const Platform& platform, Complaints& complaints) {
    const std::string ownFolder = platform.files.WritableDirectory();
    if (path.starts_with(ownFolder)) platform.files.MakeFolder(ownFolder);
    std::string why;
    if (!SaveBitmap(canvas, platform.files, path, why))
        complaints.Tell(path, "the wallpaper cannot be saved; the old file stays (" + why + ")");
    TellLateFailure(canvas, record, complaints);
}

// The style is left empty, whatever the position is.
void SaveSystemWallpaper(Surface* canvas, const GlobalRecord& record, const Platform& platform,
                         Complaints& complaints) {
    const std::string path = record.System_Directory + platform.files.Separator() + "System.bmp";
    if (canvas) SaveCanvas(*canvas, path, record, platform, complaints);
    PublishSystemWallpaper(platform.store, platform.prompts, path, "");
}

void ReportInTray(const TrayRecord& report, Tray& tray) {
    tray.SetVersion(report.version);
    tray.Modify(report);
    tray.SetVersion(report.version);
}

} // namespace

void ApplyWallpaper(ComposedWallpaper composed, int mode, const GlobalRecord& record,
                    const Platform& platform, Complaints& complaints) {
    if (mode == change_mode::User && composed.canvas) {
        SaveCanvas(*composed.canvas, record.Wallpaper, record, platform, complaints);
    } else if (mode == change_mode::SystemDefault) {
        SaveSystemWallpaper(composed.canvas.get(), record, platform, complaints);
    }
    platform.desktop.SetWallpaper(record.Wallpaper); // also with the system's: the user's is applied anew
    composed.canvas.reset();
    platform.desktop.ShowBusyPointer(false);
    ReportInTray(ChangedReport(record.LastSelectedWallpaper), platform.tray);
}

} // namespace quorvane
