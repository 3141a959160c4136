#pragma once

#include "alarms/criteria/grammar.h"

#include <vector>

namespace quorvane {

// The derivation's operators, calls and operands in prefix order: an operator, its left operand's whole
// sequence, its right operand's. Productions that only group are gone. An operator is the production of R, F
// or H that holds it, with its value; where the text ended early, operands are missing at the end.
std::vector<Production> PrefixOrder(const std::vector<Production>& derivation);

} // namespace quorvane
