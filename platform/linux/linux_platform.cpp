#include "platform/linux/linux_platform.h"

#include "platform/files.h"
#include "platform/headless.h"
#include "platform/linux/base/clock.h"
#include "platform/linux/desktop/channel.h"
#include "platform/linux/desktop/desktop.h"
#include "platform/linux/desktop/desktop_store.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/desktop/font_system.h"
#include "platform/linux/desktop/icon.h"
#include "platform/linux/desktop/session.h"
#include "platform/linux/desktop/tray.h"
#include "platform/linux/forms/form_host.h"
#include "platform/linux/forms/prompts.h"
#include "platform/shared/seeded_random.h"
#include "platform/store.h"

#include <QApplication>
#include <array>
#include <utility>

namespace quorvane {

namespace {

// The toolkit reads no option of the command line: all of it is the logic's. `platform` outlives it.
struct Toolkit {
    Toolkit(char* program, std::string& platform)
        : arguments{program, option.data(), platform.data()}
        , argumentCount(platform.empty() ? 1 : 3)
        , application(argumentCount, arguments.data()) {
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setDesktopFileName(QStringLiteral("quorvane"));
        QApplication::setWindowIcon(ProgramIcon());
    }
    std::string option = "-platform";
    std::array<char*, 4> arguments; // and the null at the end
    int argumentCount;
    QApplication application;
};

} // namespace

struct LinuxPlatform::Parts {
    Parts(int argumentCount, char** arguments, std::string& toolkitPlatform, std::string& storeNote)
        : toolkit(arguments[0], toolkitPlatform)
        , store(CreateDesktopStore(storeNote))
        , session(events, argumentCount, arguments) {}

    Toolkit toolkit;
    LinuxClock clock;
    std::unique_ptr<Files> files = CreateFiles();
    std::unique_ptr<Drawing> drawing = CreateDrawing();
    std::unique_ptr<Store> store;
    GuiFontSystem system;
    SeededRandom random;
    QtEventLoop events;
    LinuxSession session;
    LinuxDesktop desktop{*store, system, events, *files};
    LinuxTray tray{events, system};
    QtFormHost forms;
    QtPrompts prompts{forms};
    LinuxChannel channel{events};
};

LinuxPlatform::LinuxPlatform(int argumentCount, char** arguments, std::string toolkitPlatform)
    : toolkitPlatform_(std::move(toolkitPlatform))
    , parts_(std::make_unique<Parts>(argumentCount, arguments, toolkitPlatform_, storeNote_)) {}

LinuxPlatform::~LinuxPlatform() = default;

Platform LinuxPlatform::Services() {
    Parts& own = *parts_;
    return {own.clock,  own.desktop, *own.drawing, own.events, *own.files, own.forms,   own.prompts,
            own.random, own.session, *own.store,   own.system, own.tray,   &own.channel};
}

} // namespace quorvane
