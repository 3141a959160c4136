#include "alarms/criteria/rewriting.h"

#include <cassert>
#include <cstddef>

namespace quorvane {
namespace {

// For each production the index behind its last descendant. A text that ended early left its last productions
// without some of their children; they end where the list does.
std::vector<std::size_t> SubtreeEnds(const std::vector<Production>& derivation) {
    const std::size_t count = derivation.size();
    std::vector<std::size_t> ends(count);
    for (std::size_t at = count; at-- > 0;) {
        std::size_t end = at + 1;
        for (int child = ChildCount(derivation[at]); child > 0 && end < count; --child)
            end = ends[end];
        ends[at] = end;
    }
    return ends;
}

} // namespace

// The derivation has each operator behind its left operand: a chain x op y op z is a production of two
// children, x and the rest of the chain, and the rest begins with the operator. So whatever has two children
// takes the operator of its second one, in front of the first; the rest, if it goes on, does the same with
// its own rest, which makes the chain right-associative.
std::vector<Production> PrefixOrder(const std::vector<Production>& derivation) {
    const std::vector<std::size_t> ends = SubtreeEnds(derivation);
    std::vector<Production> prefix;
    prefix.reserve(derivation.size());
    for (std::size_t at = 0; at < derivation.size(); ++at) {
        const Production& production = derivation[at];
        if (production.row == 'G') {
            if (production.alternative != Group) prefix.push_back(production);
        } else if (production.alternative == 2) {
            const std::size_t rest = ends[at + 1];
            assert(rest < derivation.size());
            prefix.push_back(derivation[rest]);
        }
    }
    return prefix;
}

} // namespace quorvane
