// The settings tree under processes that are killed, and under two that write at once.
#include "platform/linux/base/sqlite_store.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

#include <sched.h>

namespace quorvane {
namespace {

constexpr int Values = 300;
const StoreKey Key{"", Hive::CurrentUser, "Software\\Quorvane"};

class StoreProcessesTest : public testing::Test {
  protected:
    // Every value tells which of the marks it was written with.
    static StoredValue ValueOf(char mark) { return {ValueType::Text, std::string(100, mark) + '\0'}; }

    // Writes all values with each of the marks in turn, `times` times, and says by one byte that the first
    // ones stand. The status is the number of failures.
    pid_t StartWriter(const std::string& marks, int times, int told) {
        return test::StartChild([&] {
            std::string why;
            const auto store = SqliteStore::Open(file, why);
            if (!store || !why.empty()) return 100;
            int failures = 0;
            for (int i = 0; i < times; ++i) {
                store->BeginBatch();
                for (int n = 0; n < Values; ++n)
                    failures += store->Set(Key, std::to_string(n),
                                           ValueOf(marks[static_cast<std::size_t>(i) % marks.size()])) != 0;
                failures += store->EndBatch() != 0;
                if (i == 0 && write(told, "1", 1) != 1) return 101;
            }
            return failures;
        });
    }
    // Every value is there and belongs to one of the marks.
    void ExpectWholeTree(const std::string& marks) {
        std::string why;
        const auto store = SqliteStore::Open(file, why);
        ASSERT_TRUE(store);
        EXPECT_EQ(why, "");
        for (int n = 0; n < Values; ++n) {
            StoredValue value;
            ASSERT_EQ(store->Query(Key, std::to_string(n), value), 0) << n;
            ASSERT_NE(marks.find(value.data[0]), std::string::npos) << n;
            ASSERT_EQ(value.data, ValueOf(value.data[0]).data) << n;
        }
    }

    test::TemporaryFolder folder;
    std::string file = folder.Path().string() + "/settings.db";
};

TEST_F(StoreProcessesTest, AKilledWriterLeavesEachValueOldOrNew) {
    for (int round = 0; round < 30; ++round) {
        int told[2];
        ASSERT_EQ(pipe(told), 0);
        const pid_t child = StartWriter("AB", 1'000'000, told[1]);
        char byte = 0;
        ASSERT_EQ(read(told[0], &byte, 1), 1);
        // The kill falls on another place of the writing in each round.
        const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(round * 357);
        while (std::chrono::steady_clock::now() < until)
            sched_yield();
        kill(child, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(test::StatusOf(child))) << "the writer ended by itself";
        close(told[0]);
        close(told[1]);
        ExpectWholeTree("AB");
    }
}

TEST_F(StoreProcessesTest, TwoWritersAtOnceLoseNothingButTheOrder) {
    int told[2];
    ASSERT_EQ(pipe(told), 0);
    const pid_t writers[] = {StartWriter("A", 25, told[1]), StartWriter("B", 25, told[1])};
    for (const pid_t writer : writers)
        EXPECT_EQ(test::StatusOf(writer), 0);
    close(told[0]);
    close(told[1]);
    ExpectWholeTree("AB");
}

} // namespace
} // namespace quorvane
