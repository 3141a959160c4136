#include "platform/headless.h"
#include "platform/linux/base/sqlite_store.h"
#include "platform/linux/base/system_values.h"

#include <cstdlib>
#include <iostream>

namespace quorvane {
namespace {

// A relative path in the variable counts as none at all, as the base directory rules want it.
std::string ConfigFolder() {
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder && folder[0] == '/') return folder;
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config";
}

} // namespace

std::unique_ptr<Store> CreateStore(std::string& why) {
    const std::string file = ConfigFolder() + "/quorvane/settings.db";
    std::unique_ptr<Store> tree = SqliteStore::Open(file, why);
    if (!tree) {
        why += " The settings are kept in memory and are lost when the program ends.";
        tree = SqliteStore::ReadIntoMemory(file);
    }
    if (!why.empty()) std::cerr << "quorvane: " << why << std::endl;
    return std::make_unique<SystemValues>(std::move(tree), LocaleValues());
}

std::unique_ptr<Store> CreateScratchStore() {
    return std::make_unique<SystemValues>(std::make_unique<MemoryStore>(), LocaleValues());
}

} // namespace quorvane
