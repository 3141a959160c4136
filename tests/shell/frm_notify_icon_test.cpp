#include "shell/frm_notify_icon.h"

#include "platform/forms/dump.h"
#include "platform/memory/memory_platform.h"
#include "shell/frm_splash.h"
#include "tests/support/recorded_program.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

using Lines = std::vector<std::string>;

class NotifyIconTest : public ::testing::Test {
  protected:
    NotifyIconTest() { icon_.Load(); }

    // What the menu asked of the program since the last look.
    Lines Asked() { return std::exchange(calls_.lines, {}); }
    void Choose(const char* caption) { ASSERT_TRUE(ChooseFromMenu(icon_.mnu_popup, caption)) << caption; }

    MemoryPlatform machine_;
    const Platform platform_ = machine_.Services();
    Forms forms_{platform_};
    GlobalRecord record_;
    CallLog calls_;
    test::RecordedProgram program_{calls_};
    frmNotifyIcon icon_{forms_, record_, platform_, program_};
};

TEST_F(NotifyIconTest, StandsInTheTrayWithItsMenuUntilItIsUnloaded) {
    EXPECT_EQ(machine_.calls.lines, (Lines{"tray.Add Quorvane II", "tray.SetVersion 3"}));
    EXPECT_EQ(machine_.tray.record.flags, 23);
    EXPECT_EQ(machine_.tray.menu, &icon_.mnu_popup);
    EXPECT_EQ(DumpForm(icon_),
              "Form frmNotifyIcon hidden\n"
              "  Menu mnu_popup\n"
              "    MenuItem mnu_popup_entry(0) \"&Change wallpaper\" #21 bitmap default\n"
              "    MenuItem mnu_popup_entry(1) \"Add current wallpaper to favorites\" #18\n"
              "    MenuItem mnu_popup_entry(2) \"Remove current wallpaper to favorites\" #19\n"
              "    MenuItem mnu_popup_entry(3) \"Add current wallpaper to blacklist\" #20\n"
              "    MenuItem \"-\"\n"
              "    MenuItem mnu_popup_entry(13) \"E&xit\" #9\n");
    EXPECT_EQ(record_.BMHandlesCount(), 1);
    icon_.Unload();
    EXPECT_FALSE(machine_.tray.added);
    EXPECT_EQ(machine_.tray.menu, nullptr);
    machine_.tray.Send(tray_message::LeftDoubleClick);
    EXPECT_EQ(Asked(), Lines{});
}

TEST_F(NotifyIconTest, DoubleClickIsTheDefaultEntryAndRightClickTheMenu) {
    record_.ChangeWallpaperInterval = 300;
    record_.ChangeWallpaperIntervalCurrent = 7;
    machine_.tray.Send(tray_message::LeftDoubleClick);
    EXPECT_EQ(Asked(), Lines{"program.ChangeWallpaper 0"});
    EXPECT_EQ(record_.ChangeWallpaperIntervalCurrent, 300) << "a change by hand starts the interval anew";
    icon_.mnu_popup.SetDefaultItem(-1);
    machine_.tray.Send(tray_message::LeftDoubleClick);
    EXPECT_EQ(Asked(), Lines{});
    machine_.tray.Send(tray_message::RightButtonUp);
    EXPECT_EQ(machine_.calls.Count("tray.Popup"), 1);
}

TEST_F(NotifyIconTest, FavoritesKeepTheirRowsAndEachChangeIsWritten) {
    record_.LastSelectedWallpaper = "/pics/A.png";
    Choose("Remove current wallpaper to favorites");
    EXPECT_EQ(Asked(), Lines{"program.WriteSettings"}) << "also where nothing was to be removed";
    EXPECT_EQ(record_.FavoritesSrcCnt(), 0);
    Choose("Add current wallpaper to favorites");
    ASSERT_EQ(record_.FavoritesSrcCnt(), 1);
    EXPECT_EQ(record_.FavoritesSources[1], (ListedFile{"/pics/A.png", true}));
    record_.LastSelectedWallpaper = " /PICS/a.PNG ";
    Choose("Remove current wallpaper to favorites");
    EXPECT_EQ(record_.FavoritesSources[1], (ListedFile{"/pics/A.png", false})) << "the row stays";
    Choose("Add current wallpaper to favorites");
    EXPECT_EQ(record_.FavoritesSrcCnt(), 1) << "no second row";
    EXPECT_TRUE(record_.FavoritesSources[1].Active);
    EXPECT_EQ(record_.BlacklistedSrcCnt(), 0);
    Choose("Add current wallpaper to blacklist");
    EXPECT_EQ(record_.BlacklistedSrcCnt(), 1);
    EXPECT_EQ(Asked(), Lines(4, "program.WriteSettings"));
    record_.LastSelectedWallpaper = " ";
    Choose("Add current wallpaper to favorites");
    Choose("Add current wallpaper to blacklist");
    EXPECT_EQ(record_.FavoritesSrcCnt() + record_.BlacklistedSrcCnt(), 2) << "no wallpaper goes to no list";
}

TEST_F(NotifyIconTest, ExitSavesUnlessTheStartIsUnderWay) {
    record_.Main_Exec = true;
    Choose("Exit");
    record_.Main_Exec = false;
    Choose("Exit");
    EXPECT_EQ(Asked(), (Lines{"program.ReleaseAndEnd", "program.SaveAndEnd"}));
}

TEST_F(NotifyIconTest, ShowsThePresentWallpaperInABalloon) {
    record_.LastSelectedWallpaper = "/pics/a.png";
    icon_.ShowTrayTip();
    EXPECT_EQ(machine_.tray.record.balloonText, "Quorvane II\r\nCurrent wallpaper: [/pics/a.png]");
}

class SplashTest : public ::testing::Test {
  protected:
    MemoryPlatform machine_;
    const Platform platform_ = machine_.Services();
    Forms forms_{platform_};
    frmSplash splash_{forms_, platform_};
};

TEST_F(SplashTest, CutsOutTheColourOfAPlainWindow) {
    machine_.store.Set({"", Hive::CurrentUser, "Control Panel\\Colors"}, "ButtonFace",
                       {ValueType::Text, std::string("212 208 200\0", 12)});
    splash_.Load();
    EXPECT_EQ(splash_.TransparentColor(), Rgb(212, 208, 200));
}

TEST_F(SplashTest, GoesAtAClick) {
    splash_.Show();
    ASSERT_TRUE(splash_.IsVisible());
    EXPECT_EQ(
        DumpForm(splash_),
        "Form frmSplash \"Quorvane II\" bare opacity 244 no task bar\n"
        "  Frame Frame1 back 24,34,50\n"
        "    PictureBox Picture1\n"
        "    Label lblProductName \"Quorvane II\" #125 font \"Monotype Corsiva\" 26 bold italic fore "
        "240,244,250\n"
        "    Label lblVersion \"Version 2.0.1\" #126 fore 168,182,204\n"
        "    Label lblPlatform \"OS platform: Win32\" #127 fore 168,182,204\n"
        "    Label lblCompanyProduct \"Wallpapers, calendar, Sun and Moon\" #128 fore 168,182,204\n"
        "    Label lblCopyright \"The Quorvane project, 2026\" #129 fore 168,182,204\n"
        "    Label lblWarning \"This software provided as is, without any warranty!\" #130 fore 168,182,204\n"
        "    Label lblLoading \"Please, wait... Program is loading\" #131 fore 240,244,250\n"
        "    ProgressBar ProgressBar1 = 0 in 0..100\n");
    MemoryFormView::Do(splash_, splash_.FindControl("Frame1"), act::Click{});
    EXPECT_FALSE(splash_.IsLoaded());
}

} // namespace
} // namespace quorvane
