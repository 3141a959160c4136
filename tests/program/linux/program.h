#pragma once

#include "platform/headless.h"
#include "tests/support/stored_tree.h"
#include "tests/support/virtual_screen.h"

#include <QImage>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quorvane::test {

// The built program on a virtual screen, with a home, a store and pictures of its own.
class ProgramTest : public ::testing::Test {
  protected:
    static constexpr int Width = 1280;
    static constexpr int Height = 800;

    void SetUp() override {
        ASSERT_FALSE(screen_.Display().empty()) << "Xvfb is needed";
        pictures_ = folder_.Path() / "pictures";
        fs::create_directories(pictures_);
        fs::create_directories(folder_.Path() / "home");
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
            environment_.push_back(std::string(name) + "=" + (folder_.Path() / "home" / name).string());
        }
        environment_.insert(environment_.end(),
                            {"DISPLAY=" + screen_.Display(), "XDG_CURRENT_DESKTOP=", "WAYLAND_DISPLAY",
                             "QT_QPA_PLATFORM", "SESSION_MANAGER", "DBUS_SESSION_BUS_ADDRESS=disabled:"});
    }
    void TearDown() override {
        if (HasFailure()) std::fprintf(stderr, "the program said:\n%s\n", Said().c_str());
    }

    // Three pictures of one colour each, so that a wallpaper tells which one it shows.
    void MakePictures() {
        const std::map<std::string, QColor> colors{
            {"blue.png", {20, 40, 200}}, {"green.png", {20, 160, 60}}, {"red.png", {200, 30, 20}}};
        for (const auto& [name, color] : colors) {
            QImage image(640, 400, QImage::Format_RGB888);
            image.fill(color);
            ASSERT_TRUE(image.save(QString::fromStdString((pictures_ / name).string())));
        }
        ChooseFolder(*OpenStore(), pictures_.string() + "/");
    }

    // The stored tree, as another program reads and writes it.
    template<typename Value>
    void Set(const std::string& key, const std::string& name, const Value& value) {
        EXPECT_TRUE(PutStored(*OpenStore(), key, name, value));
    }
    std::string Get(const std::string& key, const std::string& name) {
        return StoredText(*OpenStore(), key, name);
    }
    std::unique_ptr<Store> OpenStore() {
        setenv("XDG_CONFIG_HOME", (folder_.Path() / "home/XDG_CONFIG_HOME").c_str(), 1);
        std::string why;
        return CreateStore(why);
    }

    void Start(const std::vector<std::string>& arguments = {}) {
        std::vector<std::string> command{QUORVANE_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        program_ = std::make_unique<Process>(command, environment_, "/dev/null", folder_.Path() / "said");
    }
    // Asks from a shell; the running program answers where there is one.
    std::string Ctl(std::vector<std::string> words) const {
        words.insert(words.begin(), QUORVANE_CTL);
        return Output(words, environment_);
    }
    std::string Said() const { return ReadWhole(folder_.Path() / "said"); }

    void StartDesktop() {
        windowManager_ = std::make_unique<Process>(std::vector<std::string>{"openbox"}, environment_);
        ASSERT_TRUE(WaitFor([this] {
            return Ask({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"}).find("window id") != std::string::npos;
        }));
        StartPanel();
    }
    void StartPanel() {
        panel_ = std::make_unique<Process>(
            std::vector<std::string>{"tint2", "-c", QUORVANE_SOURCE "/demo/tint2rc"}, environment_);
    }
    void StopPanel() { panel_.reset(); }

    // Runs a tool of the desktop and answers what it prints.
    std::string Ask(const std::vector<std::string>& command) const { return Output(command, environment_); }

    // The pixmap that the screen shows: "" or its number.
    std::string RootPixmap() const {
        const std::string text = Ask({"xprop", "-root", "_XROOTPMAP_ID"});
        const std::size_t number = text.find("0x");
        return number == std::string::npos ? "" : text.substr(number);
    }
    bool WaitForAnotherWallpaper(const std::string& before) const {
        return WaitFor([&] { return !RootPixmap().empty() && RootPixmap() != before; });
    }
    QImage Screen() const {
        const std::string file = (folder_.Path() / "screen.png").string();
        Ask({"import", "-window", "root", file});
        return QImage(QString::fromStdString(file)).convertToFormat(QImage::Format_RGB32);
    }
    QImage WallpaperFile() const {
        const fs::path file = folder_.Path() / "home/XDG_DATA_HOME/quorvane/Wallpaper.bmp";
        return QImage(QString::fromStdString(file.string())).convertToFormat(QImage::Format_RGB32);
    }

    // The icon in the panel: its window, once it is shown there.
    struct Place {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool isMenu = false;
    };
    std::optional<Place> WindowPlace(const std::string& id) const {
        const std::string text = Ask({"xdotool", "getwindowgeometry", "--shell", id});
        Place place;
        int number = 0;
        if (std::sscanf(text.c_str(), "WINDOW=%d\nX=%d\nY=%d\nWIDTH=%d\nHEIGHT=%d", &number, &place.x,
                        &place.y, &place.width, &place.height) != 5) {
            return std::nullopt;
        }
        const bool balloon =
            Ask({"xprop", "-id", id, "_NET_WM_WINDOW_TYPE"}).find("TYPE_TOOLTIP") != std::string::npos;
        place.isMenu = !balloon && place.height > 80 && place.y > Height / 2;
        return place;
    }
    // The first visible window of the program that fits.
    std::optional<Place> FindWindow(const std::function<bool(const Place&)>& fits) const {
        std::istringstream ids(Ask({"xdotool", "search", "--onlyvisible", "--class", "quorvane"}));
        std::string id;
        while (ids >> id) {
            const auto place = WindowPlace(id);
            if (place && fits(*place)) return place;
        }
        return std::nullopt;
    }
    std::optional<Place> Icon() const {
        return FindWindow([](const Place& place) { return place.y > Height - 40 && place.height <= 34; });
    }
    std::optional<Place> PopupMenu() const {
        return FindWindow([](const Place& place) { return place.isMenu; });
    }
    bool WaitForIcon() {
        return WaitFor([this] { return (icon_ = Icon()).has_value(); });
    }
    void ClickAt(int x, int y, const std::vector<std::string>& click) const {
        std::vector<std::string> command{"xdotool", "mousemove", std::to_string(x), std::to_string(y)};
        command.insert(command.end(), click.begin(), click.end());
        Ask(command);
    }
    void ClickIcon(const std::vector<std::string>& click) const {
        ClickAt(icon_->x + icon_->width / 2, icon_->y + icon_->height / 2, click);
    }

    TemporaryFolder folder_;
    VirtualScreen screen_{"1280x800x24"};
    fs::path pictures_;
    std::vector<std::string> environment_;
    std::unique_ptr<Process> windowManager_;
    std::unique_ptr<Process> panel_;
    std::unique_ptr<Process> program_;
    std::optional<Place> icon_;
};

} // namespace quorvane::test
