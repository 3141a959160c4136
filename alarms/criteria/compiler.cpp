#include "alarms/criteria/compiler.h"

#include "alarms/criteria/analyser.h"
#include "alarms/criteria/generation.h"
#include "alarms/criteria/lexer.h"
#include "alarms/criteria/rewriting.h"

namespace quorvane {
namespace {

CompiledCriterion Refusal(std::string message, bool inBox = false) {
    return {{}, std::move(message), inBox, true};
}

CompiledCriterion Compile(std::string_view text) {
    ScannedCriterion scanned = ScanCriterion(text);
    if (!scanned.message.empty()) return Refusal(std::move(scanned.message));

    Derivation derivation = AnalyseLeksems(scanned.leksems);
    switch (derivation.outcome) {
    case Derivation::Outcome::SyntaxError:
        return Refusal("Syntax Error!\r\nAt leksem: " + std::to_string(derivation.furthest) + "\r\n");
    case Derivation::Outcome::StackExhausted:
        return Refusal("Out of system resources!\r\nStack underrun, while syntax check...", true);
    case Derivation::Outcome::Accepted:
        break;
    }
    NumberValues(derivation.productions);
    return {GenerateInstructions(PrefixOrder(derivation.productions), scanned), {}, false, false};
}

} // namespace

CompiledCriterion CompileCriteria(std::string_view text) {
    try {
        return Compile(text);
    } catch (const RunTimeError&) {
        return Refusal({});
    }
}

} // namespace quorvane
