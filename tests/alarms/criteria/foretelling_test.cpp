#include "alarms/criteria/foretelling.h"

#include "alarms/criteria/compiler.h"
#include "platform/shared/seeded_random.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace quorvane {
namespace {

Foretelling Foretold(const std::string& text) {
    const CompiledCriterion result = CompileCriteria(text);
    EXPECT_FALSE(result.refused) << text << ": " << result.message;
    return Foretelling(result.compiled);
}

// The moments as YYYYMMDDhhmmss, a blank between two.
std::string Turns(const std::string& text, const DateTime& from, std::size_t count) {
    std::string told;
    for (const DateTime& at : Foretold(text).Turns(from, count)) {
        const std::int64_t date = (at.year * 100 + at.month) * 100 + at.day;
        const std::int64_t time = (at.hour * 100 + at.minute) * 100 + at.second;
        told += (told.empty() ? "" : " ") + std::to_string(date * 1000000 + time);
    }
    return told;
}

constexpr DateTime Noon{2026, 11, 21, 12, 0, 0}; // a Saturday

TEST(CriteriaForetelling, FindsWhatTheCalendarHolds) {
    const struct {
        const char* text;
        std::size_t count;
        const char* turns;
    } rows[] = {
        {"hh=7&nn=30&wd<6", 3, "20261123073000 20261124073000 20261125073000"},
        {"dd=29&mm=2&wd=1", 5, ""}, // 2044, beyond ten years
        {"dd=29&mm=2", 5, "20280229000000 20320229000000 20360229000000"},
        {"wn=6", 2, "20261130000000 20270531000000"},
        {"hh=12", 1, "20261122120000"}, // true at the beginning, so only after it was false
        {"nn=0", 1, "20261121130000"},
        {"(ss\\20)=0&hh=12&nn<2", 4, "20261121120020 20261121120040 20261121120100 20261121120120"},
        {"1/(ss-30)", 2, "20261121120031 20261121120131"}, // false by failure at each half minute
        {"1", 5, ""},
        {"0", 5, ""},
        {"ss=5&ss=6", 5, ""},
        {"((yy*372+mm*31+dd)*86400+hh*3600+nn*60+ss)=((2030*372+31+1)*86400+5)", 5, "20300101000005"},
        {"yy=2036&mm=11&dd=21&hh>=12", 1, "20361121120000"}, // the last second of the ten years
        {"yy=2036&mm=11&dd=21&hh>12", 1, ""},
        {"fst(hh)=13&mm=12", 1, "20261201130000"},
        {"fst(hh)+fst(nn)", 1, ""}, // the second one fails
        {"yy=", 1, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Turns(row.text, Noon, row.count), row.turns) << row.text;
    EXPECT_FALSE(Foretold("rr<0.5").Possible());
    EXPECT_FALSE(Foretold("hh=3&frst(0)=1").Possible());
    EXPECT_EQ(Foretelling("1;+~9;zz~0;1").Turns(Noon, 5).size(), 0U);
    EXPECT_EQ(LocalSecondOf(DateTimeOf(-1)), -1);
}

// Random expressions over all operators, so that every way of bounding a value is met.
class RandomCriteria {
  public:
    std::string Next(int depth) {
        static const char* const Variables[] = {"ss", "ss", "nn", "nn", "hh", "hh",
                                                "dd", "wd", "wn", "mm", "yy"};
        static const char* const Operators[] = {"+", "-",  "*", "/", "\\", "&", "^", "&",
                                                "=", "<>", "<", ">", "<=", "&", "=", "<"};
        static const char* const Functions[] = {"fcos",   "fln",  "flg",  "fsqr", "f_2",
                                                "fsqr_3", "fexp", "frev", "fsin"};
        switch (depth == 0 ? Below(2) : Below(9)) {
        case 0:
            return Variables[Below(11)];
        case 1:
            return std::to_string(Below(4) == 0 ? Below(3000) : Below(60)) + (Below(8) == 0 ? ".5" : "");
        case 2:
            return "-(" + Next(depth - 1) + ")";
        case 3:
            return Bracketed(depth, "|", "|") + "+0";
        case 4:
            return Below(2) == 0 ? Bracketed(depth, "[", "]") : Bracketed(depth, "{", "}");
        case 5:
            return Functions[Below(9)] + Bracketed(depth, "(", ")");
        default:
            return "(" + Next(depth - 1) + ")" + Operators[Below(16)] + "(" + Next(depth - 1) + ")";
        }
    }
    int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

  private:
    std::string Bracketed(int depth, const char* open, const char* close) {
        return open + Next(depth - 1) + close;
    }
    std::mt19937 engine_{5};
};

TEST(CriteriaForetelling, AgreesWithLookingOnceASecond) {
    constexpr LocalSecond Window = 3 * 3600;
    RandomCriteria random;
    SeededRandom numbers;
    CriteriaMemory memory;
    int turning = 0;
    for (int round = 0; round < 400; ++round) {
        const std::string text = random.Next(4);
        const CompiledCriterion criterion = CompileCriteria(text);
        if (criterion.refused) continue;
        const DateTime from{2026 + random.Below(9), 1 + random.Below(12), 1 + random.Below(28),
                            random.Below(24),       random.Below(60),     random.Below(60)};
        const LocalSecond begin = LocalSecondOf(from);
        CriteriaProgram program(criterion.compiled);
        const auto answer = [&](LocalSecond at) {
            return program.Evaluate(CriteriaMoment(DateTimeOf(at), numbers), memory);
        };
        std::vector<LocalSecond> seen;
        bool before = answer(begin);
        for (LocalSecond at = begin + 1; at < begin + Window && seen.size() < 40; ++at) {
            const bool now = answer(at);
            if (now && !before) seen.push_back(at);
            before = now;
        }
        Foretelling foretelling(criterion.compiled);
        std::vector<LocalSecond> told;
        for (auto at = foretelling.First(false, begin, begin + Window); at && told.size() < 40;
             at = foretelling.First(false, *at, begin + Window)) {
            at = foretelling.First(true, *at, begin + Window);
            if (!at) break;
            told.push_back(*at);
        }
        ASSERT_EQ(told, seen) << text << " from " << begin;
        turning += !seen.empty();
    }
    EXPECT_GT(turning, 40);
}

} // namespace
} // namespace quorvane
