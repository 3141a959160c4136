#include "alarms/criteria/compiler.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

struct Case {
    std::string text;
    std::string expected;
};

void ExpectCompiled(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        const CompiledCriterion result = CompileCriteria(one.text);
        EXPECT_EQ(result.compiled, one.expected) << one.text;
        EXPECT_EQ(result.message, "") << one.text;
        EXPECT_FALSE(result.refused) << one.text;
    }
}

void ExpectMessage(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        const CompiledCriterion result = CompileCriteria(one.text);
        EXPECT_EQ(result.message, one.expected) << one.text;
        EXPECT_EQ(result.compiled, "") << one.text;
        EXPECT_TRUE(result.refused) << one.text;
    }
}

std::string SyntaxError(int leksem) {
    return "Syntax Error!\r\nAt leksem: " + std::to_string(leksem) + "\r\n";
}

std::string Repeated(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST(CriteriaCompiler, ComparisonsBindTightestAndChainsToTheRight) {
    ExpectCompiled({
        {"2*3+4", "1;+~2;*~0;2~0;3~0;4"},
        {"2+3*4", "1;+~0;2~2;*~0;3~0;4"},
        {"1-2-3", "1;-~0;1~1;-~0;2~0;3"},
        {"1=2=3", "3;=~0;1~3;=~0;2~0;3"},
        {"1+2=3", "1;+~0;1~3;=~0;2~0;3"},
        {"(1+2)*3", "2;*~1;+~0;1~0;2~0;3"},
        {"hh>=8&hh<=17^nn=0", "1;^~2;&~3;>=~9;hh~0;8~3;<=~9;hh~0;17~3;=~9;nn~0;0"},
        {"1-2*3=4-5", "1;-~0;1~1;-~2;*~0;2~3;=~0;3~0;4~0;5"},
    });
}

TEST(CriteriaCompiler, BracketsFunctionsAndTheUnaryMinus) {
    ExpectCompiled({
        {"|1-2|", "6;ABS~1;-~0;1~0;2"},
        {"[{1.5}]", "5;INT~7;FRAC~0;1.5"},
        {"fsqr(4)", "8;fsqr~0;4"},
        {"-(hh)*2", "2;*~4;NEG~9;hh~0;2"},
        {"2*-(3)", "2;*~0;2~4;NEG~0;3"},
        {"2--(3)", "1;-~0;2~4;NEG~0;3"},
        {"||1||", "6;ABS~6;ABS~0;1"},
        {"f_2(f_10(fsqr_3(1)))", "8;f_2~8;f_10~8;fsqr_3~0;1"},
        {"farctg(fctg(ftg(1)))+farccos(1)", "1;+~8;farctg~8;fctg~8;ftg~0;1~8;farccos~0;1"},
        {"fsinfcos(1)", "8;fcos~0;1"}, // an f starts the name afresh
    });
    ExpectMessage({
        {"-5", SyntaxError(2)},
        {"2*-3", SyntaxError(4)},
        {"{-(1)}", SyntaxError(2)}, // behind a brace the sign is an operator
        {"|1|-2", SyntaxError(4)},  // behind a bar it is a sign, also behind the closing one
        {"(1)-2)", SyntaxError(6)},
    });
}

TEST(CriteriaCompiler, BlanksTabsAndLetterCaseDoNotCount) {
    ExpectCompiled({
        {"", ""},
        {" \t ", ""},
        {" H\tH = 1 2", "3;=~9;hh~0;12"},
        {"1 2 3", "0;123"},
        {"- (1)", "4;NEG~0;1"},
        {"1 < = 2", "3;<=~0;1~0;2"},
    });
}

TEST(CriteriaCompiler, ConstantsAreWrittenWithPlainDigits) {
    ExpectCompiled({
        {"007", "0;7"},
        {"1.5+2.5", "1;+~0;1.5~0;2.5"},
        {".", "0;0"},
        {".5", "0;0.5"},
        {"5.", "0;5"},
        {"0.1234567890123456", "0;0.123456789012346"},
        {"100000000000000000000", "0;100000000000000000000"},
        {"0.00000012", "0;0.00000012"},
        {"0." + std::string(400, '0') + "1", "0;0"},
    });
    ExpectMessage({{std::string(400, '9'), ""}});
}

TEST(CriteriaCompiler, ATextThatEndsEarlyIsAccepted) {
    ExpectCompiled({
        {"1=", "3;=~0;1"},
        {"(1+2", "1;+~0;1~0;2"},
        {"|1", "6;ABS~0;1"},
        {"fsqr(", "8;fsqr"},
        {"2*-", "2;*~0;2~4;NEG"},
        {"((", ""},
        {"1+2*(3-", "1;+~0;1~2;*~0;2~1;-~0;3"},
        {"1+fsin", "1;+~0;1"}, // a name without its bracket is dropped
    });
}

TEST(CriteriaCompiler, LexicalErrors) {
    ExpectMessage({
        {"hh mm", "Lexical ERROR! - Illegal system variable [hhmm]!"},
        {"1<<2", "Lexical ERROR! - Illegal compare operation [<<]!"},
        {"!", "Lexical ERROR! - Illegal compare operation [!]!"},
        {"1=!2", "Lexical ERROR! - Illegal compare operation [=!]!"},
        {"1.2.3", "Lexical ERROR! - Illegal float value [1.2.]!"},
        {"fsinn(1)", "Lexical ERROR! - Illegal function name [fsinn]!"},
        {"fsin+1", "Lexical ERROR! - Illegal function name [fsin]!"},
        {"fsin=1", "Lexical ERROR!  - Illegal function name [fsin]!"},
        {"f(1)", "Lexical ERROR! - Illegal function name [f]!"},
        {"X", "Lexical ERROR! - Error at [x]"},
        {"12a", "Lexical ERROR! - Error at [12a]"},
        {"1=\n2", "Lexical ERROR! - Error at [=\n]"},
        {"12€", "Lexical ERROR! - Error at [12€]"},
    });
}

TEST(CriteriaCompiler, SyntaxErrorsTellTheFirstLeksemNeverMatched) {
    ExpectMessage({
        {")", SyntaxError(0)},
        {"()", SyntaxError(2)},
        {"hh=12 nn=30", SyntaxError(4)},
        {"(hh=12)(nn=30)", SyntaxError(6)},
        {"((1+2)*3))", SyntaxError(10)},
        {"fsqr(4]", SyntaxError(4)},
    });
}

TEST(CriteriaCompiler, RoomForAHundredValuesOfAClass) {
    const std::string hundred = Repeated("1+", 99) + "1";
    EXPECT_FALSE(CompileCriteria(hundred).refused);
    ExpectMessage({
        {hundred + "&1", ""},
        {Repeated("hh&", 100) + "hh", ""},
        {Repeated("fst(", 101), ""},
        {Repeated("+", 101), ""},
        {Repeated("*", 101), ""},
        {Repeated("=(", 101), ""},
    });
}

TEST(CriteriaCompiler, TheStackHoldsTenThousandEntries) {
    // A bracket takes four entries of the stack.
    EXPECT_FALSE(CompileCriteria(std::string(2500, '(')).refused);
    const CompiledCriterion beyond = CompileCriteria(std::string(2501, '('));
    EXPECT_EQ(beyond.message, "Out of system resources!\r\nStack underrun, while syntax check...");
    EXPECT_TRUE(beyond.inBox);
    EXPECT_TRUE(beyond.refused);
    EXPECT_EQ(CompileCriteria(std::string(2499, '(') + ")").message, SyntaxError(2500));
    EXPECT_TRUE(CompileCriteria(std::string(2500, '(') + ")").inBox);
}

} // namespace
} // namespace quorvane
