#include "tests/cli/run.h"

#include <gtest/gtest.h>

namespace quorvane::cli {
namespace {

Ran RunCriteria(std::vector<std::string> words, const std::string& input = "") {
    words.insert(words.begin(), "criteria");
    words.insert(words.end(), {"--at", "2026-11-21 12:30:45"});
    return RunWords(words, input);
}

TEST(CriteriaCommand, CompilesOrSaysWhyNot) {
    const Ran good = RunCriteria({"compile", "hh = 12"});
    EXPECT_EQ(good.status, Done);
    EXPECT_EQ(good.out, "3;=~9;hh~0;12\n");
    const Ran bad = RunCriteria({"compile", "--json", "-1"});
    EXPECT_EQ(bad.status, Refused);
    EXPECT_EQ(bad.out, R"({"text": "-1", "compiled": "", "message": "Syntax Error!\r\nAt leksem: 2\r\n"})"
                       "\n");
    EXPECT_EQ(bad.err, "Syntax Error!\r\nAt leksem: 2\r\n");
}

TEST(CriteriaCommand, ABatchKeepsAResultForEachLine) {
    const Ran plain = RunCriteria({"compile", "-"}, "1\n\n-1\nhh");
    EXPECT_EQ(plain.status, Done);
    EXPECT_EQ(plain.out, "0;1\n\n\n9;hh\n");
    EXPECT_EQ(plain.err, "Syntax Error! At leksem: 2 \n");
    EXPECT_EQ(RunCriteria({"compile", "--json", "-"}, "\nx\n").out,
              R"({"text": "", "compiled": "", "message": ""})"
              "\n"
              R"({"text": "x", "compiled": "", "message": "Lexical ERROR! - Error at [x]"})"
              "\n");
    EXPECT_EQ(RunCriteria({"test", "-"}, "3;=~9;hh~0;12\n0;0\n8;fst~0;3\n").out, "true\nfalse\ntrue\n");
    EXPECT_EQ(RunCriteria({"try", "-"}, "1/0\nwd\n").out,
              "2;/~0;1~0;0 ************** Division by zero (11) While computing: 1/0 **************\n"
              "9;wdResult: 6 \n");
}

TEST(CriteriaCommand, TestsAndTriesAtAMoment) {
    EXPECT_EQ(RunCriteria({"test", "--json", "3;=~9;nn~0;30"}).out,
              "{\"compiled\": \"3;=~9;nn~0;30\", \"result\": true}\n");
    EXPECT_EQ(RunCriteria({"try", "--json", "(hh"}).out,
              "{\"text\": \"(hh\", \"output\": \"9;hhResult: 12 \"}\n");
    EXPECT_EQ(RunCriteria({"ponder", "hh"}).status, WrongUsage);
    EXPECT_EQ(RunCriteria({"try"}).status, WrongUsage);
}

TEST(CriteriaCommand, TellsTheNextMomentsOrWhyItCannot) {
    EXPECT_EQ(RunCriteria({"next", "--count", "2", "hh=7&nn=30&wd<6"}).out,
              "2026-11-23 07:30:00\n2026-11-24 07:30:00\n");
    const Ran never = RunCriteria({"next", "dd=31&mm=2"});
    EXPECT_EQ(never.out, "");
    EXPECT_EQ(never.status, Done);
    const Ran batch = RunCriteria({"next", "--json", "-"}, "mm=12&dd=24\nrr<1\nhh hh\n");
    EXPECT_EQ(batch.status, Done);
    EXPECT_EQ(
        batch.out,
        R"({"text": "mm=12&dd=24", "next": ["2026-12-24 00:00:00", "2027-12-24 00:00:00", )"
        R"("2028-12-24 00:00:00", "2029-12-24 00:00:00", "2030-12-24 00:00:00"], "message": ""})"
        "\n"
        R"({"text": "rr<1", "next": [], "message": "a criterion that reads rr or calls frst cannot be foretold"})"
        "\n"
        R"({"text": "hh hh", "next": [], "message": "Lexical ERROR! - Illegal system variable [hhhh]!"})"
        "\n");
    EXPECT_EQ(RunCriteria({"next", "frst(1)"}).status, Refused);
    EXPECT_EQ(RunCriteria({"next", "--count", "0", "hh"}).status, WrongUsage);
}

} // namespace
} // namespace quorvane::cli
