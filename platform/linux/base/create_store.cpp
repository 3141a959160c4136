#include "platform/headless.h"
#include "platform/linux/base/base_folders.h"
#include "platform/linux/base/sqlite_store.h"
#include "platform/linux/base/system_values.h"

#include <iostream>

namespace quorvane {
namespace {

std::string SettingsFile() {
    return ConfigFolder() + "/quorvane/settings.db";
}

void Say(const std::string& why) {
    if (!why.empty()) std::cerr << "quorvane: " << why << std::endl;
}

} // namespace

std::unique_ptr<Store> CreateStore(std::string& why) {
    std::unique_ptr<Store> tree = SqliteStore::Open(SettingsFile(), why);
    if (!tree) {
        std::string known; // that the file cannot be used stands in `why` already
        tree = SqliteStore::ReadIntoMemory(SettingsFile(), known);
        why += " The settings are kept in memory and are lost when the program ends.";
    }
    Say(why);
    return std::make_unique<SystemValues>(std::move(tree), LocaleValues());
}

std::unique_ptr<Store> ReadStore() {
    std::string why;
    auto tree = SqliteStore::ReadIntoMemory(SettingsFile(), why);
    Say(why);
    return std::make_unique<SystemValues>(std::move(tree), LocaleValues());
}

std::unique_ptr<Store> CreateScratchStore() {
    return std::make_unique<SystemValues>(std::make_unique<MemoryStore>(), LocaleValues());
}

} // namespace quorvane
