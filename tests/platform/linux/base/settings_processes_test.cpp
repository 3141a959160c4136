// The settings tree under processes that are killed, and under two that write at once.
#include "config/schema.h"
#include "config/settings.h"
#include "platform/linux/base/sqlite_store.h"
#include "platform/memory/memory_platform.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

#include <sched.h>

namespace quorvane {
namespace {

constexpr int Entries = 300;

// A record whose every value tells which of the two it belongs to.
Settings RecordOf(char mark) {
    Settings record;
    record.Week_Str_Name = mark;
    record.Left_Upper_Color = record.Moon_Ephemeredes_Color = record.EphemeredesTextAlign = mark;
    for (int i = 0; i < Entries; ++i) {
        record.FavoritesSources.Add({std::string(100, mark), true});
        record.Custom_Days.Add({mark, mark, mark});
    }
    return record;
}

class SettingsProcessesTest : public testing::Test {
  protected:
    // Writes the whole of both records in turn, `times` times, and says by one byte that the first stands.
    // The status is the number of failures.
    pid_t StartWriter(const std::string& marks, int times, int told) {
        return test::StartChild([&] {
            int failures = 0;
            MemoryPlatform machine;
            std::string why;
            const auto store = SqliteStore::Open(file, why);
            if (!store || !why.empty()) return 100;
            SettingsContext context{*store, machine.files, machine.clock, {}};
            context.events.ShowErrorDialog = [&](std::int32_t, const std::string&) { ++failures; };
            for (int i = 0; i < times; ++i) {
                Settings record = RecordOf(marks[static_cast<std::size_t>(i) % marks.size()]);
                WriteRecord(record, context);
                if (i == 0 && write(told, "1", 1) != 1) return 101;
            }
            return failures;
        });
    }

    // Every value of the tree belongs to one of the marks.
    void ExpectWholeTree(const std::string& marks) {
        std::string why;
        auto store = SqliteStore::Open(file, why);
        ASSERT_TRUE(store);
        EXPECT_EQ(why, "");
        MemoryPlatform machine;
        Settings record;
        int errors = 0;
        SettingsContext context{*store, machine.files, machine.clock, {}};
        context.events.ShowErrorDialog = [&](std::int32_t, const std::string&) { ++errors; };
        ReadRecord(record, context);
        EXPECT_EQ(errors, 0);
        const auto isMark = [&](std::int32_t value) {
            return marks.find(static_cast<char>(value)) != std::string::npos;
        };
        ASSERT_EQ(record.Week_Str_Name.size(), 1U);
        EXPECT_TRUE(isMark(record.Week_Str_Name[0]));
        for (const std::int32_t value :
             {record.Left_Upper_Color, record.Moon_Ephemeredes_Color, record.EphemeredesTextAlign}) {
            EXPECT_TRUE(isMark(value)) << value;
        }
        ASSERT_EQ(record.FavoritesSrcCnt(), Entries);
        ASSERT_EQ(record.CustomDayCont(), Entries);
        for (const ListedFile& entry : record.FavoritesSources) {
            ASSERT_EQ(entry.Path, std::string(100, entry.Path[0]));
            ASSERT_TRUE(isMark(entry.Path[0]));
        }
        for (const CustomDay& day : record.Custom_Days)
            ASSERT_TRUE(isMark(day.Day) && isMark(day.color));
    }

    test::TemporaryFolder folder;
    std::string file = folder.Path().string() + "/settings.db";
};

TEST_F(SettingsProcessesTest, AKilledWriterLeavesEachValueOldOrNew) {
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

TEST_F(SettingsProcessesTest, TwoWritersAtOnceLoseNothingButTheOrder) {
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
