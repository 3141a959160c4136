#include "platform/linux/desktop/work_area.h"

#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/desktop/patience.h"
#include "platform/linux/desktop/xcb_reply.h"
#include "tests/support/virtual_screen.h"

#include <QCoreApplication>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

namespace quorvane {
namespace {

class WorkAreaTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_FALSE(screen_.Display().empty()) << "Xvfb is needed";
        setenv("DISPLAY", screen_.Display().c_str(), 1);
        path_ = std::getenv("PATH");
    }
    void TearDown() override {
        setenv("PATH", path_.c_str(), 1);
        unsetenv("SWAYSOCK");
    }
    // As a window manager does.
    void Tell(std::string_view name, const std::vector<std::int32_t>& numbers) const {
        const XConnection connection = ConnectToX();
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, root, InternAtom(connection.get(), name),
                            XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(numbers.size()),
                            numbers.data());
        Own(xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    }
    // A swaymsg that answers so.
    void AnswerAsSway(const std::string& outputs, const std::string& workspaces) const {
        const std::filesystem::path file = folder_.Path() / "swaymsg";
        std::ofstream(file) << "#!/bin/sh\ncase $3 in get_outputs) echo '" << outputs << "';; *) echo '"
                            << workspaces << "';; esac\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        setenv("PATH", (folder_.Path().string() + ":" + path_).c_str(), 1);
        setenv("SWAYSOCK", "/run/sway", 1);
    }
    PixelRect Find(PixelSize size = {320, 240}) {
        Patience patience(loop_, 20'000);
        return FindWorkArea({"eDP-1", size}, patience);
    }

    const PixelRect whole_{0, 0, 320, 240};
    int argumentCount_ = 0;
    QCoreApplication application_{argumentCount_, nullptr};
    QtEventLoop loop_;
    test::VirtualScreen screen_{"320x240x24"};
    test::TemporaryFolder folder_;
    std::string path_;
};

TEST_F(WorkAreaTest, TheWindowManagerTellsItOfTheWorkspaceInFront) {
    EXPECT_EQ(Find(), whole_) << "nobody tells";
    Tell("_NET_WORKAREA", {0, 27, 320, 213, 10, 0, 300, 240});
    EXPECT_EQ(Find(), (PixelRect{0, 27, 320, 213}));
    EXPECT_EQ(Find({640, 480}), (PixelRect{0, 54, 640, 426})) << "an X server of shrunken screens";
    Tell("_NET_CURRENT_DESKTOP", {1});
    EXPECT_EQ(Find(), (PixelRect{10, 0, 300, 240}));
    Tell("_NET_CURRENT_DESKTOP", {2});
    EXPECT_EQ(Find(), whole_) << "a workspace that is not told of";
    Tell("_NET_CURRENT_DESKTOP", {0});
    Tell("_NET_WORKAREA", {400, 0, 320, 240});
    EXPECT_EQ(Find(), whole_) << "nothing of this screen";
}

TEST_F(WorkAreaTest, SwayTellsItOfEachOutputInItsOwnUnit) {
    AnswerAsSway(
        R"([{"name": "DP-2", "rect": {"x": 0, "y": 0, "width": 100, "height": 100}},
                     {"name": "eDP-1", "rect": {"x": 100, "y": 0, "width": 160, "height": 120}}])",
        R"([{"output": "eDP-1", "visible": false, "rect": {"x": 100, "y": 50, "width": 9, "height": 9}},
                     {"output": "eDP-1", "visible": true, "rect": {"x": 100, "y": 15, "width": 160, "height": 105}}])");
    EXPECT_EQ(Find(), (PixelRect{0, 30, 320, 210}));
    AnswerAsSway("no JSON", "[7, {\"output\": []}]");
    EXPECT_EQ(Find(), whole_);
}

} // namespace
} // namespace quorvane
