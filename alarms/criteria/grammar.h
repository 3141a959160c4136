#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quorvane {

// The grammar of the criteria language. A capital letter is a row of the table, every other character a
// leksem. The start is S. Comparisons bind tightest, then the high operators, then the low ones; all three
// chains are right-associative, and a minus sign stands before a bracket only.
struct GrammarRow {
    char name;
    std::array<std::string_view, 8> alternatives; // numbered from 1; the unused ones are empty
};

inline constexpr std::array<GrammarRow, 7> CriteriaGrammar{{
    {'S', {"T", "TR"}},
    {'R', {"oT", "oTR"}},
    {'T', {"E", "EF"}},
    {'F', {"pE", "pEF"}},
    {'E', {"G", "GH"}},
    {'H', {"cG", "cGH"}},
    {'G', {"(S)", "a", "b", "-(S)", "[S]", "|S|", "{S}", "f(S)"}},
}};

// The alternatives of the row G by their numbers.
enum Operand : unsigned char {
    Group = 1,
    ConstantOperand,
    VariableOperand,
    Minus,
    IntegerPart,
    AbsoluteValue,
    FractionalPart,
    FunctionCall,
};

// One step of a derivation: a row of the grammar replaced by one of its alternatives.
struct Production {
    char row = 0;
    unsigned char alternative = 0;
    // Which value of its class's table the production takes, from 0; -1 where it takes none.
    short value = -1;

    bool operator==(const Production&) const = default;
};

constexpr bool IsRow(char symbol) {
    return symbol >= 'A' && symbol <= 'Z';
}

// The row of each capital letter.
inline constexpr auto GrammarRowIndices = [] {
    std::array<unsigned char, 26> indices{};
    for (std::size_t at = 0; at < CriteriaGrammar.size(); ++at)
        indices[static_cast<std::size_t>(CriteriaGrammar[at].name - 'A')] = static_cast<unsigned char>(at);
    return indices;
}();

constexpr std::size_t RowIndex(char name) {
    return GrammarRowIndices[static_cast<std::size_t>(name - 'A')];
}
constexpr const GrammarRow& RowOf(char name) {
    return CriteriaGrammar[RowIndex(name)];
}

constexpr std::string_view TextOf(const Production& production) {
    return RowOf(production.row).alternatives[production.alternative - 1U];
}

// Of each alternative of each row how many rows it holds.
inline constexpr auto GrammarChildCounts = [] {
    std::array<std::array<unsigned char, 8>, CriteriaGrammar.size()> counts{};
    for (std::size_t row = 0; row < counts.size(); ++row) {
        for (std::size_t at = 0; at < counts[row].size(); ++at) {
            for (const char symbol : CriteriaGrammar[row].alternatives[at])
                counts[row][at] = static_cast<unsigned char>(counts[row][at] + IsRow(symbol));
        }
    }
    return counts;
}();

// The children of a production.
constexpr int ChildCount(const Production& production) {
    return GrammarChildCounts[RowIndex(production.row)][production.alternative - 1U];
}

} // namespace quorvane
