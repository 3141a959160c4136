#include "alarms/criteria/compiler.h"
#include "alarms/criteria/program.h"
#include "alarms/criteria/trial.h"
#include "fuzz/reference/criteria_evaluation.h"
#include "platform/shared/seeded_random.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace quorvane {
namespace {

class CriteriaEvaluation : public testing::Test {
  protected:
    bool Compiled(std::string_view compiled) {
        return TestCriteria(compiled, CriteriaMoment(now_, random_), memory_);
    }
    bool Typed(std::string_view text) {
        const CompiledCriterion result = CompileCriteria(text);
        EXPECT_FALSE(result.refused) << text << ": " << result.message;
        return Compiled(result.compiled);
    }
    std::string Tried(std::string_view text) {
        return TryCriteria(text, CriteriaMoment(now_, random_), memory_).output;
    }
    // The one value that a trial shows.
    std::string Value(std::string_view text) {
        const std::string output = Tried(text);
        const std::size_t result = output.find("Result: ");
        return result == std::string::npos ? output : output.substr(result + 8);
    }
    void ExpectValues(const std::vector<std::pair<std::string, std::string>>& cases) {
        for (const auto& [text, value] : cases)
            EXPECT_EQ(Value(text), value + " ") << text;
    }
    void ExpectFailures(const std::vector<std::pair<std::string, std::string>>& cases) {
        for (const auto& [text, told] : cases) {
            const std::string compiled = CompileCriteria(text).compiled;
            EXPECT_FALSE(Compiled(compiled)) << text;
            const std::string stars = "**************";
            EXPECT_EQ(Tried(text), compiled + "\r\n" + stars + "\r\n" + told + "\r\n" + stars) << text;
        }
    }

    DateTime now_{2026, 11, 21, 12, 30, 45}; // a Saturday
    SeededRandom random_;
    CriteriaMemory memory_;
};

TEST_F(CriteriaEvaluation, VariablesReadTheMoment) {
    ExpectValues({
        {"(yy*100+mm)*100+dd", "20261121"},
        {"wd*10+dw", "66"},
        {"(hh*100+nn)*100+ss", "123045"},
        {"wn*10+nw", "44"},
    });
    EXPECT_TRUE(Typed("hh=12&nn=30&wd>5"));
    EXPECT_FALSE(Typed("hh=12&nn=30&wd<6"));
}

TEST_F(CriteriaEvaluation, WeeksOfAMonthBeginOnMondayAndTheFirstCounts) {
    // A Sunday is February the 1st, a Monday June the 1st, a Saturday August the 1st.
    const std::tuple<int, int, const char*> days[] = {{2, 1, "1 "}, {2, 2, "2 "}, {2, 28, "5 "}, {6, 1, "1 "},
                                                      {6, 7, "1 "}, {6, 8, "2 "}, {8, 31, "6 "}};
    for (const auto& [month, day, week] : days) {
        now_ = {2026, month, day};
        EXPECT_EQ(Value("wn"), week) << month << "-" << day;
    }
}

TEST_F(CriteriaEvaluation, OperatorsAndBrackets) {
    ExpectValues({
        {"1-2-3", "2"},
        {"8/4/2", "4"},
        {"1=1", "-1"},
        {"1=2=0", "0"}, // 1=(2=0)
        {"2<>2", "0"},
        {"2!=3", "-1"},
        {"2=<2", "-1"},
        {"2=>3", "0"},
        {"7\\4", "3"},
        {"-(7)\\4", "-3"},
        {"7\\-(4)", "3"},
        {"7.5\\3", "2"}, // 8 modulo 3
        {"-(2147483648)\\-(1)", "0"},
        {"6&3", "2"},
        {"4^1", "5"},
        {"(1=1)&1", "1"},
        {"0^0.5", "0"},
        {"0^1.5", "2"},
        {"0^2.5", "2"},
        {"[-(1.5)]", "-2"},
        {"{(-(1.5))}", "0.5"},
        {"|-(1.5)|", "1.5"},
        {"-(0)", "0"},
        {"hh=12+nn=30", "-2"},
        {"hh=12-nn=30", "0"},
        {"1/3", "0.333333333333333"},
        {"f_10(20)", "1E+20"},
    });
    ExpectFailures({
        {"2/0", "Division by zero (11)\r\nWhile computing: 2/0"},
        {"5\\0.4", "Division by zero (11)\r\nWhile computing: 5\\0.4"},
        {"2147483648&1", "Overflow (6)\r\nWhile computing: 2147483648&1"},
        {"1^-(2147483649)", "Overflow (6)\r\nWhile computing: 1^-2147483649"},
        {"f_10(200)*f_10(200)", "Overflow (6)\r\nWhile computing: 1E+200*1E+200"},
    });
}

TEST_F(CriteriaEvaluation, Functions) {
    ExpectValues({
        {"fsin(90)", "0"},
        {"fcos(90)", "1"},
        {"ftg(45)", "0"},
        {"fln(fexp(2))", "2"},
        {"flg(1000)", "3"},
        {"fsqr(16)", "4"},
        {"f_2(3)", "9"},
        {"fsqr_3(27)", "3"},
        {"f_10(2)", "100"},
        {"frev(4)", "0.25"},
    });
    ExpectFailures({
        {"fctg(45)", "Division by zero (11)\r\nWhile computing: 45fctg"},
        {"fartg(1)", "Division by zero (11)\r\nWhile computing: 1fartg"},
        {"farctg(0)", "Division by zero (11)\r\nWhile computing: 0farctg"},
        {"farccos(0.5)", "Division by zero (11)\r\nWhile computing: 0.5farccos"},
        {"farccos(2)", "Invalid procedure call or argument (5)\r\nWhile computing: 2farccos"},
        {"farcsin(1)", "Division by zero (11)\r\nWhile computing: 1farcsin"},
        {"fln(0)", "Invalid procedure call or argument (5)\r\nWhile computing: 0fln"},
        {"flg(-(1))", "Invalid procedure call or argument (5)\r\nWhile computing: -1flg"},
        {"fsqr(-(4))", "Invalid procedure call or argument (5)\r\nWhile computing: -4fsqr"},
        {"fsqr_3(-(8))", "Invalid procedure call or argument (5)\r\nWhile computing: -8fsqr_3"},
        {"fexp(1000)", "Overflow (6)\r\nWhile computing: 1000fexp"},
        {"frev(0)", "Division by zero (11)\r\nWhile computing: 0frev"},
        {"frev(0)+7",
         "Division by zero (11)\r\nWhile computing: 0frev7"}, // the next value stands in R's place
    });
}

TEST_F(CriteriaEvaluation, MemoryOutlivesACallAndItsIndexDoesNot) {
    EXPECT_EQ(Value("fst(7)"), "7 ");
    EXPECT_EQ(Value("frst(0)"), "0 ") << "entry 1, fst wrote entry 0";
    EXPECT_EQ(Value("frst(0)+fst(5)"), "10 ") << "fst runs first and frst finds its entry";
    EXPECT_EQ(Value("fst(3)+frst(0)"), "3 ") << "frst runs first, so both are at entry 1";
    EXPECT_EQ(Value("frst(0)"), "3 ") << "written by the evaluation before";
    EXPECT_FALSE(Typed("fst(1)+fst(2)"));
    EXPECT_EQ(Value("frst(1)+fst(9)"), "18 ") << "the failed one left its first store, now overwritten";

    std::string run = "frst(0)";
    for (int i = 1; i < 16; ++i)
        run = "frst(" + run + ")";
    EXPECT_EQ(Value(run), "0 ") << "entry 16";
    EXPECT_NE(Tried("frst(" + run + ")").find("Subscript out of range (9)"), std::string::npos);
}

TEST_F(CriteriaEvaluation, RandomNumbersAreSeededFromTheTimeOfDay) {
    const std::string first = Value("rr");
    EXPECT_EQ(Value("rr=rr"), "-1 ");
    EXPECT_EQ(Value("rr"), first);
    EXPECT_TRUE(Typed("rr>=0&rr<1"));
    now_.second = 46;
    EXPECT_NE(Value("rr"), first);
}

TEST_F(CriteriaEvaluation, AnyCompiledTextIsAnswered) {
    for (const char* isTrue :
         {"0;5", "0;0.5", "1;+~0;1", "3;=~0;0", "8;fcos", "1;+~0;5~0;0~0;3", "0;1~", "0,1"})
        EXPECT_TRUE(Compiled(isTrue)) << isTrue;
    for (const char* isFalse :
         {"", "0;0~0;3", "1;+~9;zz~0;1", "1;?~0;1~0;1", "4;neg~0;1", "x", "~~~0;1", "0;1E999", "1"})
        EXPECT_FALSE(Compiled(isFalse)) << isFalse;
}

TEST_F(CriteriaEvaluation, TheTrialShowsEveryValueLeft) {
    EXPECT_EQ(Tried("hh=12"), "3;=~9;hh~0;12Result: -1 ");
    EXPECT_EQ(Tried("(1"), "0;1Result: 1 ");
    EXPECT_EQ(Tried(""), "Result: ");
    EXPECT_EQ(Tried("1+"), "1;+~0;1Result: ")
        << "the missing operand has taken the result's place in the count";
    EXPECT_EQ(Tried("1/"), "2;/~0;1\r\n**************\r\nDivision by zero (11)\r\nWhile computing: "
                           "1/\r\n**************");
    EXPECT_EQ(Tried("1)"), "Syntax Error!\r\nAt leksem: 2\r\n");
    const CriteriaTrial exhausted =
        TryCriteria(std::string(3000, '('), CriteriaMoment(now_, random_), memory_);
    EXPECT_EQ(exhausted.output, "");
    EXPECT_EQ(exhausted.boxMessage, "Out of system resources!\r\nStack underrun, while syntax check...");
}

TEST_F(CriteriaEvaluation, MoreInstructionsThanTheArrayHoldsAreFalse) {
    for (const std::size_t count : {9999U, 10000U, 10001U, 10002U}) {
        for (const char* const last : {"0;1", "6;ABS", "1;+"}) {
            std::string compiled;
            for (std::size_t i = 1; i < count; ++i)
                compiled += "6;ABS~";
            compiled += last;
            const CriteriaMoment moment(now_, random_);
            EXPECT_EQ(TestCriteria(compiled, moment, memory_),
                      reference::TestCriteria(compiled, moment, memory_))
                << count << last;
        }
    }
}

TEST_F(CriteriaEvaluation, EachVariableHasBitsOfItsOwnInTheMoment) {
    std::mt19937 engine(3);
    const auto below = [&](unsigned limit) { return static_cast<int>(engine() % limit); };
    const auto any = [&] {
        return DateTime{2000 + below(100), 1 + below(12), 1 + below(28), below(24), below(60), below(60)};
    };
    for (int round = 0; round < 5000; ++round) {
        const CriteriaMoment one(any(), random_);
        const CriteriaMoment other(any(), random_);
        for (const auto& word : SystemVariableWords) {
            if (word.meaning == SystemVariable::Random) continue;
            const std::uint64_t changed =
                (one.Packed() ^ other.Packed()) & CriteriaMoment::PackedBits(word.meaning);
            ASSERT_EQ(changed == 0, one.Value(word.meaning) == other.Value(word.meaning)) << word.name;
        }
    }
}

TEST_F(CriteriaEvaluation, AWatchedCriterionAnswersAsAFreshOne) {
    std::mt19937 engine(11);
    CriteriaMemory watchedMemory;
    std::vector<std::string> texts;
    for (const char* const text :
         {"hh=12", "ss<30", "wd=6&hh=12^nn=31", "fst(ss)>frst(0)", "rr<0.5", "yy/(ss-30)", "1", ""})
        texts.push_back(CompileCriteria(text).compiled);
    std::vector<WatchedCriterion> watched(texts.size());
    for (int tick = 0; tick < 3000; ++tick) {
        now_.second = tick / 2 % 60;
        if (tick % 120 == 0) now_.minute = static_cast<int>(engine() % 60);
        if (tick % 500 == 0) now_.hour = static_cast<int>(engine() % 2) + 12;
        if (tick % 700 == 699) std::swap(texts[0], texts[1]);
        const CriteriaMoment moment(now_, random_);
        for (std::size_t at = 0; at < texts.size(); ++at) {
            ASSERT_EQ(watched[at].Test(texts[at], moment, watchedMemory),
                      TestCriteria(texts[at], moment, memory_))
                << texts[at] << " at tick " << tick;
        }
        ASSERT_EQ(watchedMemory.entries, memory_.entries);
    }
}

} // namespace
} // namespace quorvane
