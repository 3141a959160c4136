#include "platform/linux/desktop/pointer_grab.h"

#include "platform/linux/desktop/xcb_reply.h"
#include "tests/support/virtual_screen.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(PointerGrab, IsSeenWhileAnotherProgramHasIt) {
    const test::VirtualScreen screen("320x240x24");
    ASSERT_FALSE(screen.Display().empty()) << "Xvfb is needed";
    setenv("DISPLAY", screen.Display().c_str(), 1);
    EXPECT_EQ(IsPointerGrabbed(), false);
    {
        const XConnection menu = ConnectToX();
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(menu.get())).data->root;
        const auto asked = xcb_grab_pointer(menu.get(), 0, root, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                            XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
        ASSERT_TRUE(Own(xcb_grab_pointer_reply(menu.get(), asked, nullptr)));
        EXPECT_EQ(IsPointerGrabbed(), true);
        EXPECT_EQ(IsPointerGrabbed(), true) << "the look takes it from nobody";
    }
    EXPECT_TRUE(test::WaitFor([] { return IsPointerGrabbed() == false; }));
    setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    EXPECT_EQ(IsPointerGrabbed(), std::nullopt);
    unsetenv("WAYLAND_DISPLAY");
}

} // namespace
} // namespace quorvane
