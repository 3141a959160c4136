#include "alarms/criteria/analyser.h"

#include "fuzz/reference/criteria_analysis.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace quorvane {
namespace {

using Outcome = Derivation::Outcome;

// Random strings of leksems: grown from the grammar, then often cut, and often with a leksem put in wrongly.
class RandomLeksems {
  public:
    explicit RandomLeksems(unsigned seed)
        : engine_(seed) {}

    std::string Next() {
        std::string text;
        if (Below(8) == 0) {
            for (int i = Below(8); i > 0; --i)
                text.push_back(AnyLeksem());
            return text;
        }
        Grow('S', 3, text);
        if (Below(3) == 0) text.resize(static_cast<std::size_t>(Below(static_cast<int>(text.size()) + 1)));
        for (int faults = Below(3); faults > 0 && !text.empty(); --faults)
            Spoil(text);
        return text;
    }
    int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

  private:
    char AnyLeksem() { return "aboocpf-()[]{}||"[Below(16)]; }

    void Spoil(std::string& text) {
        const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
        if (Below(2) == 0) {
            text[at] = AnyLeksem();
        } else {
            text.insert(at, 1, AnyLeksem());
        }
    }

    void Grow(char row, int depth, std::string& text) {
        const bool operand = row == 'G';
        const int choice = operand ? (depth > 0 && Below(3) == 0 ? Below(8) : 1 + Below(2)) : Below(4) == 0;
        for (const char symbol : RowOf(row).alternatives[static_cast<std::size_t>(choice)]) {
            if (IsRow(symbol)) {
                Grow(symbol, depth - operand, text);
            } else {
                text.push_back(symbol);
            }
        }
    }

    std::mt19937 engine_;
};

constexpr long Patience = 30000;

// The counts show that no sort of text has silently fallen out of the comparison.
TEST(CriteriaAnalyser, AgreesWithTheSlowWalkAndTheRewritingInPlace) {
    RandomLeksems random(20260101);
    int accepted = 0, refused = 0, exhausted = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string leksems = random.Next();
        const std::size_t room =
            random.Below(2) == 0 ? 5 + static_cast<std::size_t>(random.Below(40)) : 10000;
        const auto slow = reference::Walk(leksems, room, Patience);
        if (!slow) continue;
        ASSERT_EQ(reference::Difference(leksems, room, *slow), "") << leksems << " with room for " << room;
        accepted += slow->outcome == Outcome::Accepted;
        refused += slow->outcome == Outcome::SyntaxError;
        exhausted += slow->outcome == Outcome::StackExhausted;
    }
    EXPECT_GT(accepted, 5000);
    EXPECT_GT(refused, 5000);
    EXPECT_GT(exhausted, 500);
}

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
        EXPECT_EQ(derivation.outcome, Outcome::SyntaxError);
        EXPECT_EQ(derivation.furthest, leksems.size()) << opening;
    }
}

} // namespace
} // namespace quorvane
