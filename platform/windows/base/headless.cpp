#include "platform/headless.h"

#include "platform/shared/memory_store.h"
#include "platform/windows/base/clock.h"
#include "platform/windows/base/files.h"
#include "platform/windows/base/store.h"
#include "platform/windows/base/system.h"
#include "platform/windows/base/win32.h"

namespace quorvane {

std::unique_ptr<Clock> CreateClock() {
    return std::make_unique<WindowsClock>();
}

std::unique_ptr<Files> CreateFiles() {
    return std::make_unique<WindowsFiles>();
}

std::unique_ptr<System> CreateSystem() {
    return std::make_unique<WindowsSystem>();
}

std::unique_ptr<Store> CreateStore(std::string&) {
    return std::make_unique<RegistryStore>();
}

std::unique_ptr<Store> ReadStore() {
    return std::make_unique<RegistryStore>();
}

bool OutputIsTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode);
}

std::unique_ptr<Store> CreateScratchStore() {
    struct SystemValue {
        const char* key;
        const char* name;
    };
    constexpr SystemValue SystemValues[] = {{"Control Panel\\International", "sDecimal"},
                                            {"Control Panel\\International", "sShortDate"},
                                            {"Control Panel\\International", "iFirstDayOfWeek"},
                                            {"Control Panel\\Colors", "ButtonFace"},
                                            {"Control Panel\\Colors", "InfoWindow"}};
    RegistryStore registry;
    auto scratch = std::make_unique<MemoryStore>();
    for (const SystemValue& place : SystemValues) {
        const StoreKey from{{}, Hive::CurrentUser, place.key, KEY_READ};
        const StoreKey to{{}, Hive::CurrentUser, place.key};
        StoredValue value;
        if (registry.Query(from, place.name, value) == store_error::None) scratch->Set(to, place.name, value);
    }
    return scratch;
}

void BecomeProgram(const std::string&, const std::vector<std::string>&) {}

} // namespace quorvane
