#pragma once

#include "platform/linux/base/store_entry.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

struct sqlite3;

namespace quorvane {

// Holds other processes back while a file is opened, so that they see it either not yet or wholly begun. A
// holder that does not let go is waited for only so long.
class OpeningLock {
  public:
    explicit OpeningLock(const std::string& file,
                         std::chrono::milliseconds longestWait = std::chrono::seconds(10));
    ~OpeningLock();
    OpeningLock(const OpeningLock&) = delete;
    OpeningLock& operator=(const OpeningLock&) = delete;

    // False where another process keeps the lock. A folder in which no lock can be made needs none.
    bool Free() const { return free_; }

  private:
    int descriptor_;
    bool free_ = true;
};

// Which file a path names at the moment; empty where there is none.
using FileIdentity = std::optional<std::pair<dev_t, ino_t>>;
FileIdentity IdentityOf(const std::string& file);

// The folder of a file, for its person alone where it has to be made.
bool MakeFolderOf(const std::string& file);

// Renames the file together with its log, which must never meet a fresh file. The new name, or nothing.
std::string SetAside(const std::string& file);

// Whether SQLite's answer tells of damage: a corrupt file, or one that is no tree of ours. Any other failure
// says nothing about what the file holds.
bool TellsDamage(int sqliteError);

// Walks through the whole file. SQLITE_OK; SQLITE_CORRUPT where it is damaged; otherwise what kept the check
// from an answer. `why` may say more than the number.
int CheckFile(sqlite3* database, std::string& why);

// A file name as SQLite's own URI, for the options that only a URI can carry.
std::string FileUri(const std::string& file, const char* options);

// Every value of an open database; one without tables has none. SQLite's answer.
int ReadEntries(sqlite3* database, std::vector<StoreEntry>& out);
// Every value of a file, which stays as it is, beside whoever writes to it. The reason of a failure in `why`.
int ReadEntries(const std::string& file, std::vector<StoreEntry>& out, std::string& why);

} // namespace quorvane
