#include "engine/frm_engine.h"

#include "config/registry.h"
#include "platform/memory/memory_platform.h"
#include "tests/support/recorded_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace quorvane {
namespace {

constexpr const char* DefaultUserKey = ".DEFAULT\\Control Panel\\Desktop";

class EngineTest : public testing::Test {
  protected:
    EngineTest() {
        machine_.desktop.screenSize = {40, 20};
        machine_.random.keepsFirstSeed = true;
        for (const char* name : {"/pics/a.png", "/pics/b.png", "/pics/c.png"}) {
            machine_.files.Put(name);
            machine_.drawing.AddPicture(name, {10, 10}, Rgb(1, 2, 3));
        }
        machine_.files.onList = [this](const std::string&) { ++listings_; };
        machine_.files.PutFolder("/home/ann");
        machine_.files.PutFolder("/windows");
        record_.WallpaperSources.Add({"/pics", true, "*.png", "0"});
        record_.Wallpaper = "/home/ann/Wallpaper.bmp";
        record_.System_Directory = "/windows";
        record_.WallpaperResolution = 5;
        record_.WallpaperPosition = 4;
        record_.RescanWallpaperSources = true;
        record_.RescanWallpaperSrcInterval = 10;
        record_.RescanWallpaperSrcIntervalCurrent = 10;
        record_.ChangeWallpaperInterval = 300;
        record_.ChangeWallpaperIntervalCurrent = 300;
    }

    // Changes so far, by what reached the desktop.
    int Changes() const { return machine_.calls.Count("desktop.SetWallpaper"); }
    void Seconds(int count) { machine_.events.Advance(count * 1000LL); }

    MemoryPlatform machine_;
    const Platform platform_ = machine_.Services();
    Forms forms_{platform_};
    GlobalRecord record_;
    LocaleStrings locale_;
    int listings_ = 0;
    test::RecordedProgram program_{machine_.calls};
    frmEngine engine_{forms_, record_, platform_, locale_, program_};
};

TEST_F(EngineTest, LoadScansOnceAndTwiceWhereItChangesAtOnce) {
    engine_.Load();
    EXPECT_EQ(record_.Wallpapers_Cnt(), 3);
    EXPECT_EQ(listings_, 1);
    EXPECT_EQ(Changes(), 0);
    EXPECT_EQ(machine_.events.TimerNames(), (std::vector<std::string>{"Timer1", "Timer2"}));
    engine_.Unload();
    EXPECT_TRUE(machine_.events.TimerNames().empty());

    record_.ChangeWallpaperAtStartUp = true;
    listings_ = 0;
    engine_.Load();
    EXPECT_EQ(listings_, 2);
    EXPECT_EQ(record_.Wallpapers_Cnt(), 3) << "filled anew, not twice";
    EXPECT_EQ(Changes(), 1);
    EXPECT_FALSE(record_.RESCANWALLPAPERSOURCESNOW);
}

TEST_F(EngineTest, TheCalendarIsKeptClearOfPanelsWhereThatIsWanted) {
    machine_.desktop.screenSize = {1000, 800};
    record_.PaintCalendar = true;
    record_.Calendar_Position = 1;
    record_.CaptionFont.Size = record_.CalendarFont.Size = 8;
    const auto paint = [this] {
        machine_.drawing.log.clear();
        engine_.ChangeWallpaper("/pics/a.png");
        return machine_.drawing.log;
    };
    const std::vector<std::string> bare = paint();
    machine_.desktop.workArea = PixelRect{100, 30, 900, 770};
    EXPECT_EQ(paint(), bare) << "off: as if there were no panel";
    record_.KeepClearOfPanels = true;
    const std::vector<std::string> clear = paint();
    machine_.desktop.workArea.reset();
    const auto caption = [](const std::vector<std::string>& log) {
        PixelPoint at;
        for (const std::string& line : log)
            if (std::sscanf(line.c_str(), "text %d,%d", &at.x, &at.y) == 2) break;
        return at;
    };
    EXPECT_EQ(caption(clear), (PixelPoint{caption(bare).x + 102, caption(bare).y + 32}));
}

TEST_F(EngineTest, ADayOfPeriodicChangesNeverShowsAPictureTwiceRunning) {
    record_.ChangeWallpaperPeriodically = true;
    engine_.Load();
    std::string last;
    int repeats = 0;
    for (int change = 1; change <= 288; ++change) {
        Seconds(299);
        ASSERT_EQ(Changes(), change - 1);
        Seconds(1);
        ASSERT_EQ(Changes(), change);
        repeats += record_.LastSelectedWallpaper == last ? 1 : 0;
        last = record_.LastSelectedWallpaper;
    }
    EXPECT_EQ(repeats, 0);
    EXPECT_EQ(record_.ChangeWallpaperIntervalCurrent, 300);
    EXPECT_EQ(listings_, 1 + 144) << "every second change finds the ten minutes run out";
}

TEST_F(EngineTest, TheCountdownRunsOnWhileNothingChanges) {
    engine_.Load();
    Seconds(299);
    EXPECT_EQ(record_.ChangeWallpaperIntervalCurrent, 1);
    Seconds(1);
    EXPECT_EQ(record_.ChangeWallpaperIntervalCurrent, 300);
    EXPECT_EQ(Changes(), 0);
    record_.ChangeWallpaperPeriodically = true;
    record_.ChangeWallpaperInterval = 1;
    record_.ChangeWallpaperIntervalCurrent = 0; // as it may be stored
    Seconds(3);
    EXPECT_EQ(Changes(), 3);
    record_.DISABLE_WALLPAPER_CHANGE = true;
    record_.ChangeWallpaperInterval = 7;
    Seconds(1);
    EXPECT_EQ(Changes(), 3);
    EXPECT_EQ(record_.ChangeWallpaperIntervalCurrent, 7) << "a change that is refused uses up the countdown";
    record_.ChangeWallpaperIntervalCurrent = std::numeric_limits<std::int32_t>::min();
    Seconds(1);
    EXPECT_EQ(record_.ChangeWallpaperIntervalCurrent, 7);
}

TEST_F(EngineTest, TheRescanCountdownAsksOnceAndIsDeadBelowZero) {
    engine_.Load();
    Seconds(599);
    EXPECT_FALSE(record_.RESCANWALLPAPERSOURCESNOW);
    Seconds(1);
    EXPECT_TRUE(record_.RESCANWALLPAPERSOURCESNOW);
    EXPECT_EQ(record_.RescanWallpaperSrcIntervalCurrent, 10);
    EXPECT_EQ(listings_, 1) << "the scan waits for a change";
    record_.RESCANWALLPAPERSOURCESNOW = false;
    record_.RescanWallpaperSrcIntervalCurrent = 0;
    Seconds(6000);
    EXPECT_FALSE(record_.RESCANWALLPAPERSOURCESNOW);
    EXPECT_EQ(record_.RescanWallpaperSrcIntervalCurrent, -100);
    record_.RescanWallpaperSrcIntervalCurrent = 1;
    record_.RescanWallpaperSrcInterval = 0;
    Seconds(60);
    EXPECT_EQ(record_.RescanWallpaperSrcIntervalCurrent, 1) << "switched off";
    EXPECT_FALSE(record_.RESCANWALLPAPERSOURCESNOW);
}

TEST_F(EngineTest, OneChangeFromThePointerToTheReport) {
    record_.AutoExitAfterChange = true;
    machine_.calls.Clear();
    engine_.ChangeWallpaper("/pics/b.png");
    EXPECT_EQ(machine_.calls.lines,
              (std::vector<std::string>{"desktop.ShowBusyPointer on",
                                        "tray.Modify Quorvane II - Applying wallpaper, please wait...",
                                        "desktop.SetWallpaper /home/ann/Wallpaper.bmp",
                                        "desktop.ShowBusyPointer off", "tray.SetVersion 3",
                                        "tray.Modify Quorvane II\r[/pics/b.png]", "tray.SetVersion 3",
                                        "program.SaveAndEnd"}));
    EXPECT_EQ(machine_.files.replaced, std::vector<std::string>{"/home/ann/Wallpaper.bmp"});
    const std::string bitmap = machine_.files.Read("/home/ann/Wallpaper.bmp").value_or("");
    EXPECT_EQ(bitmap.substr(0, 2), "BM");
    EXPECT_EQ(bitmap.size(), 54U + 44 * 24 * 3);
}

TEST_F(EngineTest, ATickInsideAChangeDoesNotEnterItAgain) {
    record_.ChangeWallpaperPeriodically = true;
    record_.ChangeWallpaperInterval = 1;
    record_.ChangeWallpaperIntervalCurrent = 1;
    record_.RescanWallpaperSources = false; // every change scans, and lets events run
    engine_.Load();
    listings_ = 0;
    int ticks = 0;
    machine_.events.onPump = [&] { ticks += machine_.events.Fire("Timer1") ? 1 : 0; };
    engine_.ChangeWallpaper("");
    EXPECT_GE(ticks, 3) << "its own, and one in each of the two scans";
    EXPECT_EQ(Changes(), 1);
    EXPECT_EQ(listings_, 2);
    EXPECT_EQ(record_.Wallpapers_Cnt(), 3);
    engine_.ChangeWallpaper("");
    EXPECT_EQ(Changes(), 2) << "free again";
}

TEST_F(EngineTest, ThePersonsOwnFolderIsMadeAndAFullDiskLeavesTheOldFile) {
    machine_.files.writableDirectory = "/home/new/data";
    record_.Wallpaper = "/home/new/data/Wallpaper.bmp";
    engine_.ChangeWallpaper("/pics/a.png");
    const auto old = machine_.files.Read(record_.Wallpaper);
    ASSERT_TRUE(old);
    machine_.files.freeBytes = 1000;
    record_.WallpaperPosition = 2;
    engine_.ChangeWallpaper("/pics/b.png");
    engine_.ChangeWallpaper("/pics/b.png");
    EXPECT_EQ(machine_.files.Read(record_.Wallpaper), old);
    EXPECT_EQ(Changes(), 3) << "the desktop gets the file as it stands";
    EXPECT_EQ(machine_.system.complaints.size(), 1U);
}

TEST_F(EngineTest, TheSystemsWallpaperIsAFileOfItsOwnAndTheUsersIsAppliedAnew) {
    engine_.ChangeWallpaper("/pics/a.png", change_mode::SystemDefault);
    EXPECT_EQ(machine_.files.replaced, std::vector<std::string>{"/windows/System.bmp"});
    EXPECT_EQ(machine_.desktop.wallpaper, "/home/ann/Wallpaper.bmp");
    std::string path;
    std::string style = "untouched";
    EXPECT_EQ(
        RegReadValue(machine_.store, "", Hive::Users, DefaultUserKey, key_access::All, "Wallpaper", path), 1);
    EXPECT_EQ(path, "/windows/System.bmp");
    EXPECT_EQ(RegReadValue(machine_.store, "", Hive::Users, DefaultUserKey, key_access::All, "WallpaperStyle",
                           style),
              1);
    EXPECT_EQ(style, "untouched") << "stored empty";
    engine_.ChangeWallpaper("/pics/b.png", 7);
    EXPECT_EQ(machine_.files.replaced.size(), 1U) << "another mode saves nothing";
    EXPECT_EQ(Changes(), 2);
}

} // namespace
} // namespace quorvane
