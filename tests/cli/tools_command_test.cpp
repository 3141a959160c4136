#include "tests/cli/run.h"

#include "calendar/month_sheet.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace quorvane::cli {
namespace {

TEST(MonthCommand, PrintsAMonthOrSaysThatThereIsNoSuchDay) {
    EXPECT_EQ(RunWords({"month", "2026-02-28"}).out, "February, 2026; Sat (59)\n"
                                                     "Mon Tue Wen Thu Fri Sat Sun  WN\n"
                                                     "--------------------------------\n"
                                                     "                           1[04]\n"
                                                     "   2   3   4   5   6   7   8[05]\n"
                                                     "   9  10  11  12  13  14  15[06]\n"
                                                     "  16  17  18  19  20  21  22[07]\n"
                                                     "  23  24  25  26  27  28    [08]\n");
    for (const char* date : {"2026-02-30", "2026-13-01", "2026-01-00"}) {
        const Ran refused = RunWords({"month", date});
        EXPECT_EQ(refused.status, Refused) << date;
        EXPECT_EQ(refused.err, "quorvanectl: Illegal Day!\n") << date;
        EXPECT_EQ(refused.out, "") << date;
    }
    EXPECT_EQ(RunWords({"month", "tomorrow"}).status, Refused);
    const std::string year = RunWords({"year", "--json", "2026"}).out;
    EXPECT_TRUE(year.starts_with("{\"year\": 2026, \"months\": [{\"date\": \"2026-01-01\", \"caption\": "
                                 "\"January, 2026\", \"weekday\": \"Thu\", \"day_of_year\": 1, \"lines\": "
                                 "[\"Mon Tue Wen Thu Fri Sat Sun  WN\""))
        << year;
}

// A calendar of the test's own: day after day from a known Saturday.
TEST(MonthSheet, AgreesWithACountOfDays) {
    int weekday = 6; // of 1600-01-01
    std::int64_t days = 0;
    for (int year = 1600; year <= 2400; ++year) {
        const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        for (int month = 1; month <= 12; ++month) {
            const auto sheet = DescribeMonth(lengths[month - 1], month, year);
            ASSERT_TRUE(sheet && !DescribeMonth(lengths[month - 1] + 1, month, year));
            EXPECT_EQ(sheet->weeks.front().firstColumn, weekday) << year << "-" << month;
            EXPECT_EQ(CalculeDiffrences({year, month, 1}, {1600, 1, 1}), days);
            EXPECT_EQ(PlusDays({1600, 1, 1}, days), (DateTime{year, month, 1}));
            weekday = (weekday - 1 + lengths[month - 1]) % 7 + 1;
            days += lengths[month - 1];
        }
    }
}

TEST(ToolCommands, Answer) {
    const struct {
        std::vector<std::string> words;
        const char* out;
    } rows[] = {
        {{"julian", "--at", "2000-01-01 15:00:00", "--bias", "-180"}, "2451545\n"},
        {{"julian", "--json", "--at", "2000-01-01", "--bias", "0"}, "{\"julian\": 2451544.5}\n"},
        {{"days", "2026-11-21", "2024-02-28"}, "997\n"},
        {{"days", "--json", "2024-02-28", "+2"}, "{\"date\": \"2024-03-01\"}\n"},
        {{"days", "2026-01-01", "-1"}, "2025-12-31\n"},
        {{"zone", "--json", "--at", "2026-11-21 12:30:00", "--bias", "-330", "-12"},
         "{\"offset\": -12, \"places\": \"Eniwetok, Kwajalein\", \"time\": \"19:00:00\", \"date\": "
         "\"20.11.2026\", "
         "\"julian\": 2461366.5208333335}\n"},
        {{"zone", "--at", "2026-12-31 23:30:00", "--bias", "0", "+13"},
         "GMT: 13  12:30:00  1.1.2027\nNuku'alofa\nJulian date: 2461405.9375\n"},
        {{"capture-name", "--at", "2007-03-05 14:09:02", "YYYYMMDDHHNNSS.BMP"}, "07070305140902.BMP\n"},
        {{"capture-name", "--at", "2007-03-05 14:09:02", "message"}, "me02age.bmp\n"},
        {{"capture-name", "--at", "2007-03-05 14:09:02", "yyY-shot.Bmp"}, "07Y-shot.Bmp\n"},
        {{"note", "--at", "2026-11-21 12:30:00", "--name", " ann ", "--json", "$r50$Hi\\n$name$"},
         "{\"source\": \"$r50$Hi\\\\n$name$\", \"text\": \"Hi\\r\\nann\", \"font\": \"\", \"size\": 8.25, "
         "\"bold\": false, \"italic\": false, \"underline\": false, \"strikethrough\": false, \"forecolor\": "
         "0, "
         "\"backcolor\": -2147483624, \"alpha\": 127, \"link\": \"\", \"ticking\": false, "
         "\"display\": \"Hi\\\\n$name$\"}\n"},
        {{"note", "\\ba\\nb"}, "a\nb [bold]\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(RunWords(row.words).out, row.out) << row.words[0];
    EXPECT_EQ(RunWords({"julian", "--bias", "99999999999"}).status, WrongUsage);
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"days", "2026-11-21", "+99999999999999999999"},
                                               {"days", "2026-11-21", "+3000000"},
                                               {"days", "2026-11-21", "+x"},
                                               {"days", "2026-02-30", "2026-01-01"},
                                               {"zone", "14"},
                                               {"zone", "x"}})
        EXPECT_EQ(RunWords(words).status, Refused) << words.back();
}

TEST(LocaleCommand, ChecksAFile) {
    const test::TemporaryFolder folder;
    const std::string path = (folder.Path() / "XX.res").string();
    std::ofstream(path) << "[LOCALE=Test;XX]\n1=-\n3=none\n21=&Change\nend";
    const std::string told = RunWords({"locale", "check", "--json", path}).out;
    EXPECT_NE(told.find("\"description\": \"Test\", \"language\": \"XX\", \"ok\": false, \"strings\": "
                        "{\"1\": \"-\", \"3\": \"none\", \"21\": \"&Change\"}, \"missing\": [5, 6, 9, "),
              std::string::npos)
        << told;
    EXPECT_TRUE(told.ends_with(", 135], \"unused\": [3]}\n")) << told;
    EXPECT_EQ(RunWords({"locale", "check", "/nowhere"}).status, Refused);
}

TEST(DumpCommand, WritesTheStateOfATree) {
    const std::string dump = RunWords({"dump", "--number", "5", "--description", "Why", "--set",
                                       "General\\Wallpaper position=4", "-"})
                                 .out;
    EXPECT_NE(dump.find("***ERROR CODE: 5\r\n***ERROR MESSAGE: Why\r\n"), std::string::npos);
    EXPECT_NE(dump.find("\r\nWallpaperPosition: 4\r\n"), std::string::npos);
    EXPECT_EQ(RunWords({"dump", "--set", "General\\Wallpaper position=4", "/nowhere/at/all"}).status,
              Refused);
}

} // namespace
} // namespace quorvane::cli
