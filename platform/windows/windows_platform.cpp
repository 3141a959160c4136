#include "platform/windows/windows_platform.h"

#include "platform/seeded_random.h"
#include "platform/windows/clock.h"
#include "platform/windows/desktop.h"
#include "platform/windows/drawing.h"
#include "platform/windows/event_loop.h"
#include "platform/windows/files.h"
#include "platform/windows/form_host.h"
#include "platform/windows/prompts.h"
#include "platform/windows/session.h"
#include "platform/windows/store.h"
#include "platform/windows/system.h"
#include "platform/windows/tray.h"

namespace quorvane {

struct WindowsPlatform::Parts {
    WindowsClock clock;
    WindowsFiles files;
    WindowsDrawing drawing;
    RegistryStore store;
    WindowsSystem system;
    SeededRandom random;
    WindowsDesktop desktop;
    WindowsEventLoop events;
    WindowsSession session{events, store};
    WindowsTray tray{events};
    WindowsFormHost forms{events};
    WindowsPrompts prompts{forms, events, drawing};
};

WindowsPlatform::WindowsPlatform()
    : parts_(std::make_unique<Parts>()) {}

WindowsPlatform::~WindowsPlatform() = default;

Platform WindowsPlatform::Services() {
    Parts& own = *parts_;
    return {own.clock,   own.desktop, own.drawing, own.events, own.files,  own.forms,
            own.prompts, own.random,  own.session, own.store,  own.system, own.tray};
}

} // namespace quorvane
