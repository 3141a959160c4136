#include "tests/program/linux/program.h"
#include "tests/program/linux/session_manager.h"

namespace quorvane::test {
namespace {

// The program after its first change, which is what an end must not lose.
class EndTest : public ProgramTest {
  protected:
    void StartAndChange() {
        MakePictures();
        Set("General", "Change wallpaper at startup", -1);
        Set("General", "Wallpaper change interval (current)", 4000);
        Start();
        ASSERT_TRUE(WaitForAnotherWallpaper(""));
        ASSERT_TRUE(WaitFor([this] { return !FindWindow([](const Place&) { return true; }); })) << "started";
    }
    // The change sets it anew.
    bool CountdownHasMoved() const {
        const std::string left = Ctl({"settings", "get", "General\\Wallpaper change interval (current)"});
        const int seconds = std::atoi(left.c_str());
        return seconds > 0 && seconds < 4000;
    }
    void ExpectSaved() {
        EXPECT_EQ(Get("General", "First RUN"), "False");
        EXPECT_TRUE(Get("General", "Last selected wallpaper").starts_with(pictures_.string()));
        std::int32_t left = 0;
        RegReadValue(*OpenStore(), "", Hive::CurrentUser, "Software\\Quorvane\\General", key_access::All,
                     "Wallpaper change interval (current)", left);
        EXPECT_GT(left, 3900);
        EXPECT_LT(left, 4000) << "the countdown goes on across restarts";
    }
};

TEST_F(EndTest, SignalsAreTheOrderlyExit) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        StartAndChange();
        ASSERT_TRUE(WaitFor([this] { return Get("General", "First RUN") == "(missing)"; }));
        ASSERT_TRUE(WaitFor([this] { return CountdownHasMoved(); }));
        program_->Signal(signal);
        EXPECT_EQ(program_->WaitForEnd(), 0) << "signal " << signal;
        ExpectSaved();
        EXPECT_NE(RootPixmap(), "") << "the wallpaper stays";
        fs::remove_all(folder_.Path() / "home");
        Ask({"xprop", "-root", "-remove", "_XROOTPMAP_ID"});
    }
}

TEST_F(EndTest, ALogOffIsTheOrderlyExit) {
    SessionManager manager;
    ASSERT_FALSE(manager.Address().empty());
    environment_.push_back("SESSION_MANAGER=" + manager.Address());
    MakePictures();
    Set("General", "Change wallpaper at startup", -1);
    Set("General", "Wallpaper change interval (current)", 4000);
    Start();
    ASSERT_TRUE(manager.WaitForClient());
    ASSERT_TRUE(WaitFor([&] { return manager.Serve(), !RootPixmap().empty(); }));
    WaitFor([&] { return manager.Serve(), false; }, std::chrono::milliseconds(1500));
    EXPECT_FALSE(program_->ExitStatus()) << "nothing but the log-off ends it";
    ASSERT_TRUE(manager.LogOff());
    EXPECT_TRUE(WaitFor([&] { return manager.Serve(), program_->ExitStatus().has_value(); }));
    EXPECT_EQ(program_->ExitStatus(), 0);
    ExpectSaved();
}

TEST_F(EndTest, ASessionManagerThatGoesAwayIsTheOrderlyExit) {
    auto manager = std::make_unique<SessionManager>();
    environment_.push_back("SESSION_MANAGER=" + manager->Address());
    MakePictures();
    Set("General", "Change wallpaper at startup", -1);
    Start();
    ASSERT_TRUE(manager->WaitForClient());
    ASSERT_TRUE(WaitFor([&] { return manager->Serve(), !RootPixmap().empty(); }));
    ASSERT_TRUE(WaitFor([this] { return !FindWindow([](const Place&) { return true; }); })) << "started";
    manager.reset();
    EXPECT_EQ(program_->WaitForEnd(), 0);
    EXPECT_EQ(Get("General", "First RUN"), "False");
}

TEST_F(EndTest, ADisplayThatGoesAwayIsTheOrderlyExit) {
    StartAndChange();
    ASSERT_TRUE(WaitFor([this] { return CountdownHasMoved(); }));
    screen_.Kill();
    EXPECT_EQ(program_->WaitForEnd(), 0);
    ExpectSaved();
}

} // namespace
} // namespace quorvane::test
