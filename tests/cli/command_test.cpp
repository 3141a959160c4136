#include "cli/batch.h"
#include "cli/command.h"
#include "commands/json.h"
#include "tests/cli/run.h"

#include <gtest/gtest.h>

namespace quorvane::cli {
namespace {

Ran RunEcho(const std::vector<std::string>& words, const std::string& input = "") {
    const std::vector<Command> commands{
        {"echo",
         "echo [--at T] [--times N] TEXT|-",
         {"at", "times"},
         {"loud"},
         [](const Arguments& arguments, Streams& streams) {
             const std::string& only = arguments.OnlyInput("TEXT");
             return ForEachInput(arguments, only, "text", streams, [&](const std::string& text) {
                 if (text == "bad") throw RefusedInput("no bad text");
                 streams.out << text << (arguments.Has("loud") ? "!" : "");
                 if (const auto at = arguments.At()) streams.out << '@' << at->hour;
                 if (const auto times = arguments.WholeNumber("times")) streams.out << 'x' << *times;
                 streams.out << '\n';
                 return Done;
             });
         }}};
    return cli::RunWords(words, input, commands);
}

TEST(Command, StatusesTellDoneRefusedAndWrongUsage) {
    EXPECT_EQ(RunEcho({"echo", "hi"}).status, Done);
    const Ran refused = RunEcho({"echo", "bad"});
    EXPECT_EQ(refused.status, Refused);
    EXPECT_EQ(refused.err, "quorvanectl: no bad text\n");
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{},
                                               {"sing"},
                                               {"echo"},
                                               {"echo", "a", "b"},
                                               {"echo", "--far", "a"},
                                               {"echo", "a", "--at"},
                                               {"echo", "a", "--at", "tomorrow"},
                                               {"echo", "a", "--times", "1.5"},
                                               {"echo", "a", "--loud=1"}}) {
        const Ran wrong = RunEcho(words);
        EXPECT_EQ(wrong.status, WrongUsage);
        EXPECT_NE(wrong.err.find("usage: quorvanectl"), std::string::npos);
    }
}

TEST(Command, OptionsStandAnywhereAndABatchKeepsItsOrder) {
    EXPECT_EQ(RunEcho({"echo", "--at=2026-11-21 13:00:00", "a", "--times", "2", "--loud"}).out, "a!@13x2\n");
    EXPECT_EQ(RunEcho({"echo", "--", "--json"}).out, "--json\n");
    EXPECT_EQ(RunEcho({"echo", "-"}, "one\n\nthree\r\nlast").out, "one\n\nthree\nlast\n");
    const Ran batch = RunEcho({"echo", "-"}, "one\nbad\nthree\n");
    EXPECT_EQ(batch.status, Done);
    EXPECT_EQ(batch.out, "one\n\nthree\n");
    EXPECT_EQ(RunEcho({"echo", "--", "--(1)"}).out, RunEcho({"echo", "--(1)"}).out);
}

TEST(Command, DatesAreThoseOfTheCalendar) {
    EXPECT_TRUE(ParseDate("2024-02-29"));
    EXPECT_FALSE(ParseDate("2026-02-29"));
    EXPECT_FALSE(ParseDate("2026-2-01"));
    EXPECT_FALSE(ParseDate("2026-+1-01"));
    EXPECT_FALSE(ParseDateTime("2026-11-21 24:00:00"));
    EXPECT_FALSE(ParseDateTime("2026-11-21 12:00"));
    const auto moment = ParseDateTime("2026-11-21 09:05:07");
    ASSERT_TRUE(moment);
    EXPECT_EQ(*moment, (DateTime{2026, 11, 21, 9, 5, 7}));
}

TEST(Json, TextIsEscapedAndAlwaysUtf8) {
    EXPECT_EQ(JsonText("a\"\\\n\x01é"), "\"a\\\"\\\\\\n\\u0001é\"");
    EXPECT_EQ(JsonText("\xFFx\xC3"), "\"\xEF\xBF\xBDx\xEF\xBF\xBD\"");
    EXPECT_EQ(JsonText("\xED\xA0\x80"), "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\"");
    EXPECT_EQ(
        JsonObject().Add("n", 0.1).Add("i", 3).Add("b", true).Add("l", std::vector<std::string>{"x"}).Text(),
        R"({"n": 0.1, "i": 3, "b": true, "l": ["x"]})");
}

} // namespace
} // namespace quorvane::cli
