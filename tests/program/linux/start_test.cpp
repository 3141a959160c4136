#include "tests/program/linux/program.h"

#include <algorithm>

namespace quorvane::test {
namespace {

int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST_F(ProgramTest, TheScreenShowsTheBitmapThatWasWritten) {
    MakePictures();
    Set("General", "Change wallpaper at startup", -1);
    Start();
    ASSERT_TRUE(WaitForAnotherWallpaper(""));
    ASSERT_TRUE(WaitFor([this] { return !FindWindow([](const Place&) { return true; }); }))
        << "the splash goes";
    const QImage file = WallpaperFile();
    const QImage screen = Screen();
    ASSERT_EQ(file.size(), QSize(Width + 4, Height + 4));
    ASSERT_EQ(screen.size(), QSize(Width, Height));
    int different = 0;
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x)
            different += screen.pixel(x, y) != file.pixel(x + 2, y + 2) ? 1 : 0;
    }
    EXPECT_EQ(different, 0);
    // A picture of the screen's aspect fills it; the lower left corner is far from the calendar.
    const std::vector<QRgb> colors{qRgb(20, 40, 200), qRgb(20, 160, 60), qRgb(200, 30, 20)};
    EXPECT_EQ(std::count(colors.begin(), colors.end(), screen.pixel(5, Height - 5)), 1);
    EXPECT_FALSE(program_->ExitStatus());
}

TEST_F(ProgramTest, AFirstStartOnAnEmptyTreeRuns) {
    StartDesktop();
    Start();
    ASSERT_TRUE(WaitForIcon());
    program_->Signal(SIGTERM);
    EXPECT_EQ(program_->WaitForEnd(), 0);
    EXPECT_EQ(Get("General", "First RUN"), "False");
    EXPECT_EQ(Said(), "");
}

TEST_F(ProgramTest, WithoutADisplayItSaysSo) {
    environment_.push_back("DISPLAY");
    Start();
    EXPECT_EQ(program_->WaitForEnd(), 1);
    EXPECT_EQ(Said(),
              "quorvane: there is no display to run on: neither DISPLAY nor WAYLAND_DISPLAY is set\n");
    fs::remove(folder_.Path() / "said");
    environment_.push_back("DISPLAY=:64999");
    Start();
    EXPECT_EQ(program_->WaitForEnd(), 1);
    EXPECT_EQ(Said(), "quorvane: the display \":64999\" cannot be opened\n");
}

TEST_F(ProgramTest, WithoutATrayItRunsSaysSoOnceAndTheIconComesLater) {
    windowManager_ = std::make_unique<Process>(std::vector<std::string>{"openbox"}, environment_);
    MakePictures();
    Set("General", "Change wallpaper at startup", -1);
    Start();
    ASSERT_TRUE(WaitForAnotherWallpaper(""));
    const std::string line = "there is no notification area";
    EXPECT_TRUE(WaitFor([&] { return Count(Said(), line) == 1; }));
    for (int round = 0; round < 2; ++round) {
        StartPanel();
        EXPECT_TRUE(WaitForIcon()) << "round " << round;
        StopPanel();
        ASSERT_TRUE(WaitFor([this] { return !Icon(); }));
    }
    EXPECT_EQ(Count(Said(), line), 1);
    EXPECT_FALSE(program_->ExitStatus());
}

TEST_F(ProgramTest, ADamagedTreeIsSetAsideAndAFreshOneBegun) {
    OpenStore().reset();
    fs::path store;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path() / "home/XDG_CONFIG_HOME"))
        if (entry.is_regular_file() && entry.file_size() > 0) store = entry.path();
    ASSERT_FALSE(store.empty());
    std::ofstream(store, std::ios::trunc) << "this was a tree of settings once, and now it is none";
    Start();
    // The box comes once the start is over, and is lower than the splash before it.
    ASSERT_TRUE(WaitFor([this] {
        return FindWindow([](const Place& place) { return place.height > 20 && place.height < 200; })
            .has_value();
    }));
    EXPECT_EQ(Count(Said(), "set aside"), 1);
    int kept = 0;
    for (const auto& entry : fs::directory_iterator(store.parent_path()))
        kept += ReadWhole(entry.path()).starts_with("this was a tree") ? 1 : 0;
    EXPECT_EQ(kept, 1) << "nothing is lost";
    program_->Signal(SIGTERM);
    EXPECT_EQ(program_->WaitForEnd(), 0) << "also while the box stands";
    EXPECT_EQ(Get("General", "First RUN"), "False");
}

TEST_F(ProgramTest, AHomeThatCannotBeWrittenEndsNothing) {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        environment_.push_back(std::string(name) + "=/proc/nowhere");
    StartDesktop();
    Start();
    ASSERT_TRUE(WaitForIcon());
    EXPECT_NE(Said(), "");
    program_->Signal(SIGTERM);
    EXPECT_EQ(program_->WaitForEnd(), 0);
}

} // namespace
} // namespace quorvane::test
