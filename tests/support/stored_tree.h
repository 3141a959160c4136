#pragma once

#include "config/registry.h"
#include "config/schema.h"
#include "platform/store.h"

#include <string>
#include <string_view>

namespace quorvane::test {

// A value of the program's tree in a store; `key` is below its root.
template<typename Value>
bool PutStored(Store& store, const std::string& key, std::string_view name, const Value& value) {
    return RegWriteValue(store, "", Hive::CurrentUser, std::string(RootKey) + "\\" + key, key_access::All,
                         name, value) == 1;
}

// "(missing)" where there is none.
inline std::string StoredText(Store& store, const std::string& key, std::string_view name) {
    std::string text = "(missing)";
    RegReadValue(store, "", Hive::CurrentUser, std::string(RootKey) + "\\" + key, key_access::Read, name,
                 text);
    return text;
}

// A person who has chosen the pictures of one folder.
inline void ChooseFolder(Store& store, const std::string& folder) {
    const std::string key = "Wallpaper sources";
    PutStored(store, key, "Wallpaper sources counter", 1);
    PutStored(store, key, "Wallpaper source #1", folder);
    PutStored(store, key, "Wallpaper source #1 pattern", "*.png");
    PutStored(store, key, "Is active wallpaper source #1", "True");
    PutStored(store, key, "Wallpaper source #1 scan level", "0");
}

} // namespace quorvane::test
