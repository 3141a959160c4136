#include "core/run_time_error.h"
#include "platform/windows/base/clock.h"
#include "platform/windows/base/store.h"
#include "platform/windows/base/system.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/desktop.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/desktop/session.h"
#include "tests/contracts/event_loop_contract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace quorvane {
namespace {

TEST(Wide, KeepsEveryLetterAndCutsBetweenThem) {
    const std::string text = "aé€𝄞Ж";
    EXPECT_EQ(Utf8(Wide(text)), text);
    EXPECT_EQ(Wide("\xFFx"), L"\xFFFDx");
    wchar_t field[3] = L"??";
    CopyToField("abcd", field, 3);
    EXPECT_STREQ(field, L"ab");
    CopyToField("a𝄞", field, 3);
    EXPECT_STREQ(field, L"a");
}

TEST(WindowsClock, FollowsTheRulesOfTheZone) {
    WindowsClock clock;
    const DateTime now = clock.Now();
    EXPECT_GT(now.year, 2000);
    const TimeZone zone = clock.ZoneAt(now);
    EXPECT_TRUE(zone.known);
    EXPECT_FALSE(zone.name.empty());
    SYSTEMTIME universal{}, local{};
    GetSystemTime(&universal);
    SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    const int inForce = zone.bias + (zone.daylight ? zone.daylightBias : zone.standardBias);
    const int difference = (universal.wHour * 60 + universal.wMinute) - (local.wHour * 60 + local.wMinute);
    EXPECT_EQ((inForce - difference) % 1440, 0);
    const std::int64_t before = clock.Ticks();
    EXPECT_GE(clock.Ticks(), before);
    EXPECT_TRUE(clock.ZoneAt({1, 1, 1}).known) << "years before the system's calendar";
}

class WindowsLoopMaker {
  public:
    EventLoop& Loop() { return loop_; }
    static std::int64_t Now() { return static_cast<std::int64_t>(GetTickCount64()); }
    static void PassTime(std::int64_t milliseconds) {
        const std::int64_t end = Now() + milliseconds;
        while (Now() < end)
            YieldProcessor();
    }

  private:
    WindowsEventLoop loop_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, EventLoopContract, WindowsLoopMaker);

TEST(WindowsEventLoop, AnyExceptionIsReportedAndNothingRunsAfterTheEnd) {
    WindowsEventLoop events;
    std::string failures;
    bool later = false;
    events.OnFailure(
        [&](int number, const char* words) { failures += std::to_string(number) + words + ";"; });
    events.Post([] { throw std::logic_error("odd"); });
    events.Post([] { throw ProcessEnd{7}; });
    events.Post([&] { later = true; });
    EXPECT_EQ(events.Run(), 7);
    EXPECT_EQ(failures, "51odd;");
    EXPECT_FALSE(later);
}

TEST(WindowsEventLoop, AnEndClosesAMessageBox) {
    WindowsEventLoop events;
    const TimerId timer = events.StartTimer("end", 50, [] { throw ProcessEnd{3}; });
    events.Post([&] {
        MessageBoxW(nullptr, L"It waits for nobody.", L"Quorvane II", MB_OK);
        events.LeaveIfEnding();
    });
    EXPECT_EQ(events.Run(), 3);
    events.StopTimer(timer);
}

TEST(WindowsSession, TheSystemsRequestToEndArrivesOnceAndASecondOneEnds) {
    WindowsEventLoop events;
    RegistryStore store;
    WindowsSession session(events, store);
    int requests = 0;
    session.OnEndRequest([&] { ++requests; });
    EXPECT_EQ(SendMessageW(events.Window(), WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(requests, 0);
    SendMessageW(events.Window(), WM_ENDSESSION, FALSE, 0);
    EXPECT_EQ(requests, 0) << "the log-off was called off";
    SendMessageW(events.Window(), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(requests, 1);
    PostMessageW(events.Window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(events.Run(), 1) << "the first one waits for somebody, it seems";
    EXPECT_EQ(requests, 1);
    EXPECT_NE(session.CommandLine().find("--gtest"), std::string::npos);
    EXPECT_EQ(session.CommandLine().find(".exe"), std::string::npos);
}

TEST(WindowsSession, AutostartIsAValueOfTheRunKey) {
    WindowsEventLoop events;
    RegistryStore store;
    WindowsSession session(events, store);
    const StoreKey run{"", Hive::CurrentUser, "Software\\Microsoft\\Windows\\CurrentVersion\\Run"};
    StoredValue read;
    EXPECT_EQ(session.SetAutostart(true, "/win9x"), 0);
    ASSERT_EQ(store.Query(run, "Quorvane II", read), store_error::None);
    EXPECT_NE(read.data.find("\\test_platform_windows.exe /win9x"), std::string::npos) << read.data;
    EXPECT_EQ(session.SetAutostart(false, ""), 0);
    EXPECT_EQ(store.Query(run, "Quorvane II", read), store_error::NotFound);
    EXPECT_EQ(session.SetAutostart(false, ""), 0) << "it is off already";
}

TEST(WindowsSystem, TellsWhoAndWhereItIs) {
    WindowsSystem system;
    const VersionRecord version = system.Version();
    EXPECT_EQ(version.dwPlatformId, 2);
    EXPECT_GE(version.dwMajorVersion, 5);
    EXPECT_GT(version.dwBuildNumber, 0);
    EXPECT_FALSE(system.UserName().empty());
    EXPECT_FALSE(system.ComputerName().empty());
    EXPECT_NE(system.SystemWindowsDirectory().find(":\\"), std::string::npos);
    EXPECT_TRUE(system.EnablePrivilege("SeShutdownPrivilege"));
    EXPECT_FALSE(system.EnablePrivilege("SeNoSuchPrivilege"));
    const auto fonts = system.FontNames();
    EXPECT_GT(fonts.size(), 3U);
    EXPECT_TRUE(std::is_sorted(fonts.begin(), fonts.end()));
    EXPECT_EQ(system.AddFontFile("C:\\no such font.ttf"), 0);
}

TEST(WindowsDesktop, TakesABitmapAsWallpaper) {
    WindowsDesktop desktop;
    EXPECT_GE(desktop.ScreenSize().width, 320);
    const PixelRect area = desktop.WorkArea();
    EXPECT_GT(area.width, 0);
    EXPECT_LE(area.x + area.width, desktop.ScreenSize().width);
    wchar_t before[MAX_PATH]{}, after[MAX_PATH]{};
    SystemParametersInfoW(SPI_GETDESKWALLPAPER, MAX_PATH, before, 0);
    EXPECT_TRUE(desktop.SetWallpaper("C:\\Обои.bmp"));
    SystemParametersInfoW(SPI_GETDESKWALLPAPER, MAX_PATH, after, 0);
    EXPECT_EQ(std::wstring(after), L"C:\\Обои.bmp");
    desktop.SetWallpaper(Utf8(before));
}

} // namespace
} // namespace quorvane
