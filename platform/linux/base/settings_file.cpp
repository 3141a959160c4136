#include "platform/linux/base/settings_file.h"

#include "platform/linux/base/sqlite.h"

#include <chrono>
#include <filesystem>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr int LockPollMilliseconds = 20;
// A process that ends folds the log into the file; nobody else keeps a reader out, and not for long.
constexpr int ReaderPatienceMilliseconds = 500;

// SQLITE_OK, or SQLITE_CORRUPT with what is wrong; otherwise what kept the check from an answer.
int QuickCheck(sqlite3* database, std::string& why) {
    const Statement check = Prepared(database, "PRAGMA quick_check(1)");
    const int step = check ? sqlite3_step(check.get()) : sqlite3_errcode(database);
    if (step != SQLITE_ROW) return step;
    why = ColumnBytes(check.get(), 0);
    return why == "ok" ? SQLITE_OK : SQLITE_CORRUPT;
}

// Reads the file and its log from end to end, as the database does; the disk's answer.
int ReadThrough(sqlite3* database) {
    for (const int which : {SQLITE_FCNTL_FILE_POINTER, SQLITE_FCNTL_JOURNAL_POINTER}) {
        sqlite3_file* file = nullptr;
        sqlite3_file_control(database, "main", which, &file);
        if (!file || !file->pMethods) continue;
        sqlite3_int64 size = 0;
        int error = file->pMethods->xFileSize(file, &size);
        char piece[4096];
        for (sqlite3_int64 at = 0; at < size && error == SQLITE_OK; at += sizeof piece) {
            error = file->pMethods->xRead(file, piece, sizeof piece, at);
            if (error == SQLITE_IOERR_SHORT_READ) error = SQLITE_OK;
        }
        if (error != SQLITE_OK) return error;
    }
    return SQLITE_OK;
}

bool HasTables(sqlite3* database) {
    const Statement tables = Prepared(database, "SELECT 1 FROM sqlite_schema LIMIT 1");
    return !tables || sqlite3_step(tables.get()) != SQLITE_DONE;
}

} // namespace

OpeningLock::OpeningLock(const std::string& file, std::chrono::milliseconds longestWait)
    : descriptor_(open((file + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (descriptor_ < 0) return;
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (!(free_ = flock(descriptor_, LOCK_EX | LOCK_NB) == 0) && std::chrono::steady_clock::now() < end)
        poll(nullptr, 0, LockPollMilliseconds);
}

OpeningLock::~OpeningLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

FileIdentity IdentityOf(const std::string& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) return std::nullopt;
    return std::pair(status.st_dev, status.st_ino);
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

bool TellsDamage(int sqliteError) {
    const int kind = sqliteError & 0xFF;
    // A file that opens but does not take our statements holds other tables.
    return kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_ERROR;
}

int CheckFile(sqlite3* database, std::string& why) {
    // The check tells a page that the disk would not give for the moment in the words of any other damage.
    for (int attempt = 1; attempt <= 2; ++attempt) {
        const int answer = QuickCheck(database, why);
        if (answer != SQLITE_CORRUPT) return answer;
        if (const int fault = ReadThrough(database)) {
            why = sqlite3_errstr(fault);
            return fault;
        }
    }
    return SQLITE_CORRUPT;
}

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

int ReadEntries(sqlite3* database, std::vector<StoreEntry>& out) {
    out.clear();
    const Statement statement = Prepared(
        database, "SELECT hive, shown, entries.name, type, data FROM entries JOIN keys USING (path)");
    if (!statement) return HasTables(database) ? sqlite3_errcode(database) : SQLITE_OK;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement.get())) == SQLITE_ROW) {
        out.push_back({static_cast<Hive>(sqlite3_column_int64(statement.get(), 0)),
                       ColumnBytes(statement.get(), 1),
                       ColumnBytes(statement.get(), 2),
                       {static_cast<ValueType>(sqlite3_column_int(statement.get(), 3)),
                        ColumnBytes(statement.get(), 4)}});
    }
    return step == SQLITE_DONE ? SQLITE_OK : step;
}

int ReadEntries(const std::string& file, std::vector<StoreEntry>& out, std::string& why) {
    // Where there is no log nobody has the file open, and reading it as one that stays as it is leaves no
    // log behind. It is also the way to read in a folder where none can be made.
    const char* ways[] = {"mode=ro", "mode=ro&immutable=1"};
    if (!IdentityOf(file + "-wal")) std::swap(ways[0], ways[1]);
    int error = SQLITE_OK;
    for (const char* options : ways) {
        sqlite3* raw = nullptr;
        error = sqlite3_open_v2(FileUri(file, options).c_str(), &raw, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI,
                                nullptr);
        const Database database(raw);
        if (error == SQLITE_OK) {
            sqlite3_busy_timeout(raw, ReaderPatienceMilliseconds);
            error = ReadEntries(raw, out);
        }
        if (error == SQLITE_OK) break;
        why = raw ? sqlite3_errmsg(raw) : "no memory";
        if ((error & 0xFF) == SQLITE_BUSY) break;
    }
    return error;
}

} // namespace quorvane
