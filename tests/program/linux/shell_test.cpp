#include "tests/program/linux/program.h"

#include <csignal>

namespace quorvane::test {
namespace {

// The running program, asked from a shell.
class ShellTest : public ProgramTest {
  protected:
    bool Answers(const Process& program) const {
        const std::string pid = "\"pid\": " + std::to_string(program.Id()) + ",";
        return WaitFor([&] {
            return Ctl({"status", "--json", "--pid", std::to_string(program.Id())}).find(pid) !=
                   std::string::npos;
        });
    }
};

TEST_F(ShellTest, WhatTheShellChangesIsInTheProgramAndSurvivesItsEnd) {
    MakePictures();
    Start();
    ASSERT_TRUE(Answers(*program_));
    EXPECT_NE(Ctl({"status", "--json"}).find("\"candidates\": 3,"), std::string::npos);
    Ctl({"favourites", "add", (pictures_ / "red.png").string()});
    Ctl({"settings", "set", "General\\Week name", "Week"});
    EXPECT_EQ(Get("Favorites", "Favorites source #1"), (pictures_ / "red.png").string()) << "saved at once";
    EXPECT_EQ(Ctl({"settings", "get", "General\\Week name"}), "Week\n");
    Ctl({"do", "change", (pictures_ / "blue.png").string()});
    EXPECT_NE(Ctl({"status"}).find("blue.png"), std::string::npos);
    EXPECT_EQ(WallpaperFile().pixel(5, Height - 5), qRgb(20, 40, 200));
    const std::string doctor = Ctl({"doctor"});
    EXPECT_NE(doctor.find("wallpaper: ok: it is painted on the root window, and the desktop shows it"),
              std::string::npos)
        << doctor;
    EXPECT_NE(doctor.find("tray: missing"), std::string::npos) << doctor;
    EXPECT_NE(doctor.find("program: ok"), std::string::npos) << doctor;
    Ctl({"do", "exit"});
    ASSERT_TRUE(WaitFor([this] { return program_->ExitStatus().has_value(); }));
    EXPECT_EQ(*program_->ExitStatus(), 0);
    EXPECT_EQ(Get("General", "Week name"), "Week");
    EXPECT_EQ(Ctl({"settings", "get", "General\\Week name"}), "Week\n") << "now from the tree";
    EXPECT_EQ(Ctl({"status"}), "");
}

TEST_F(ShellTest, OfTwoCopiesTheLaterAnswersAndAKilledOneIsForgotten) {
    Start();
    ASSERT_TRUE(Answers(*program_));
    const auto first = std::move(program_);
    Start();
    ASSERT_TRUE(Answers(*program_));
    const auto isFrom = [&](const Process& program) {
        return Ctl({"status", "--json"}).find("\"pid\": " + std::to_string(program.Id()) + ",") !=
               std::string::npos;
    };
    EXPECT_TRUE(isFrom(*program_));
    EXPECT_TRUE(Answers(*first));
    kill(program_->Id(), SIGKILL);
    ASSERT_TRUE(WaitFor([this] { return program_->ExitStatus().has_value(); }));
    EXPECT_TRUE(isFrom(*first));
}

} // namespace
} // namespace quorvane::test
