#include "platform/linux/base/sqlite_store.h"

#include "core/text.h"
#include "platform/linux/base/salvage.h"
#include "platform/shared/key_path.h"

#include <cerrno>
#include <cstring>
#include <tuple>
#include <utility>

namespace quorvane {
namespace {

constexpr int WaitForOthersMilliseconds = 10'000;

// `path` is the whole path in lower case with the hive in front, so that one look-up finds a value; `shown`
// is the path as it was written first. `parent` is empty at the top of a hive.
constexpr const char* Tables = "CREATE TABLE IF NOT EXISTS keys("
                               "path TEXT PRIMARY KEY, parent TEXT NOT NULL, hive INTEGER NOT NULL,"
                               "name TEXT NOT NULL, shown TEXT NOT NULL) WITHOUT ROWID;"
                               "CREATE INDEX IF NOT EXISTS subkeys ON keys(parent);"
                               "CREATE TABLE IF NOT EXISTS entries("
                               "path TEXT NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL,"
                               "type INTEGER NOT NULL, data BLOB NOT NULL,"
                               "PRIMARY KEY(path, folded)) WITHOUT ROWID";

std::string HivePath(Hive hive) {
    return std::to_string(static_cast<std::uint32_t>(hive));
}

std::string FoldedPath(const StoreKey& key) {
    std::string path = HivePath(key.hive);
    for (auto [name, rest] = FirstKeyName(key.path); !name.empty();
         std::tie(name, rest) = FirstKeyName(rest)) {
        path.append("\\").append(name);
    }
    return LowerCase(path);
}

bool IsHive(const std::string& foldedPath) {
    return foldedPath.find('\\') == std::string::npos;
}

int StoreError(int sqliteError) {
    switch (sqliteError & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
        return store_error::None;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return store_error::AccessDenied;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return store_error::Damaged;
    default:
        return store_error::WriteFault;
    }
}

void Bind(sqlite3_stmt* statement, int place, std::string_view text) {
    // A null pointer would bind NULL, also at length 0.
    sqlite3_bind_text64(statement, place, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                        SQLITE_UTF8);
}

// One use of a prepared statement; what was bound must outlive it.
class Use {
  public:
    template<typename... Texts>
    explicit Use(const Statement& statement, const Texts&... texts)
        : statement_(statement.get()) {
        int place = 0;
        (Bind(statement_, ++place, texts), ...);
    }
    ~Use() { sqlite3_reset(statement_); }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    int Step() { return sqlite3_step(statement_); }
    // For statements that give no rows.
    int Run() { return StoreError(Step()); }
    sqlite3_stmt* get() const { return statement_; }

  private:
    sqlite3_stmt* statement_;
};

int StoreEntries(const std::vector<StoreEntry>& entries, Store& store) {
    StoreBatch batch(store);
    int error = store_error::None;
    for (const StoreEntry& entry : entries) {
        if (const int refused = store.Set({"", entry.hive, entry.key}, entry.name, entry.value))
            error = refused;
    }
    const int refused = batch.End();
    return error ? error : refused;
}

} // namespace

std::unique_ptr<SqliteStore> SqliteStore::Open(const std::string& file, std::string& why) {
    why.clear();
    if (!MakeFolderOf(file)) {
        why = "The folder of the settings file [" + file + "] cannot be made: " + std::strerror(errno) + ".";
        return nullptr;
    }
    const OpeningLock lock(file);
    if (!lock.Free()) {
        why = "The settings file [" + file +
              "] cannot be used: another program is opening it and does not end.";
        return nullptr;
    }
    std::unique_ptr<SqliteStore> store(new SqliteStore(file));
    std::string reason;
    int error = store->connection_.Open(file, reason);
    if (TellsDamage(error)) {
        store->connection_ = {}; // closes the damaged file before it is renamed
        const std::string aside = SetAside(file);
        why = "The settings file [" + file + "] is damaged (" + reason + ").";
        if (aside.empty()) {
            why += " It could not be set aside.";
            return nullptr;
        }
        why += " It was set aside as [" + aside + "], and a fresh one was begun";
        error = store->connection_.Open(file, reason);
        if (error == SQLITE_OK) why += store->TakeOver(SalvageEntries(aside));
    }
    if (error == SQLITE_OK) return store;
    why = "The settings file [" + file + "] cannot be used: " + reason + ".";
    return nullptr;
}

// The end of the sentence that tells of the fresh file.
std::string SqliteStore::TakeOver(const std::vector<StoreEntry>& entries) {
    if (entries.empty()) return ".";
    if (StoreEntries(entries, *this) != store_error::None) return "; what could still be read did not go in.";
    return " with the " + std::to_string(entries.size()) + " values that could still be read.";
}

std::unique_ptr<MemoryStore> SqliteStore::ReadIntoMemory(const std::string& file, std::string& why) {
    why.clear();
    auto store = std::make_unique<MemoryStore>();
    if (!IdentityOf(file)) return store;
    std::vector<StoreEntry> entries;
    std::string reason;
    const int error = ReadEntries(file, entries, reason);
    if (error != SQLITE_OK) {
        const bool damaged = TellsDamage(error);
        why = "The settings file [" + file + (damaged ? "] is damaged (" : "] cannot be read (") + reason +
              ").";
        if (damaged) entries = SalvageEntries(file);
        if (!entries.empty()) why += " What can still be read of it is used.";
    }
    StoreEntries(entries, *store);
    return store;
}

SqliteStore::~SqliteStore() {
    if (transaction_ != Transaction::None) Commit();
    LeaveOthersAlone();
}

int SqliteStore::Connection::Open(const std::string& file, std::string& why) {
    sqlite3* raw = nullptr;
    int error = sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    database.reset(raw);
    if (!raw) {
        why = "no memory";
        return SQLITE_NOMEM;
    }
    const auto run = [&](const char* sql) {
        if (error == SQLITE_OK) error = sqlite3_exec(raw, sql, nullptr, nullptr, nullptr);
    };
    sqlite3_busy_timeout(raw, WaitForOthersMilliseconds);
    run("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL");
    run("BEGIN IMMEDIATE; COMMIT"); // fails where the file can be read but not written
    std::string damage;
    if (error == SQLITE_OK && (error = CheckFile(raw, damage)) == SQLITE_OK) damage.clear();
    run(Tables);
    if (error == SQLITE_OK) error = Prepare();
    if (error != SQLITE_OK) why = damage.empty() ? sqlite3_errmsg(raw) : damage;
    identity = IdentityOf(file);
    return error;
}

int SqliteStore::Connection::Prepare() {
    const std::pair<Statement*, const char*> statements[] = {
        {&query, "SELECT type, data FROM entries WHERE path = ?1 AND folded = ?2"},
        // The first spelling of a name stays, and a value that is the same already costs no page.
        {&set, "INSERT INTO entries(path, folded, name, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
               "ON CONFLICT(path, folded) DO UPDATE SET type = excluded.type, data = excluded.data "
               "WHERE type <> excluded.type OR data <> excluded.data"},
        {&deleteValue, "DELETE FROM entries WHERE path = ?1 AND folded = ?2"},
        {&valueNames, "SELECT name FROM entries WHERE path = ?1 ORDER BY folded"},
        {&findKey, "SELECT 1 FROM keys WHERE path = ?1"},
        {&addKey, "INSERT OR IGNORE INTO keys(path, parent, name, shown, hive) VALUES(?1, ?2, ?3, ?4, ?5)"},
        {&deleteKey, "DELETE FROM keys WHERE path = ?1"},
        {&deleteKeyValues, "DELETE FROM entries WHERE path = ?1"},
        {&subKeys, "SELECT name FROM keys WHERE parent = ?1 ORDER BY path"},
    };
    for (const auto& [statement, sql] : statements) {
        *statement = Prepared(database.get(), sql);
        if (!*statement) return sqlite3_errcode(database.get());
    }
    return SQLITE_OK;
}

// What is written to a file that was removed or replaced would be gone with it. Where nothing stands in its
// place the tree is written anew, from the file that is still open; where another file does, that one counts.
int SqliteStore::FollowFile() {
    const FileIdentity now = IdentityOf(file_);
    if (now && now == connection_.identity) return store_error::None;
    std::string why;
    const std::unique_ptr<SqliteStore> fresh = Open(file_, why);
    if (!fresh) return store_error::WriteFault;
    if (!now) {
        std::vector<StoreEntry> entries;
        if (ReadEntries(connection_.database.get(), entries) != SQLITE_OK ||
            StoreEntries(entries, *fresh) != store_error::None)
            return store_error::WriteFault;
    }
    LeaveOthersAlone();
    std::swap(connection_, fresh->connection_);
    return store_error::None;
}

// The last connection to a file folds the log into it and removes the log, by its name: where the file is not
// the one that was opened any more, that would be the log of another.
void SqliteStore::LeaveOthersAlone() {
    if (connection_.database && IdentityOf(file_) != connection_.identity)
        sqlite3_db_config(connection_.database.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

int SqliteStore::Fail(int error) {
    if (error) lastError_ = error;
    return error;
}

int SqliteStore::Run(const char* sql) {
    return StoreError(sqlite3_exec(connection_.database.get(), sql, nullptr, nullptr, nullptr));
}

// Within a batch the reads see one state of the tree and spare the locks of single statements.
int SqliteStore::StartReading() {
    if (batchDepth_ == 0 || transaction_ != Transaction::None) return store_error::None;
    const int error = Run("BEGIN");
    if (!error) transaction_ = Transaction::Reading;
    return error;
}

int SqliteStore::StartWriting() {
    if (transaction_ == Transaction::Writing) return store_error::None;
    // A reading transaction cannot always become a writing one, so it ends here.
    if (transaction_ == Transaction::Reading) Commit();
    if (const int error = FollowFile()) return error;
    const int error = Run("BEGIN IMMEDIATE");
    if (!error) transaction_ = Transaction::Writing;
    madeKey_.clear();
    return error;
}

int SqliteStore::Commit() {
    const int error = Run("COMMIT");
    if (error) Run("ROLLBACK");
    transaction_ = Transaction::None;
    return error;
}

// Ends one write with what it answered: outside a batch it is a transaction of its own.
int SqliteStore::EndWrite(int error) {
    // Some failures, a full disk for one, have taken the whole transaction back already.
    if (transaction_ == Transaction::Writing && sqlite3_get_autocommit(connection_.database.get()))
        transaction_ = Transaction::None;
    if (batchDepth_ == 0 && transaction_ != Transaction::None) {
        const int commitError = Commit();
        if (!error) error = commitError;
    }
    return Fail(error);
}

void SqliteStore::BeginBatch() {
    ++batchDepth_;
}

int SqliteStore::EndBatch() {
    if (batchDepth_ > 0) --batchDepth_;
    if (batchDepth_ > 0 || transaction_ == Transaction::None) return store_error::None;
    return Fail(Commit());
}

int SqliteStore::KeyExists(const std::string& path, bool& exists) {
    exists = IsHive(path);
    if (exists) return store_error::None;
    Use use(connection_.findKey, path);
    const int step = use.Step();
    exists = step == SQLITE_ROW;
    return StoreError(step);
}

// `path` is the key's folded path. The key that was made last is not looked for again in its transaction.
int SqliteStore::MakeKey(const StoreKey& key, const std::string& path) {
    if (path == madeKey_) return store_error::None;
    bool exists = false;
    if (const int error = KeyExists(path, exists)) return error;
    if (!exists) {
        std::string above = HivePath(key.hive);
        std::string shown;
        for (auto [name, rest] = FirstKeyName(key.path); !name.empty();
             std::tie(name, rest) = FirstKeyName(rest)) {
            const std::string parent = above;
            above.append("\\").append(LowerCase(name));
            shown.append(shown.empty() ? "" : "\\").append(name);
            Use use(connection_.addKey, above, parent, name, shown);
            sqlite3_bind_int64(use.get(), 5, static_cast<std::int64_t>(key.hive));
            if (const int error = use.Run()) return error;
        }
    }
    madeKey_ = path;
    return store_error::None;
}

int SqliteStore::Query(const StoreKey& key, std::string_view name, StoredValue& out) {
    if (!key.machine.empty()) return Fail(store_error::BadNetworkPath);
    if ((key.access & store_right::Query) == 0) return Fail(store_error::AccessDenied);
    if (const int error = StartReading()) return Fail(error);
    const std::string path = FoldedPath(key);
    const std::string folded = LowerCase(name);
    Use use(connection_.query, path, folded);
    const int step = use.Step();
    if (step == SQLITE_DONE) return Fail(store_error::NotFound);
    if (step != SQLITE_ROW) return Fail(StoreError(step));
    out.type = static_cast<ValueType>(sqlite3_column_int(use.get(), 0));
    out.data = ColumnBytes(use.get(), 1);
    return store_error::None;
}

int SqliteStore::Set(const StoreKey& key, std::string_view name, const StoredValue& value) {
    if (!key.machine.empty()) return Fail(store_error::BadNetworkPath);
    if ((key.access & store_right::Set) == 0) return Fail(store_error::AccessDenied);
    if (const int error = StartWriting()) return Fail(error);
    const std::string path = FoldedPath(key);
    if (const int error = MakeKey(key, path)) return EndWrite(error);
    const std::string folded = LowerCase(name);
    Use use(connection_.set, path, folded, name);
    sqlite3_bind_int(use.get(), 4, static_cast<int>(value.type));
    sqlite3_bind_blob64(use.get(), 5, value.data.data(), value.data.size(), SQLITE_STATIC);
    const int error = use.Run();
    sqlite3_reset(use.get()); // a statement in use would hold up the commit
    return EndWrite(error);
}

int SqliteStore::DeleteValue(const StoreKey& key, std::string_view name) {
    if (!key.machine.empty()) return Fail(store_error::BadNetworkPath);
    if ((key.access & store_right::Set) == 0) return Fail(store_error::AccessDenied);
    if (const int error = StartWriting()) return Fail(error);
    const std::string path = FoldedPath(key);
    const std::string folded = LowerCase(name);
    int error = Use(connection_.deleteValue, path, folded).Run();
    if (!error && sqlite3_changes(connection_.database.get()) == 0) error = store_error::NotFound;
    return EndWrite(error);
}

int SqliteStore::DeleteKey(const StoreKey& key) {
    if (!key.machine.empty()) return Fail(store_error::BadNetworkPath);
    if ((key.access & store_right::Set) == 0) return Fail(store_error::AccessDenied);
    if (const int error = StartWriting()) return Fail(error);
    const std::string path = FoldedPath(key);
    if (IsHive(path)) return EndWrite(store_error::AccessDenied);
    bool exists = false;
    madeKey_.clear();
    int error = KeyExists(path, exists);
    if (!error && !exists) error = store_error::NotFound;
    if (!error && Use(connection_.subKeys, path).Step() == SQLITE_ROW) error = store_error::AccessDenied;
    if (!error) error = Use(connection_.deleteKeyValues, path).Run();
    if (!error) error = Use(connection_.deleteKey, path).Run();
    return EndWrite(error);
}

int SqliteStore::ReadNames(const StoreKey& key, sqlite3_stmt* statement, std::vector<std::string>& out) {
    out.clear();
    if (!key.machine.empty()) return Fail(store_error::BadNetworkPath);
    if ((key.access & store_right::Query) == 0) return Fail(store_error::AccessDenied);
    if (const int error = StartReading()) return Fail(error);
    const std::string path = FoldedPath(key);
    bool exists = false;
    if (const int error = KeyExists(path, exists)) return Fail(error);
    if (!exists) return Fail(store_error::NotFound);
    Bind(statement, 1, path);
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW)
        out.push_back(ColumnBytes(statement, 0));
    sqlite3_reset(statement);
    return Fail(StoreError(step));
}

int SqliteStore::SubKeys(const StoreKey& key, std::vector<std::string>& out) {
    return ReadNames(key, connection_.subKeys.get(), out);
}

int SqliteStore::ValueNames(const StoreKey& key, std::vector<std::string>& out) {
    return ReadNames(key, connection_.valueNames.get(), out);
}

} // namespace quorvane
