#include "shell/frm_notify_icon.h"

#include "engine/listed_files.h"
#include "platform/tray.h"
#include "shell/artwork.h"

#include <utility>

namespace quorvane {

namespace {

constexpr const char* Title = "Quorvane II";

} // namespace

frmNotifyIcon::frmNotifyIcon(Forms& forms, GlobalRecord& record, const Platform& platform, Program& program)
    : Form(forms, "frmNotifyIcon")
    , record_(record)
    , platform_(platform)
    , program_(program) {}

void frmNotifyIcon::OnLoad() {
    TrayRecord record;
    record.tip = Title;
    platform_.tray.OnMessage([this](int message) { TakeMessage(message); });
    platform_.tray.Add(record);
    platform_.tray.SetVersion(record.version);
    BuildTrayMenu();
    platform_.tray.SetMenu(&mnu_popup);
}

void frmNotifyIcon::OnUnload() {
    RemoveTrayIcon();
    platform_.tray.SetMenu(nullptr);
    platform_.tray.OnMessage(nullptr);
    mnu_popup.Clear();
}

void frmNotifyIcon::ShowTrayTip() {
    TrayRecord record;
    record.tip = Title;
    record.balloonText =
        std::string(Title) + "\r\nCurrent wallpaper: [" + record_.LastSelectedWallpaper + "]";
    platform_.tray.Add(record);
}

void frmNotifyIcon::RemoveTrayIcon() {
    platform_.tray.Remove();
}

void frmNotifyIcon::BuildTrayMenu() {
    mnu_popup.Clear();
    const auto add = [this](int index, Words caption, std::function<void()> onClick) -> MenuItem& {
        return mnu_popup.Add("mnu_popup_entry", index, std::move(caption), std::move(onClick));
    };
    add(0, {"&Change wallpaper", 21}, [this] { ChangeNow(); }).bitmap =
        Add_BM_Handler(LandscapeBitmap(platform_.drawing));
    add(1, {"Add current wallpaper to favorites", 18},
        [this] { AddCurrentWallpaper(record_.FavoritesSources); });
    add(2, {"Remove current wallpaper to favorites", 19}, [this] { RemoveCurrentFromFavorites(); });
    add(3, {"Add current wallpaper to blacklist", 20},
        [this] { AddCurrentWallpaper(record_.BlacklistedSources); });
    mnu_popup.AddSeparator();
    add(13, {"E&xit", 9}, [this] { Exit(); });
    mnu_popup.SetDefaultItem(0);
}

// The menu holds the bitmap itself; the number stands for it in the record and in the state dump.
std::shared_ptr<Surface> frmNotifyIcon::Add_BM_Handler(std::shared_ptr<Surface> picture) {
    if (picture) record_.BMHandles.push_back(record_.BMHandlesCount() + 1);
    return picture;
}

void frmNotifyIcon::TakeMessage(int message) {
    if (message == tray_message::RightButtonUp) {
        platform_.tray.Popup(mnu_popup);
    } else if (message == tray_message::LeftDoubleClick) {
        const int byDefault = mnu_popup.DefaultItem();
        if (byDefault != -1) Menu::Choose(mnu_popup.Items()[static_cast<std::size_t>(byDefault)]);
    }
}

// A change by hand starts the interval anew.
void frmNotifyIcon::ChangeNow() {
    program_.ChangeWallpaper("", change_mode::User);
    record_.ChangeWallpaperIntervalCurrent = record_.ChangeWallpaperInterval;
}

void frmNotifyIcon::AddCurrentWallpaper(OneBased<ListedFile>& list) {
    ListFile(list, record_.LastSelectedWallpaper);
    program_.WriteSettings();
}

void frmNotifyIcon::RemoveCurrentFromFavorites() {
    SwitchOffFile(record_.FavoritesSources, record_.LastSelectedWallpaper);
    program_.WriteSettings();
}

void frmNotifyIcon::Exit() {
    record_.Main_Exec ? program_.ReleaseAndEnd() : program_.SaveAndEnd();
}

} // namespace quorvane
