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
    const Ran exhausted = RunCriteria({"compile", std::string(3000, '(')});
    EXPECT_EQ(exhausted.status, Refused);
    EXPECT_EQ(exhausted.err, "Out of system resources!\r\nStack underrun, while syntax check...\n");
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
    EXPECT_EQ(RunCriteria({"try", "hh+1"}).out, "1;+~9;hh~0;1Result: 13 \n");
    EXPECT_EQ(RunCriteria({"try", "--json", "(hh"}).out,
              "{\"text\": \"(hh\", \"output\": \"9;hhResult: 12 \"}\n");
    EXPECT_EQ(RunCriteria({"ponder", "hh"}).status, WrongUsage);
    EXPECT_EQ(RunCriteria({"try"}).status, WrongUsage);
}

} // namespace
} // namespace quorvane::cli
