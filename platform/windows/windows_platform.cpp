#include "platform/windows/windows_platform.h"

#include "platform/shared/seeded_random.h"
#include "platform/windows/base/clock.h"
#include "platform/windows/base/files.h"
#include "platform/windows/base/store.h"
#include "platform/windows/base/system.h"
#include "platform/windows/desktop/channel.h"
#include "platform/windows/desktop/desktop.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/desktop/session.h"
#include "platform/windows/desktop/tray.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_host.h"
#include "platform/windows/forms/prompts.h"

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
    WindowsPrompts prompts{forms, events};
    WindowsChannel channel{events};
};

WindowsPlatform::WindowsPlatform()
    : parts_(std::make_unique<Parts>()) {}

WindowsPlatform::~WindowsPlatform() = default;

Platform WindowsPlatform::Services() {
    Parts& own = *parts_;
    return {own.clock,  own.desktop, own.drawing, own.events, own.files, own.forms,   own.prompts,
            own.random, own.session, own.store,   own.system, own.tray,  &own.channel};
}

} // namespace quorvane
