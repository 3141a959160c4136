#include "platform/linux/desktop/wallpaper_table.h"
#include "tests/support/process.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>
#include <gtest/gtest.h>

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
    // What has been called since the last asking, with the test's folder named "@".
    std::string Called() {
        std::string text = ReadWhole(Calls());
        std::filesystem::remove(Calls());
        const std::string folder = folder_.Path().string();
        for (std::size_t at = 0; (at = text.find(folder)) != std::string::npos;) {
            text.replace(at, folder.size(), "@");
        }
        return text;
    }
    bool Tell(const std::string& desktop, WallpaperStyle style) {
        handover_.style = style;
        return HandOver(FindDesktopRow(desktop), handover_);
    }

    test::TemporaryFolder folder_;
    std::filesystem::path bin_;
    std::string path_;
    Handover handover_;
};

TEST_F(WallpaperTableTest, GnomeGetsBothKeysAndAnotherNameEachTime) {
    Fake("gsettings");
    EXPECT_TRUE(Tell("ubuntu:GNOME", WallpaperStyle::Stretched));
    EXPECT_EQ(Called(),
              "gsettings set org.gnome.desktop.background picture-options stretched\n"
              "gsettings set org.gnome.desktop.background picture-uri file://@/state/wallpaper-1.bmp\n"
              "gsettings set org.gnome.desktop.background picture-uri-dark file://@/state/wallpaper-1.bmp\n");
    WriteWallpaper("second");
    EXPECT_TRUE(Tell("GNOME", WallpaperStyle::Tiled));
    EXPECT_EQ(Called(),
              "gsettings set org.gnome.desktop.background picture-options wallpaper\n"
              "gsettings set org.gnome.desktop.background picture-uri file://@/state/wallpaper-2.bmp\n"
              "gsettings set org.gnome.desktop.background picture-uri-dark file://@/state/wallpaper-2.bmp\n");
    EXPECT_EQ(ReadWhole(handover_.stateFolder + "/wallpaper-1.bmp"), "first");
    EXPECT_EQ(ReadWhole(handover_.stateFolder + "/wallpaper-2.bmp"), "second");
    WriteWallpaper("third");
    EXPECT_TRUE(Tell("Budgie:GNOME", WallpaperStyle::Centred));
    EXPECT_EQ(ReadWhole(handover_.stateFolder + "/wallpaper-1.bmp"), "third");
    EXPECT_EQ(ReadWhole(handover_.file), "third");
}

TEST_F(WallpaperTableTest, OldGnomeWithoutADarkKeyIsTold) {
    Fake("gsettings", "case \"$3\" in *-dark) exit 1;; esac");
    EXPECT_TRUE(Tell("Unity", WallpaperStyle::Centred));
    Fake("gsettings", "exit 1");
    EXPECT_FALSE(Tell("Unity", WallpaperStyle::Centred));
}

TEST_F(WallpaperTableTest, CinnamonAndMateHaveSettingsOfTheirOwn) {
    Fake("gsettings");
    EXPECT_TRUE(Tell("X-Cinnamon", WallpaperStyle::Centred));
    EXPECT_TRUE(Tell("X-Cinnamon", WallpaperStyle::Stretched));
    EXPECT_TRUE(Tell("MATE", WallpaperStyle::Stretched));
    EXPECT_EQ(Called(),
              "gsettings set org.cinnamon.desktop.background picture-options centered\n"
              "gsettings set org.cinnamon.desktop.background picture-uri file://@/state/wallpaper-1.bmp\n"
              "gsettings set org.cinnamon.desktop.background picture-options stretched\n"
              "gsettings set org.cinnamon.desktop.background picture-uri file://@/state/wallpaper-2.bmp\n"
              "gsettings set org.mate.background picture-options stretched\n"
              "gsettings set org.mate.background picture-filename @/state/wallpaper-1.bmp\n");
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
                "xfconf-query -c xfce4-desktop" + property + "/last-image -n -t string -s @/Wallpaper.bmp\n";
        }
        EXPECT_EQ(Called(), expected);
    }
}

TEST_F(WallpaperTableTest, LxqtGetsAnotherNameEachTime) {
    Fake("pcmanfm-qt");
    EXPECT_TRUE(Tell("LXQt", WallpaperStyle::Stretched));
    EXPECT_TRUE(Tell("LXQt", WallpaperStyle::Centred));
    EXPECT_EQ(Called(), "pcmanfm-qt --set-wallpaper @/state/wallpaper-1.bmp --wallpaper-mode stretch\n"
                        "pcmanfm-qt --set-wallpaper @/state/wallpaper-2.bmp --wallpaper-mode center\n");
}

TEST_F(WallpaperTableTest, SwayEndsItsOwnPainterAndNoOther) {
    Fake("swaybg", "echo $$ >> " + (folder_.Path() / "pids").string() + "\nexec sleep 60");
    test::Process foreign({(bin_ / "swaybg").string()});
    const auto pids = [this] {
        std::ifstream file(folder_.Path() / "pids");
        return std::vector<int>{std::istream_iterator<int>(file), {}};
    };
    ASSERT_TRUE(test::WaitFor([&] { return pids().size() == 1; }));
    EXPECT_TRUE(Tell("sway", WallpaperStyle::Stretched));
    ASSERT_TRUE(test::WaitFor([&] { return pids().size() == 2; }));
    EXPECT_TRUE(Tell("sway:wlroots", WallpaperStyle::Tiled));
    ASSERT_TRUE(test::WaitFor([&] { return pids().size() == 3; }));
    EXPECT_EQ(Called(), "swaybg \nswaybg -i @/Wallpaper.bmp -m stretch\nswaybg -i @/Wallpaper.bmp -m tile\n");
    EXPECT_TRUE(test::WaitFor([&] { return kill(pids()[1], 0) != 0; })) << "ours of the first change";
    EXPECT_EQ(kill(pids()[2], 0), 0);
    EXPECT_FALSE(foreign.ExitStatus());
    kill(pids()[2], SIGTERM);
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
    for (const char* desktop : {"GNOME", "XFCE", "LXQt", "sway", "MATE"}) {
        EXPECT_FALSE(Tell(desktop, WallpaperStyle::Stretched)) << desktop;
    }
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

    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
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
    const std::string state = "'Image', 'file://" + handover_.stateFolder;
    EXPECT_NE(plasma.scripts[0].find("'FillMode', 0)"), std::string::npos) << plasma.scripts[0];
    EXPECT_NE(plasma.scripts[0].find(state + "/wallpaper-2.bmp')"), std::string::npos) << plasma.scripts[0];
    EXPECT_NE(plasma.scripts[1].find("'FillMode', 3)"), std::string::npos) << plasma.scripts[1];
    EXPECT_NE(plasma.scripts[1].find(state + "/wallpaper-1.bmp')"), std::string::npos) << plasma.scripts[1];
}

TEST(WallpaperStyleTest, ReadsThePublishedWords) {
    EXPECT_EQ(ToWallpaperStyle("0"), WallpaperStyle::Centred);
    EXPECT_EQ(ToWallpaperStyle("1"), WallpaperStyle::Tiled);
    EXPECT_EQ(ToWallpaperStyle("2"), WallpaperStyle::Stretched);
    EXPECT_EQ(ToWallpaperStyle(""), WallpaperStyle::Centred);
}

} // namespace
} // namespace quorvane
