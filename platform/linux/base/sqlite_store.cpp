#include "platform/linux/base/sqlite_store.h"

#include "core/text.h"
#include "platform/shared/key_path.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
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

std::string ColumnBytes(sqlite3_stmt* statement, int column) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return bytes ? std::string(bytes, length) : std::string();
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

// Holds other processes back while a file is opened, so that they see it either not yet or wholly begun.
class OpeningLock {
  public:
    explicit OpeningLock(const std::string& file)
        : descriptor_(open((file + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        if (descriptor_ >= 0) flock(descriptor_, LOCK_EX);
    }
    ~OpeningLock() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    OpeningLock(const OpeningLock&) = delete;
    OpeningLock& operator=(const OpeningLock&) = delete;

  private:
    int descriptor_;
};

// Renames the file together with its log, which must never meet a fresh file. The new name, or nothing.
std::string SetAside(const std::string& file) {
    std::string aside = file + ".damaged";
    for (int number = 2; std::filesystem::exists(aside); ++number) {
        aside = file + ".damaged-" + std::to_string(number);
    }
    std::error_code error;
    std::filesystem::rename(file, aside, error);
    if (error) return {};
    for (const char* companion : {"-wal", "-shm"}) {
        std::error_code missing;
        std::filesystem::rename(file + companion, aside + companion, missing);
    }
    return aside;
}

bool IsWhole(sqlite3* database) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, "PRAGMA quick_check(1)", -1, &statement, nullptr);
    const Statement owner(statement);
    return statement && sqlite3_step(statement) == SQLITE_ROW && ColumnBytes(statement, 0) == "ok";
}

bool MakeFolderOf(const std::string& file) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    if (std::filesystem::is_directory(folder, error)) return true;
    std::filesystem::create_directories(folder, error);
    if (error) return false;
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    return true;
}

// A file name as SQLite's own URI, for the options that only a URI can carry.
std::string FileUri(const std::string& file, const char* options) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string uri = "file:";
    for (const char c : file) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '%' || c == '?' || c == '#' || byte < 0x20) {
            uri.append({'%', Digits[byte >> 4], Digits[byte & 0xF]});
        } else {
            uri.push_back(c);
        }
    }
    return uri + "?" + options;
}

bool CopyEntries(const std::string& uri, MemoryStore& out) {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(uri.c_str(), &raw, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    const Database database(raw);
    if (opened != SQLITE_OK) return false;
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(raw,
                       "SELECT hive, shown, entries.name, type, data FROM entries JOIN keys USING (path)", -1,
                       &statement, nullptr);
    const Statement owner(statement);
    if (!statement) return false;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        const auto hive = static_cast<Hive>(sqlite3_column_int64(statement, 0));
        const std::string path = ColumnBytes(statement, 1);
        const StoredValue value{static_cast<ValueType>(sqlite3_column_int(statement, 3)),
                                ColumnBytes(statement, 4)};
        out.Set({"", hive, path}, ColumnBytes(statement, 2), value);
    }
    return step == SQLITE_DONE;
}

} // namespace

void SqliteClose::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

void SqliteClose::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

std::unique_ptr<SqliteStore> SqliteStore::Open(const std::string& file, std::string& why) {
    why.clear();
    if (!MakeFolderOf(file)) {
        why = "The folder of the settings file [" + file + "] cannot be made: " + std::strerror(errno) + ".";
        return nullptr;
    }
    const OpeningLock lock(file);
    std::unique_ptr<SqliteStore> store(new SqliteStore);
    std::string reason;
    Opened opened = store->TryOpen(file, reason);
    if (opened == Opened::Damaged) {
        store.reset(new SqliteStore); // closes the damaged file before it is renamed
        const std::string aside = SetAside(file);
        why = "The settings file [" + file + "] is damaged (" + reason + ").";
        if (aside.empty()) {
            why += " It could not be set aside.";
            return nullptr;
        }
        why += " It was set aside as [" + aside + "], and a fresh one was begun.";
        opened = store->TryOpen(file, reason);
    }
    if (opened == Opened::Well) return store;
    why = "The settings file [" + file + "] cannot be used: " + reason + ".";
    return nullptr;
}

std::unique_ptr<MemoryStore> SqliteStore::ReadIntoMemory(const std::string& file) {
    // A file in a folder that cannot be written opens only as one that nobody changes.
    for (const char* options : {"mode=ro", "mode=ro&immutable=1"}) {
        auto store = std::make_unique<MemoryStore>();
        if (CopyEntries(FileUri(file, options), *store)) return store;
    }
    return std::make_unique<MemoryStore>();
}

SqliteStore::~SqliteStore() {
    if (transaction_ != Transaction::None) Commit();
}

SqliteStore::Opened SqliteStore::TryOpen(const std::string& file, std::string& why) {
    sqlite3* raw = nullptr;
    int error = sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    database_.reset(raw);
    if (!raw) {
        why = "no memory";
        return Opened::Unusable;
    }
    sqlite3_busy_timeout(raw, WaitForOthersMilliseconds);
    if (error == SQLITE_OK) {
        error = sqlite3_exec(raw, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL", nullptr, nullptr,
                             nullptr);
    }
    // The empty transaction fails where the file can be read but not written.
    if (error == SQLITE_OK) error = sqlite3_exec(raw, "BEGIN IMMEDIATE; COMMIT", nullptr, nullptr, nullptr);
    if (error == SQLITE_OK && !IsWhole(raw)) error = SQLITE_CORRUPT;
    if (error == SQLITE_OK) error = sqlite3_exec(raw, Tables, nullptr, nullptr, nullptr);
    if (error == SQLITE_OK && Prepare()) return Opened::Well;
    // A file that opens but does not take our statements holds other tables: no tree of ours.
    const bool damaged =
        error == SQLITE_OK || error == SQLITE_ERROR || StoreError(error) == store_error::Damaged;
    why = error == SQLITE_CORRUPT ? sqlite3_errstr(error) : sqlite3_errmsg(raw);
    return damaged ? Opened::Damaged : Opened::Unusable;
}

bool SqliteStore::Prepare() {
    const std::pair<Statement*, const char*> statements[] = {
        {&query_, "SELECT type, data FROM entries WHERE path = ?1 AND folded = ?2"},
        // The first spelling of a name stays, and a value that is the same already costs no page.
        {&set_, "INSERT INTO entries(path, folded, name, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
                "ON CONFLICT(path, folded) DO UPDATE SET type = excluded.type, data = excluded.data "
                "WHERE type <> excluded.type OR data <> excluded.data"},
        {&deleteValue_, "DELETE FROM entries WHERE path = ?1 AND folded = ?2"},
        {&valueNames_, "SELECT name FROM entries WHERE path = ?1 ORDER BY folded"},
        {&findKey_, "SELECT 1 FROM keys WHERE path = ?1"},
        {&addKey_, "INSERT OR IGNORE INTO keys(path, parent, name, shown, hive) VALUES(?1, ?2, ?3, ?4, ?5)"},
        {&deleteKey_, "DELETE FROM keys WHERE path = ?1"},
        {&deleteKeyValues_, "DELETE FROM entries WHERE path = ?1"},
        {&subKeys_, "SELECT name FROM keys WHERE parent = ?1 ORDER BY path"},
    };
    for (const auto& [owner, sql] : statements) {
        sqlite3_stmt* statement = nullptr;
        const int error =
            sqlite3_prepare_v3(database_.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
        owner->reset(statement);
        if (error != SQLITE_OK) return false;
    }
    return true;
}

int SqliteStore::Fail(int error) {
    if (error) lastError_ = error;
    return error;
}

int SqliteStore::Run(const char* sql) {
    return StoreError(sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr));
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
    if (transaction_ == Transaction::Writing && sqlite3_get_autocommit(database_.get()))
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
    Use use(findKey_, path);
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
            Use use(addKey_, above, parent, name, shown);
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
    Use use(query_, path, folded);
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
    Use use(set_, path, folded, name);
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
    int error = Use(deleteValue_, path, folded).Run();
    if (!error && sqlite3_changes(database_.get()) == 0) error = store_error::NotFound;
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
    if (!error && Use(subKeys_, path).Step() == SQLITE_ROW) error = store_error::AccessDenied;
    if (!error) error = Use(deleteKeyValues_, path).Run();
    if (!error) error = Use(deleteKey_, path).Run();
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
    return ReadNames(key, subKeys_.get(), out);
}

int SqliteStore::ValueNames(const StoreKey& key, std::vector<std::string>& out) {
    return ReadNames(key, valueNames_.get(), out);
}

} // namespace quorvane
