#include "platform/linux/desktop/wallpaper_table.h"

#include "core/run_time_error.h"
#include "platform/files.h"
#include "platform/headless.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/desktop/patience.h"
#include "tests/support/process.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QImage>
#include <QThread>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace quorvane {
namespace {

using test::ReadWhole;

// Programs first in PATH that write down what they are called with, and files to hand over.
class WallpaperTableTest : public ::testing::Test {
  protected:
    void SetUp() override {
        path_ = std::getenv("PATH");
        bin_ = folder_.Path() / "bin";
        std::filesystem::create_directories(bin_);
        setenv("PATH", (bin_.string() + ":" + path_).c_str(), 1);
        handover_.file = (folder_.Path() / "Wallpaper.bmp").string();
        handover_.stateFolder = (folder_.Path() / "state").string();
        WriteWallpaper("first");
    }
    void TearDown() override { setenv("PATH", path_.c_str(), 1); }

    void WriteWallpaper(const std::string& content) {
        std::ofstream(handover_.file + ".new") << content;
        std::filesystem::rename(handover_.file + ".new", handover_.file);
    }
    // A stand-in that writes its arguments, a call a line, and then runs `behaviour`.
    void Fake(const std::string& name, const std::string& behaviour = "") {
        const std::filesystem::path file = bin_ / name;
        std::ofstream(file) << "#!/bin/sh\n{ printf '%s' \"" << name << "\"; printf ' %s' \"$@\"; echo; } >> "
                            << Calls().string() << "\n"
                            << behaviour << "\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    std::filesystem::path Calls() const { return folder_.Path() / "calls"; }
    // What has been called since the last asking, with the test's folder named "@" and a copy's name "NEW".
    std::string Called() {
        std::string text = ReadWhole(Calls());
        std::filesystem::remove(Calls());
        const std::string folder = folder_.Path().string();
        for (std::size_t at = 0; (at = text.find(folder)) != std::string::npos;)
            text.replace(at, folder.size(), "@");
        return std::regex_replace(text, std::regex("wallpaper-[0-9]+\\.bmp"), "NEW");
    }
    bool Tell(const std::string& desktop, WallpaperStyle style, int milliseconds = 20'000) {
        handover_.style = style;
        Patience patience(loop_, milliseconds);
        return HandOver(FindDesktopRow(desktop), handover_, *files_, patience);
    }
    // The copies in the state folder, the oldest first.
    std::vector<std::string> Copies() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(handover_.stateFolder))
            if (entry.path().extension() == ".bmp") names.insert(entry.path().string());
        return {names.begin(), names.end()};
    }

    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
    QtEventLoop loop_;
    std::unique_ptr<Files> files_ = CreateFiles();
    test::TemporaryFolder folder_;
    std::filesystem::path bin_;
    std::string path_;
    Handover handover_;
};

TEST_F(WallpaperTableTest, EachDesktopIsToldInItsOwnWay) {
    Fake("gsettings");
    Fake("pcmanfm-qt");
    const struct {
        const char* desktop;
        WallpaperStyle style;
        const char* told;
    } rows[] = {
        {"ubuntu:GNOME", WallpaperStyle::Stretched,
         "gsettings set org.gnome.desktop.background picture-options stretched\n"
         "gsettings set org.gnome.desktop.background picture-uri file://@/state/NEW\n"
         "gsettings set org.gnome.desktop.background picture-uri-dark file://@/state/NEW\n"},
        {"X-Cinnamon", WallpaperStyle::Centred,
         "gsettings set org.cinnamon.desktop.background picture-options centered\n"
         "gsettings set org.cinnamon.desktop.background picture-uri file://@/state/NEW\n"},
        {"MATE", WallpaperStyle::Stretched,
         "gsettings set org.mate.background picture-options stretched\n"
         "gsettings set org.mate.background picture-filename @/state/NEW\n"},
        {"LXQt", WallpaperStyle::Stretched,
         "pcmanfm-qt --set-wallpaper @/state/NEW --wallpaper-mode stretch\n"},
        {"LXQt", WallpaperStyle::Centred, "pcmanfm-qt --set-wallpaper @/state/NEW --wallpaper-mode center\n"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(Tell(row.desktop, row.style)) << row.desktop;
        EXPECT_EQ(Called(), row.told);
    }
}

TEST_F(WallpaperTableTest, EachCopyHasANameThatWasNeverUsed) {
    Fake("gsettings");
    EXPECT_TRUE(Tell("ubuntu:GNOME", WallpaperStyle::Stretched));
    EXPECT_EQ(ReadWhole(Copies().at(0)), "first");
    std::set<std::string> names;
    for (const char* content : {"second", "third", "fourth"}) {
        const std::string before = Copies().back();
        WriteWallpaper(content);
        EXPECT_TRUE(Tell("Budgie:GNOME", WallpaperStyle::Tiled));
        ASSERT_EQ(Copies().size(), 2U) << "older ones go";
        EXPECT_EQ(Copies()[0], before) << "the desktop may still be reading it";
        EXPECT_EQ(ReadWhole(Copies()[1]), content);
        EXPECT_TRUE(names.insert(Copies()[1]).second);
    }
    EXPECT_EQ(ReadWhole(handover_.file), "fourth");
}

TEST_F(WallpaperTableTest, ACopyThatWasRefusedReplacesNoneThatWasTaken) {
    Fake("gsettings", "case \"$3\" in *-dark) exit 1;; esac");
    EXPECT_TRUE(Tell("GNOME", WallpaperStyle::Centred)) << "an old one has no dark key";
    const std::string taken = Copies().back();
    Fake("gsettings", "exit 1");
    for (int change = 0; change < 3; ++change) {
        EXPECT_FALSE(Tell("GNOME", WallpaperStyle::Centred));
        EXPECT_EQ(Copies().size(), 2U);
        EXPECT_EQ(Copies()[0], taken);
    }
}

// Pixel for pixel where the desktop would shrink it by a hair, and whole for every other style and size.
TEST_F(WallpaperTableTest, TheBorderOfAComposedWallpaperIsCutFromTheCopy) {
    Fake("pcmanfm-qt");
    QImage picture(67, 54, QImage::Format_RGB888);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 3, y * 4, x + y));
    }
    ASSERT_TRUE(picture.save(QString::fromStdString(handover_.file)));
    const auto copied = [&](WallpaperStyle style, PixelSize screen) {
        handover_.screen = screen;
        EXPECT_TRUE(Tell("LXQt", style));
        return QImage(QString::fromStdString(Copies().back())).convertToFormat(QImage::Format_RGB888);
    };
    EXPECT_EQ(copied(WallpaperStyle::Stretched, {63, 50}), picture.copy(2, 2, 63, 50));
    EXPECT_EQ(copied(WallpaperStyle::Stretched, {67, 53}), picture.copy(0, 0, 67, 53));
    EXPECT_EQ(copied(WallpaperStyle::Stretched, {62, 50}), picture) << "five pixels are no border";
    EXPECT_EQ(copied(WallpaperStyle::Stretched, {68, 54}), picture) << "smaller than the screen";
    EXPECT_EQ(copied(WallpaperStyle::Centred, {63, 50}), picture);
    EXPECT_EQ(copied(WallpaperStyle::Stretched, {}), picture);
    EXPECT_EQ(QImage(QString::fromStdString(handover_.file)).size(), picture.size()) << "the file stays";
}

TEST_F(WallpaperTableTest, XfceGetsEachMonitorAndWorkspaceThatStandsOrIsToBe) {
    Fake("xfconf-query",
         "for last; do :; done\n"
         "[ \"$last\" = -l ] && printf '%s\\n' /backdrop/screen0/monitorOLD/workspace3/last-image "
         "/backdrop/screen0/monitorOLD/workspace3/color-style /backdrop/single-workspace-mode\n"
         "exit 0");
    handover_.monitors = {"HDMI-1"};
    handover_.workspaces = 2;
    for (int change = 0; change < 2; ++change) {
        EXPECT_TRUE(Tell("XFCE", WallpaperStyle::Tiled));
        std::string expected = "xfconf-query -c xfce4-desktop -p /backdrop -l\n";
        for (const char* place : {"HDMI-1/workspace0", "HDMI-1/workspace1", "OLD/workspace3"}) {
            const std::string property = std::string(" -p /backdrop/screen0/monitor") + place;
            expected += "xfconf-query -c xfce4-desktop" + property + "/image-style -n -t int -s 2\n";
            expected +=
                "xfconf-query -c xfce4-desktop" + property + "/last-image -n -t string -s @/state/NEW\n";
        }
        EXPECT_EQ(Called(), expected);
    }
}

class PainterTest : public WallpaperTableTest {
  protected:
    void SetUp() override {
        WallpaperTableTest::SetUp();
        Fake("swaybg", "echo $$ >> " + (folder_.Path() / "pids").string() + "\nexec sleep 60");
    }
    void TearDown() override {
        for (const int pid : Pids())
            kill(pid, SIGTERM);
        unsetenv("SWAYSOCK");
        WallpaperTableTest::TearDown();
    }
    std::vector<int> Pids() const {
        std::ifstream file(folder_.Path() / "pids");
        return std::vector<int>{std::istream_iterator<int>(file), {}};
    }
    bool WaitForPainters(std::size_t count) const {
        return test::WaitFor([&] { return Pids().size() == count; });
    }
};

TEST_F(PainterTest, OurOwnEarlierOneIsEndedAndNoOther) {
    test::Process foreign({(bin_ / "swaybg").string()});
    ASSERT_TRUE(WaitForPainters(1));
    EXPECT_TRUE(Tell("Hyprland", WallpaperStyle::Stretched));
    ASSERT_TRUE(WaitForPainters(2));
    EXPECT_TRUE(Tell("river:wlroots", WallpaperStyle::Tiled));
    ASSERT_TRUE(WaitForPainters(3));
    EXPECT_EQ(Called(), "swaybg \nswaybg -i @/state/NEW -m stretch\nswaybg -i @/state/NEW -m tile\n");
    EXPECT_TRUE(test::WaitFor([&] { return kill(Pids()[1], 0) != 0; })) << "ours of the first change";
    EXPECT_EQ(kill(Pids()[2], 0), 0);
    EXPECT_FALSE(foreign.ExitStatus());
}

TEST_F(PainterTest, SwayIsToldItselfAndAPainterOfOursGoes) {
    EXPECT_TRUE(Tell("sway", WallpaperStyle::Stretched)) << "no socket: by a painter";
    ASSERT_TRUE(WaitForPainters(1));
    Called();
    Fake("swaymsg");
    setenv("SWAYSOCK", "/run/sway", 1);
    handover_.stateFolder = (folder_.Path() / "my $tate").string();
    std::filesystem::rename(folder_.Path() / "state", handover_.stateFolder);
    EXPECT_TRUE(Tell("sway", WallpaperStyle::Centred));
    EXPECT_EQ(Called(), "swaymsg output * bg \"@/my\\ \\$tate/NEW\" center\n");
    EXPECT_TRUE(test::WaitFor([&] { return kill(Pids()[0], 0) != 0; }));
    Fake("swaymsg", "exit 2");
    EXPECT_TRUE(Tell("sway", WallpaperStyle::Centred)) << "refused: by a painter again";
    EXPECT_TRUE(WaitForPainters(2));
}

// All that a desktop is asked at one change shares one limit, and events run until it is reached.
TEST_F(WallpaperTableTest, ADesktopThatHangsHoldsNothingUp) {
    Fake("gsettings", "exec sleep 60");
    int ticks = 0;
    const TimerId timer = loop_.StartTimer("tick", 10, [&] { ++ticks; });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Tell("GNOME", WallpaperStyle::Stretched, 500));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_GT(ticks, 3);
    loop_.StopTimer(timer);
    loop_.Post([] { throw ProcessEnd{0}; });
    EXPECT_THROW(Tell("GNOME", WallpaperStyle::Stretched, 60'000), ProcessEnd);
}

TEST_F(WallpaperTableTest, PlainXIsForWhoeverHasNoRow) {
    std::string painted;
    handover_.paintRoot = [&](const std::string& file, WallpaperStyle style) {
        painted += file.substr(file.rfind('/')) + std::to_string(static_cast<int>(style));
        return true;
    };
    EXPECT_TRUE(Tell("", WallpaperStyle::Stretched));
    EXPECT_TRUE(Tell("openbox:something", WallpaperStyle::Tiled));
    EXPECT_EQ(painted, "/Wallpaper.bmp2/Wallpaper.bmp1");
    handover_.paintRoot = nullptr;
    EXPECT_FALSE(Tell("", WallpaperStyle::Stretched));
}

TEST_F(WallpaperTableTest, MissingProgramsAndReadOnlyFoldersAnswerAndHangNothing) {
    setenv("PATH", bin_.c_str(), 1);
    for (const char* desktop : {"GNOME", "XFCE", "LXQt", "sway", "MATE"})
        EXPECT_FALSE(Tell(desktop, WallpaperStyle::Stretched)) << desktop;
    setenv("PATH", (bin_.string() + ":" + path_).c_str(), 1);
    Fake("gsettings");
    handover_.stateFolder = "/proc/nowhere";
    EXPECT_TRUE(Tell("GNOME", WallpaperStyle::Stretched));
    EXPECT_NE(Called().find("picture-uri file://@/Wallpaper.bmp"), std::string::npos);
}

// Plasma's side of the bus: keeps what it is asked to evaluate.
class FakePlasma : public QDBusVirtualObject {
  public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == QLatin1String("evaluateScript"))
            scripts.push_back(message.arguments().value(0).toString().toStdString());
        return connection.send(message.createReply(QVariantList{QString()}));
    }
    std::vector<std::string> scripts;
};

// A message bus of the test's own, which this process takes for the session's.
class PlasmaTest : public WallpaperTableTest {
  protected:
    void SetUp() override {
        WallpaperTableTest::SetUp();
        const auto address = folder_.Path() / "address";
        bus_ = std::make_unique<test::Process>(
            std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--print-address"},
            std::vector<std::string>{}, address);
        ASSERT_TRUE(test::WaitFor([&] { return ReadWhole(address).ends_with('\n'); }));
        std::string text = ReadWhole(address);
        text.pop_back();
        setenv("DBUS_SESSION_BUS_ADDRESS", text.c_str(), 1);
        address_ = QString::fromStdString(text);
    }

    QString address_;
    std::unique_ptr<test::Process> bus_;
};

TEST_F(PlasmaTest, GetsAScriptForAllItsDesktops) {
    EXPECT_FALSE(Tell("KDE", WallpaperStyle::Stretched)) << "nobody is there to be told";
    FakePlasma plasma;
    QDBusConnection connection = QDBusConnection::connectToBus(address_, QStringLiteral("plasma"));
    QThread thread;
    thread.start();
    plasma.moveToThread(&thread);
    ASSERT_TRUE(connection.registerVirtualObject(QStringLiteral("/PlasmaShell"), &plasma));
    ASSERT_TRUE(connection.registerService(QStringLiteral("org.kde.plasmashell")));
    EXPECT_TRUE(Tell("KDE", WallpaperStyle::Stretched));
    EXPECT_TRUE(Tell("KDE", WallpaperStyle::Tiled));
    thread.quit();
    thread.wait();
    QDBusConnection::disconnectFromBus(QStringLiteral("plasma"));
    ASSERT_EQ(plasma.scripts.size(), 2U);
    const std::string state = "'Image', 'file://" + handover_.stateFolder + "/wallpaper-";
    EXPECT_NE(plasma.scripts[0].find("'FillMode', 0)"), std::string::npos) << plasma.scripts[0];
    EXPECT_NE(plasma.scripts[0].find(state), std::string::npos) << plasma.scripts[0];
    EXPECT_NE(plasma.scripts[1].find("'FillMode', 3)"), std::string::npos) << plasma.scripts[1];
    EXPECT_NE(plasma.scripts[1], plasma.scripts[0]);
}

TEST(WallpaperStyleTest, ReadsThePublishedWords) {
    EXPECT_EQ(ToWallpaperStyle("1"), WallpaperStyle::Tiled);
    EXPECT_EQ(ToWallpaperStyle("2"), WallpaperStyle::Stretched);
    EXPECT_EQ(ToWallpaperStyle(""), WallpaperStyle::Centred);
}

} // namespace
} // namespace quorvane
