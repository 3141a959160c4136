#include "alarms/criteria/compiler.h"
#include "alarms/criteria/program.h"
#include "platform/shared/seeded_random.h"
#include "tests/alarms/criteria/counted_heap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

TEST(CriteriaHeap, AnAlarmTestedForeverTakesNothingFromIt) {
    std::vector<std::string> texts;
    for (const char* const text : {"hh=12&nn=30&wd<6", "rr<0.5^fst(ss)>frst(0)", "1/(ss-30)", "fctg(1)",
                                   "fln(-(ss))", "{ss/7}*[nn]\\|3-hh|", "ss+f_10(400)", "fst(fst(1))", "1+"})
        texts.push_back(CompileCriteria(text).compiled);
    texts.push_back("1;+~9;zz~0;1");

    SeededRandom random;
    CriteriaMemory memory;
    std::vector<CriteriaProgram> programs(texts.begin(), texts.end());
    std::vector<WatchedCriterion> watched(texts.size());
    const auto tick = [&](int second) {
        const CriteriaMoment moment({2026, 11, 21, 12, second / 60, second % 60}, random);
        int held = 0;
        for (std::size_t at = 0; at < texts.size(); ++at) {
            held += programs[at].Evaluate(moment, memory);
            held += watched[at].Test(texts[at], moment, memory);
        }
        return held;
    };
    tick(0);
    const long before = HeapAllocations();
    int held = 0;
    for (int second = 0; second < 3600; ++second)
        held += tick(second);
    EXPECT_EQ(HeapAllocations() - before, 0);
    EXPECT_GT(held, 3600);

    texts[0] += "~0;1";
    tick(0);
    EXPECT_GT(HeapAllocations() - before, 0) << "a changed text is decoded, and the counter counts";
}

} // namespace
} // namespace quorvane
