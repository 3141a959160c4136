#pragma once

#include "platform/linux/base/settings_file.h"
#include "platform/linux/base/sqlite.h"
#include "platform/shared/memory_store.h"
#include "platform/store.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

// The tree in one SQLite file. Every write is a transaction of its own or a part of the batch around it, in a
// write-ahead log, so that a process killed at any moment leaves each value old or new; other processes may
// use the same file.
class SqliteStore final : public Store {
  public:
    // Opens the file, making it and its folders where they are missing. A damaged file is renamed and a fresh
    // one begun with what can still be read; `why` then says so. Null, with the reason in `why`, where the
    // file cannot be used, now or at all: it stays as it is.
    static std::unique_ptr<SqliteStore> Open(const std::string& file, std::string& why);
    // What can be read of a file, in memory. Nothing is made, renamed or locked. Never null; what kept it
    // from reading the whole is in `why`, which is empty also where there is no file.
    static std::unique_ptr<MemoryStore> ReadIntoMemory(const std::string& file, std::string& why);

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
    enum class Transaction { None, Reading, Writing };

    // An open file with what is asked of it.
    struct Connection {
        int Open(const std::string& file, std::string& why); // SQLite's answer
        int Prepare();

        Database database; // outlives the statements
        Statement query, set, deleteValue, valueNames;
        Statement findKey, addKey, deleteKey, deleteKeyValues, subKeys;
        FileIdentity identity;
    };

    explicit SqliteStore(std::string file)
        : file_(std::move(file)) {}

    std::string TakeOver(const std::vector<StoreEntry>& entries);
    int FollowFile();
    void LeaveOthersAlone();
    int Run(const char* sql);
    int StartReading();
    int StartWriting();
    int Commit();
    int EndWrite(int error);
    int MakeKey(const StoreKey& key, const std::string& path);
    int KeyExists(const std::string& path, bool& exists);
    int ReadNames(const StoreKey& key, sqlite3_stmt* statement, std::vector<std::string>& out);
    int Fail(int error);

    std::string file_;
    Connection connection_;
    Transaction transaction_ = Transaction::None;
    std::string madeKey_; // by its folded path, within one writing transaction
    int batchDepth_ = 0;
    int lastError_ = store_error::None;
};

} // namespace quorvane
