#pragma once

#include "platform/store.h"

#include <functional>
#include <map>
#include <memory>

namespace quorvane {

// The tree in memory: for tests, for settings read from a file, and where the stored one cannot be written.
class MemoryStore final : public Store {
  public:
    bool Lasting() const override { return false; }

    int Query(const StoreKey& key, std::string_view name, StoredValue& out) override;
    int Set(const StoreKey& key, std::string_view name, const StoredValue& value) override;
    int DeleteValue(const StoreKey& key, std::string_view name) override;
    int DeleteKey(const StoreKey& key) override;
    int SubKeys(const StoreKey& key, std::vector<std::string>& out) override;
    int ValueNames(const StoreKey& key, std::vector<std::string>& out) override;
    int LastError() const override { return lastError_; }

    // Asked before each operation that changes the tree; an answer other than 0 becomes the operation's.
    std::function<int(const StoreKey& key, std::string_view name)> refuse;

  private:
    struct Value {
        std::string name;
        StoredValue value;
    };
    struct Key {
        std::string name;
        std::map<std::string, std::unique_ptr<Key>, std::less<>> subkeys; // by lower-case name
        std::map<std::string, Value, std::less<>> values;
    };
    struct Found {
        int error = store_error::None;
        Key* key = nullptr;
        Key* parent = nullptr;
    };

    Found Find(const StoreKey& key, std::uint32_t right);
    Key& Make(const StoreKey& key);
    int Refused(const StoreKey& key, std::string_view name) const { return refuse ? refuse(key, name) : 0; }
    int Fail(int error) { return lastError_ = error; }

    std::map<Hive, Key> hives_;
    int lastError_ = store_error::None;
};

} // namespace quorvane
