// Settings files with bad pages, and disks that cannot be read for the moment.
#include "platform/linux/base/salvage.h"
#include "platform/linux/base/sqlite.h"
#include "platform/linux/base/sqlite_store.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

#include <random>

namespace quorvane {
namespace {

namespace fs = std::filesystem;

constexpr int Values = 300;
constexpr std::size_t PageSize = 4096;
const StoreKey Key{"", Hive::CurrentUser, "Software\\Quorvane\\List Of Things"};
const StoreKey Gone{"", Hive::CurrentUser, "Gone"}; // all its values are deleted again

StoredValue ValueOf(int number) {
    if (number % 2 == 0) return {ValueType::Integer, std::string(4, static_cast<char>(number))};
    return {ValueType::Text,
            std::string(number == 201 ? 20'000 : 60, static_cast<char>('a' + number % 26)) + '\0'};
}

std::string NameOf(int number) {
    return "Value #" + std::to_string(number);
}

class DamagedStoreTest : public testing::Test {
  protected:
    DamagedStoreTest() {
        auto store = SqliteStore::Open(file, why);
        store->BeginBatch();
        for (int number = 0; number < Values; ++number) {
            store->Set(Key, NameOf(number), ValueOf(number));
            store->Set(Gone, NameOf(number), ValueOf(number));
        }
        store->EndBatch();
        store->BeginBatch();
        for (int number = 0; number < Values; ++number)
            store->DeleteValue(Gone, NameOf(number));
        store->EndBatch();
        store.reset();
        whole = test::ReadWhole(file);
    }

    // A file of this content, and how many of its values the tree has once it was opened.
    int OpenWith(const std::string& content) {
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            fs::remove(entry);
        std::ofstream(file, std::ios::binary) << content;
        const auto store = SqliteStore::Open(file, why);
        if (!store) return -1;
        int read = 0;
        for (int number = 0; number < Values; ++number) {
            StoredValue value;
            if (store->Query(Key, NameOf(number), value) != store_error::None) continue;
            const StoredValue expected = ValueOf(number);
            EXPECT_TRUE(value.type == expected.type && value.data == expected.data) << number << why;
            ++read;
        }
        StoredValue gone;
        EXPECT_NE(store->Query(Gone, NameOf(7), gone), store_error::None);
        return read;
    }

    test::TemporaryFolder folder;
    std::string file = folder.Path().string() + "/settings.db";
    std::string why;
    std::string whole;
};

TEST_F(DamagedStoreTest, OneBadPageCostsWhatStoodOnIt) {
    ASSERT_EQ(OpenWith(whole), Values);
    EXPECT_EQ(why, "");
    int losses = 0;
    for (std::size_t page = 0; page < whole.size() / PageSize; ++page) {
        std::string content = whole;
        content.replace(page * PageSize, PageSize, PageSize, '\xA5');
        const int read = OpenWith(content);
        EXPECT_GT(read, Values - 60) << page;
        if (why.empty()) continue; // a page that holds nothing any more
        EXPECT_NE(why.find("set aside as [" + file + ".damaged]"), std::string::npos) << why;
        EXPECT_NE(why.find(" values that could still be read."), std::string::npos) << why;
        EXPECT_TRUE(test::ReadWhole(file + ".damaged") == content);
        losses += Values - read;
    }
    EXPECT_LE(losses, Values + 20) << "no value stands on two pages, but for those of several";
}

TEST_F(DamagedStoreTest, KeysKeepTheirSpellingAndTheLogCounts) {
    const auto store = SqliteStore::Open(file, why);
    store->Set(Key, "in the log", {ValueType::Text, std::string("yes\0", 4)});
    bool found = false;
    for (const StoreEntry& entry : SalvageEntries(file)) {
        EXPECT_EQ(entry.key, Key.path);
        found |= entry.name == "in the log" && entry.value.data == std::string("yes\0", 4);
    }
    EXPECT_TRUE(found);
}

TEST_F(DamagedStoreTest, AnyBytesAreSurvived) {
    std::mt19937 random(4);
    for (int round = 0; round < 150; ++round) {
        std::string content = whole.substr(0, round % 3 == 0 ? random() % whole.size() : whole.size());
        for (int i = 0; i < 300 && !content.empty(); ++i)
            content[random() % content.size()] = static_cast<char>(random());
        std::ofstream(file, std::ios::binary) << content;
        SalvageEntries(file);
    }
}

// A disk that reads no page of a database beyond the first while `failing` holds.
bool failing = false;
int (*realOpen)(sqlite3_vfs*, const char*, sqlite3_file*, int, int*) = nullptr;
int (*realRead)(sqlite3_file*, void*, int, sqlite3_int64) = nullptr;
sqlite3_io_methods methods;

int OpenFailing(sqlite3_vfs* disk, const char* name, sqlite3_file* opened, int flags, int* outFlags) {
    const int error = realOpen(disk, name, opened, flags, outFlags);
    if (error != SQLITE_OK || (flags & SQLITE_OPEN_MAIN_DB) == 0) return error;
    methods = *opened->pMethods;
    realRead = methods.xRead;
    methods.xRead = [](sqlite3_file* from, void* bytes, int count, sqlite3_int64 offset) {
        return failing && offset >= 8192 ? SQLITE_IOERR_READ : realRead(from, bytes, count, offset);
    };
    opened->pMethods = &methods;
    return SQLITE_OK;
}

TEST_F(DamagedStoreTest, ADiskThatCannotBeReadIsNoDamage) {
    sqlite3_vfs disk = *sqlite3_vfs_find(nullptr);
    sqlite3_vfs* const before = sqlite3_vfs_find(nullptr);
    realOpen = disk.xOpen;
    disk.xOpen = OpenFailing;
    disk.zName = "failing";
    sqlite3_vfs_register(&disk, 1);
    failing = true;
    EXPECT_FALSE(SqliteStore::Open(file, why));
    EXPECT_NE(why.find("cannot be used: disk I/O error."), std::string::npos) << why;
    SqliteStore::ReadIntoMemory(file, why);
    EXPECT_NE(why.find("cannot be read (disk I/O error)."), std::string::npos) << why;
    failing = false;
    EXPECT_TRUE(SqliteStore::Open(file, why));
    sqlite3_vfs_register(before, 1);
    sqlite3_vfs_unregister(&disk);
    EXPECT_TRUE(test::ReadWhole(file) == whole);
    EXPECT_FALSE(fs::exists(file + ".damaged"));
}

} // namespace
} // namespace quorvane
