#pragma once

#include "alarms/criteria/grammar.h"
#include "alarms/criteria/lexer.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Gives each production of a derivation its place in the table of its class. The derivation is leftmost, so
// the nth production of a class has the nth value.
void NumberValues(std::vector<Production>& derivation);

// The compiled text of a list in prefix order: instructions joined by "~", each a digit, ";" and an operand.
std::string GenerateInstructions(const std::vector<Production>& prefix, const ScannedCriterion& scanned);

} // namespace quorvane
