#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The persistent tree of keys and named values: the registry on Windows, one SQLite file on Linux, memory for
// tests and for settings read from a file. Key and value names keep their case and are compared without it;
// "\" parts the keys of a path. Operations answer a system error number, 0 for success.
//
// A store holds bytes. The rules by which the rest of the system reads and writes them (terminators, the
// empty text that reads back as nothing) stand once, in config/registry.h.

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, Users = 0x80000003 };

enum class ValueType : std::uint32_t { Text = 1, Integer = 4 };

namespace store_error {
inline constexpr int None = 0;
inline constexpr int NotFound = 2;        // the key or the value does not exist
inline constexpr int AccessDenied = 5;    // not allowed, or the key still has subkeys
inline constexpr int WriteFault = 29;     // the medium refused the data
inline constexpr int BadNetworkPath = 53; // a machine was named that cannot be reached
inline constexpr int Damaged = 1009;      // the medium holds no tree any more
} // namespace store_error

// The rights of StoreKey::access that stores without guards of their own look at.
namespace store_right {
inline constexpr std::uint32_t Query = 1;
inline constexpr std::uint32_t Set = 2;
} // namespace store_right

// Where an operation works. `machine` is blank for this computer; `access` is the mask of rights that the key
// is opened with, for systems that guard their keys. A "\" at the end of the path counts for nothing.
struct StoreKey {
    std::string_view machine;
    Hive hive = Hive::CurrentUser;
    std::string_view path;
    std::uint32_t access = 63;
};

struct StoredValue {
    ValueType type = ValueType::Text;
    // Text: its bytes and one zero byte at the end, or nothing at all for the empty text.
    // Integer: four bytes, the low one first.
    // Any other type of the registry, as other programs leave and files bring them, goes through with its
    // number; its bytes are kept as they are, but for the texts among them (2, with variables, and 7,
    // several), which are UTF-8 with the zero bytes that end them.
    std::string data;
};

class Store {
  public:
    virtual ~Store() = default;

    // False where what is written is gone when the process ends.
    virtual bool Lasting() const { return true; }

    virtual int Query(const StoreKey& key, std::string_view name, StoredValue& out) = 0;
    // Creates the key and its parents where they are missing.
    virtual int Set(const StoreKey& key, std::string_view name, const StoredValue& value) = 0;
    virtual int DeleteValue(const StoreKey& key, std::string_view name) = 0;
    // The key with its values; AccessDenied while it has subkeys.
    virtual int DeleteKey(const StoreKey& key) = 0;
    // Names of the direct subkeys and of the values, in the order of the store.
    virtual int SubKeys(const StoreKey& key, std::vector<std::string>& out) = 0;
    virtual int ValueNames(const StoreKey& key, std::vector<std::string>& out) = 0;

    // Between the two calls writes may be gathered; each of them is still whole, old or new, whatever
    // happens. A batch never spans a wait for a person. Calls nest.
    virtual void BeginBatch() {}
    virtual int EndBatch() { return store_error::None; }

    // The number of the last operation that failed, for error reports.
    virtual int LastError() const = 0;
};

// A batch for the length of a scope.
class StoreBatch {
  public:
    explicit StoreBatch(Store& store)
        : store_(store) {
        store_.BeginBatch();
    }
    ~StoreBatch() {
        if (open_) store_.EndBatch();
    }
    StoreBatch(const StoreBatch&) = delete;
    StoreBatch& operator=(const StoreBatch&) = delete;

    // Ends the batch before the scope does: the answer of EndBatch.
    int End() {
        open_ = false;
        return store_.EndBatch();
    }

    // Runs `wait`, which may wait for a person, outside the batch.
    template<typename Wait>
    void Interrupt(Wait&& wait) {
        End();
        wait();
        store_.BeginBatch();
        open_ = true;
    }

  private:
    Store& store_;
    bool open_ = true;
};

} // namespace quorvane
