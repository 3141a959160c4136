#pragma once

#include "alarms/criteria/grammar.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quorvane {

struct Derivation {
    enum class Outcome {
        Accepted,
        SyntaxError,
        StackExhausted, // the derivation needs more entries than the stack has
    };

    Outcome outcome = Outcome::Accepted;
    // The leftmost derivation, in order; whole only where the leksems were accepted.
    std::vector<Production> productions;
    // Of a syntax error: the position, from 1, of the first leksem that was never matched; 0 if none was.
    std::size_t furthest = 0;
};

inline constexpr std::size_t AnalyserStackEntries = 10000;

// Whether a string of leksems is a criterion, and which. The language is that of a walk that tries the
// alternatives of each row of the grammar in their order, goes back at the first leksem that does not fit,
// and is content as soon as the last leksem is matched: a text that runs out early is accepted, and what it
// leaves open takes the first alternative. A walk of that sort keeps an entry for each production on a stack
// of `stackEntries`.
Derivation AnalyseLeksems(std::string_view leksems, std::size_t stackEntries = AnalyserStackEntries);

} // namespace quorvane
