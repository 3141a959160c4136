#include "tests/cli/run.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quorvane::cli {
namespace {

TEST(WeekCommand, BatchKeepsOneLineForEachInput) {
    const Ran ran = RunWords({"week", "--json", "-"}, "2026-01-01\n2026-02-29\n1804-12-31\n");
    EXPECT_EQ(ran.status, Done);
    EXPECT_EQ(ran.out, "{\"date\": \"2026-01-01\", \"week\": \"52\", \"day\": 1, \"first_monday\": 5, "
                       "\"last_week\": 52, \"leap\": false}\n"
                       "{\"date\": \"2026-02-29\", \"message\": \"no date YYYY-MM-DD: \\\"2026-02-29\\\"\"}\n"
                       "{\"date\": \"1804-12-31\", \"week\": \"54\", \"day\": 366, \"first_monday\": 2, "
                       "\"last_week\": 54, \"leap\": true}\n");
    EXPECT_EQ(RunWords({"week", "29.2.2026"}).status, Refused);
    EXPECT_EQ(RunWords({"week"}).status, WrongUsage);
}

TEST(SkyCommand, TenLinesOfTheGivenPlaceAndZone) {
    const Ran ran = RunWords({"sky", "--at", "2026-06-21 12:00:00", "--latitude", "54.2", "--longitude",
                              "37.6", "--bias", "-180", "--zone", "Tula"});
    EXPECT_EQ(ran.status, Done);
    EXPECT_TRUE(ran.out.starts_with("3:56\n") && ran.out.ends_with("\nTula\n")) << ran.out;
    EXPECT_EQ(std::count(ran.out.begin(), ran.out.end(), '\n'), 10);
    EXPECT_EQ(RunWords({"sky", "--latitude", "54.2"}).status, WrongUsage);
    EXPECT_EQ(RunWords({"sky", "--latitude", "154.2", "--longitude", "0"}).status, Refused);
}

} // namespace
} // namespace quorvane::cli
