#include "alarms/criteria/generation.h"

#include "core/numbers.h"

namespace quorvane {
namespace {

template<typename Words>
std::string_view NameOf(const Words& words, const WordTable& table, const Production& production) {
    return words[table[static_cast<std::size_t>(production.value)]].name;
}

void AppendOperand(std::string& text, const Production& production, const ScannedCriterion& scanned) {
    switch (production.alternative) {
    case ConstantOperand:
        text.append("0;").append(
            PlainNumberText(scanned.constants[static_cast<std::size_t>(production.value)]));
        break;
    case VariableOperand:
        text.append("9;").append(NameOf(SystemVariableWords, scanned.variables, production));
        break;
    case Minus:
        text.append("4;NEG");
        break;
    case IntegerPart:
        text.append("5;INT");
        break;
    case AbsoluteValue:
        text.append("6;ABS");
        break;
    case FractionalPart:
        text.append("7;FRAC");
        break;
    case FunctionCall:
        text.append("8;").append(NameOf(FunctionWords, scanned.functions, production));
        break;
    default:
        break;
    }
}

} // namespace

void NumberValues(std::vector<Production>& derivation) {
    short constants = 0, variables = 0, functions = 0, lowOperators = 0, highOperators = 0, comparisons = 0;
    for (Production& production : derivation) {
        switch (TextOf(production)[0]) {
        case 'a':
            production.value = constants++;
            break;
        case 'b':
            production.value = variables++;
            break;
        case 'c':
            production.value = comparisons++;
            break;
        case 'o':
            production.value = lowOperators++;
            break;
        case 'p':
            production.value = highOperators++;
            break;
        case 'f':
            production.value = functions++;
            break;
        default:
            break;
        }
    }
}

std::string GenerateInstructions(const std::vector<Production>& prefix, const ScannedCriterion& scanned) {
    std::string text;
    text.reserve(prefix.size() * 6);
    for (const Production& production : prefix) {
        if (!text.empty()) text.push_back('~');
        switch (production.row) {
        case 'R':
            text.append("1;").append(NameOf(LowOperatorWords, scanned.lowOperators, production));
            break;
        case 'F':
            text.append("2;").append(NameOf(HighOperatorWords, scanned.highOperators, production));
            break;
        case 'H':
            text.append("3;").append(NameOf(ComparisonWords, scanned.comparisons, production));
            break;
        default:
            AppendOperand(text, production, scanned);
            break;
        }
    }
    return text;
}

} // namespace quorvane
