#pragma once

#include "platform/store.h"

#include <string>

namespace quorvane {

// One value of a stored tree with its place.
struct StoreEntry {
    Hive hive = Hive::CurrentUser;
    std::string key; // the path as it was written
    std::string name;
    StoredValue value;
};

} // namespace quorvane
