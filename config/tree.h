#pragma once

#include "platform/store.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvane {

// Visits every value below `key`, the key's own first, then those of each subkey, in the order of the store.
// Nothing where the key does not exist. The tree must not change meanwhile.
void VisitTree(Store& store, Hive hive, const std::string& key,
               const std::function<void(const std::string& key, const std::string& name,
                                        const StoredValue& value)>& visit);

// Every value below `key` into the same place of another store. False where one was refused.
bool CopyTree(Store& from, Store& to, Hive hive, std::string_view key);

} // namespace quorvane
