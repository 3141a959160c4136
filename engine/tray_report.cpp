#include "engine/tray_report.h"

#include "core/utf8.h"

namespace quorvane {
namespace {

constexpr const char* Title = "Quorvane II";
constexpr int LongestTip = 64; // letters
constexpr int TipStart = 6;
constexpr int TipEnd = 32;

} // namespace

TrayRecord BusyReport() {
    TrayRecord record;
    record.flags = 7;
    record.tip = std::string(Title) + " - Applying wallpaper, please wait...";
    return record;
}

TrayRecord ChangedReport(std::string_view lastSelectedWallpaper) {
    const std::string path = EscapeControls(lastSelectedWallpaper);
    const std::string title = Title;
    TrayRecord record;
    record.flags = 31;
    record.balloonIcon = 1;
    record.balloonTitle = title;
    record.tip = title + "\r[" + path + "]";
    if (CountLetters(record.tip) > LongestTip) {
        record.tip = title + "\r[" + std::string(FirstLetters(path, TipStart)) + "..." +
                     std::string(LastLetters(path, TipEnd)) + "]";
        record.balloonText = title + "\rWallpaper: \r\n[" + path + "]";
    } else {
        record.balloonText = title + "\rWallpaper: [" + path + "]";
    }
    return record;
}

} // namespace quorvane
