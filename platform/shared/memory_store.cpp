#include "platform/shared/memory_store.h"

#include "core/text.h"
#include "platform/shared/key_path.h"

#include <tuple>

namespace quorvane {

MemoryStore::Found MemoryStore::Find(const StoreKey& key, std::uint32_t right) {
    if (!key.machine.empty()) return {store_error::BadNetworkPath};
    Found found{store_error::None, &hives_[key.hive], nullptr};
    for (auto [name, rest] = FirstKeyName(key.path); !name.empty();
         std::tie(name, rest) = FirstKeyName(rest)) {
        const auto subkey = found.key->subkeys.find(LowerCase(name));
        if (subkey == found.key->subkeys.end()) return {store_error::NotFound};
        found.parent = found.key;
        found.key = subkey->second.get();
    }
    if ((key.access & right) == 0) return {store_error::AccessDenied};
    return found;
}

MemoryStore::Key& MemoryStore::Make(const StoreKey& key) {
    Key* at = &hives_[key.hive];
    for (auto [name, rest] = FirstKeyName(key.path); !name.empty();
         std::tie(name, rest) = FirstKeyName(rest)) {
        auto& subkey = at->subkeys[LowerCase(name)];
        if (!subkey) {
            subkey = std::make_unique<Key>();
            subkey->name = name;
        }
        at = subkey.get();
    }
    return *at;
}

int MemoryStore::Query(const StoreKey& key, std::string_view name, StoredValue& out) {
    const Found found = Find(key, store_right::Query);
    if (found.error) return Fail(found.error);
    const auto value = found.key->values.find(LowerCase(name));
    if (value == found.key->values.end()) return Fail(store_error::NotFound);
    out = value->second.value;
    return store_error::None;
}

int MemoryStore::Set(const StoreKey& key, std::string_view name, const StoredValue& value) {
    if (!key.machine.empty()) return Fail(store_error::BadNetworkPath);
    if ((key.access & store_right::Set) == 0) return Fail(store_error::AccessDenied);
    if (const int error = Refused(key, name)) return Fail(error);
    Value& stored = Make(key).values.try_emplace(LowerCase(name), Value{std::string(name), {}}).first->second;
    stored.value = value;
    return store_error::None;
}

int MemoryStore::DeleteValue(const StoreKey& key, std::string_view name) {
    const Found found = Find(key, store_right::Set);
    if (found.error) return Fail(found.error);
    if (const int error = Refused(key, name)) return Fail(error);
    return found.key->values.erase(LowerCase(name)) ? store_error::None : Fail(store_error::NotFound);
}

int MemoryStore::DeleteKey(const StoreKey& key) {
    const Found found = Find(key, store_right::Set);
    if (found.error) return Fail(found.error);
    if (!found.parent || !found.key->subkeys.empty()) return Fail(store_error::AccessDenied);
    if (const int error = Refused(key, {})) return Fail(error);
    found.parent->subkeys.erase(LowerCase(found.key->name));
    return store_error::None;
}

int MemoryStore::SubKeys(const StoreKey& key, std::vector<std::string>& out) {
    out.clear();
    const Found found = Find(key, store_right::Query);
    if (found.error) return Fail(found.error);
    for (const auto& [folded, subkey] : found.key->subkeys)
        out.push_back(subkey->name);
    return store_error::None;
}

int MemoryStore::ValueNames(const StoreKey& key, std::vector<std::string>& out) {
    out.clear();
    const Found found = Find(key, store_right::Query);
    if (found.error) return Fail(found.error);
    for (const auto& [folded, value] : found.key->values)
        out.push_back(value.name);
    return store_error::None;
}

} // namespace quorvane
