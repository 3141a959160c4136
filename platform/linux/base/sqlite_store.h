#pragma once

#include "platform/shared/memory_store.h"
#include "platform/store.h"

#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace quorvane {

struct SqliteClose {
    void operator()(sqlite3* database) const;
    void operator()(sqlite3_stmt* statement) const;
};
using Database = std::unique_ptr<sqlite3, SqliteClose>;
using Statement = std::unique_ptr<sqlite3_stmt, SqliteClose>;

// The tree in one SQLite file. Every write is a transaction of its own or a part of the batch around it, in a
// write-ahead log, so that a process killed at any moment leaves each value old or new; other processes may
// use the same file.
class SqliteStore final : public Store {
  public:
    // Opens the file, making it and its folders where they are missing. A damaged file is renamed and a fresh
    // one begun; `why` then says so. Null, with the reason in `why`, where the file cannot be used.
    static std::unique_ptr<SqliteStore> Open(const std::string& file, std::string& why);
    // What can be read of a file that cannot be written, in memory. Never null.
    static std::unique_ptr<MemoryStore> ReadIntoMemory(const std::string& file);

    ~SqliteStore() override;

    int Query(const StoreKey& key, std::string_view name, StoredValue& out) override;
    int Set(const StoreKey& key, std::string_view name, const StoredValue& value) override;
    int DeleteValue(const StoreKey& key, std::string_view name) override;
    int DeleteKey(const StoreKey& key) override;
    int SubKeys(const StoreKey& key, std::vector<std::string>& out) override;
    int ValueNames(const StoreKey& key, std::vector<std::string>& out) override;
    void BeginBatch() override;
    int EndBatch() override;
    int LastError() const override { return lastError_; }

  private:
    enum class Opened { Well, Damaged, Unusable };
    enum class Transaction { None, Reading, Writing };

    SqliteStore() = default;

    Opened TryOpen(const std::string& file, std::string& why);
    bool Prepare();
    int Run(const char* sql);
    int StartReading();
    int StartWriting();
    int Commit();
    int EndWrite(int error);
    int MakeKey(const StoreKey& key, const std::string& path);
    int KeyExists(const std::string& path, bool& exists);
    int ReadNames(const StoreKey& key, sqlite3_stmt* statement, std::vector<std::string>& out);
    int Fail(int error);

    Database database_;
    Statement query_, set_, deleteValue_, valueNames_;
    Statement findKey_, addKey_, deleteKey_, deleteKeyValues_, subKeys_;
    Transaction transaction_ = Transaction::None;
    std::string madeKey_; // by its folded path, within one writing transaction
    int batchDepth_ = 0;
    int lastError_ = store_error::None;
};

} // namespace quorvane
