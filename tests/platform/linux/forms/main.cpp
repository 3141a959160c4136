#include "tests/support/virtual_screen.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

// The tests work on a real X server of their own, with a window manager.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const quorvane::test::VirtualScreen screen;
    if (screen.Display().empty()) {
        std::fprintf(stderr, "no X server could be started: is Xvfb installed?\n");
        return 1;
    }
    setenv("DISPLAY", screen.Display().c_str(), 1);
    const quorvane::test::Process manager({"openbox"});
    const auto managed = [] {
        return quorvane::test::Process({"xdotool", "get_num_desktops"}).WaitForEnd() == 0;
    };
    if (!quorvane::test::WaitFor(managed)) {
        std::fprintf(stderr, "no window manager answers: are openbox and xdotool installed?\n");
        return 1;
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    unsetenv("QT_STYLE_OVERRIDE");
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
