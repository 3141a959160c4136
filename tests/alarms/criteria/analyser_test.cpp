#include "alarms/criteria/analyser.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace quorvane {
namespace {

// A walk that goes back would take eight times longer for each of these brackets and never come to an end
// here; how long the analyser takes is measured by bench/criteria.
TEST(CriteriaAnalyser, DeepNestingBeforeAnErrorIsWalkedOnce) {
    using Pair = std::pair<const char*, const char*>;
    for (const auto& [opening, closing] :
         {Pair{"(", ")"}, {"[", "]"}, {"{", "}"}, {"|", "|"}, {"-(", ")"}, {"f(", ")"}}) {
        std::string leksems;
        for (int level = 0; level < 500; ++level)
            leksems += opening;
        leksems += 'a';
        for (int level = 0; level < 499; ++level)
            leksems += closing;
        leksems += 'a';
        const Derivation derivation = AnalyseLeksems(leksems);
        EXPECT_EQ(derivation.outcome, Derivation::Outcome::SyntaxError);
        EXPECT_EQ(derivation.furthest, leksems.size()) << opening;
    }
}

} // namespace
} // namespace quorvane
