#pragma once

#include "platform/memory/call_log.h"
#include "platform/memory/channel.h"
#include "platform/memory/clock.h"
#include "platform/memory/desktop.h"
#include "platform/memory/drawing.h"
#include "platform/memory/event_loop.h"
#include "platform/memory/files.h"
#include "platform/memory/forms.h"
#include "platform/memory/keys.h"
#include "platform/memory/programs.h"
#include "platform/memory/prompts.h"
#include "platform/memory/random.h"
#include "platform/memory/session.h"
#include "platform/memory/sound.h"
#include "platform/memory/system.h"
#include "platform/memory/tray.h"
#include "platform/memory/workstation.h"
#include "platform/platform.h"
#include "platform/shared/memory_store.h"

namespace quorvane {

// One of each service, and the record that they share. A test keeps it beside what it tests:
//     MemoryPlatform machine;
//     const Platform platform = machine.Services();
class MemoryPlatform {
  public:
    CallLog calls;
    MemoryClock clock;
    MemoryDesktop desktop{calls};
    MemoryDrawing drawing;
    MemoryEventLoop events{clock};
    MemoryFiles files;
    MemoryFormHost forms{calls};
    MemoryPrompts prompts{forms};
    MemoryRandom random;
    MemorySession session{calls};
    MemoryStore store;
    MemorySystem system{calls};
    MemoryTray tray{calls, events};
    MemoryChannel channel{events};
    MemoryKeys keys;
    MemoryPrograms programs{calls};
    MemorySound sound{clock, calls};
    MemoryWorkstation workstation{calls};

    Platform Services() {
        return {clock, desktop, drawing, events,   files, forms,     prompts, random,      session,
                store, system,  tray,    &channel, &keys, &programs, &sound,  &workstation};
    }
};

} // namespace quorvane
