#include "alarms/criteria/analyser.h"

#include <algorithm>

namespace quorvane {
namespace {

// The rows of the table are of two sorts, and that is why no text needs a second try.
//
// A choice: every alternative begins with a leksem of its own, so the next leksem names the alternative.
constexpr bool IsChoice(const GrammarRow& row) {
    for (std::size_t at = 0; at < row.alternatives.size(); ++at) {
        if (row.alternatives[at].empty() || IsRow(row.alternatives[at][0])) return false;
        for (std::size_t other = 0; other < at; ++other) {
            if (row.alternatives[at][0] == row.alternatives[other][0]) return false;
        }
    }
    return true;
}

// A link: the second alternative is the first with one more row behind it, which begins with an operator. The
// operator can follow the first alternative in no other way, so the leksem behind the first alternative
// decides between the two; until it comes, the first one stands.
constexpr bool IsLink(const GrammarRow& row) {
    const std::string_view brief = row.alternatives[0];
    const std::string_view longer = row.alternatives[1];
    return row.alternatives[2].empty() && longer.size() == brief.size() + 1 &&
           longer.substr(0, brief.size()) == brief && IsRow(longer.back()) &&
           !IsRow(RowOf(longer.back()).alternatives[0][0]);
}

static_assert(std::all_of(CriteriaGrammar.begin(), CriteriaGrammar.end(),
                          [](const GrammarRow& row) { return IsLink(row) != IsChoice(row); }));

// Of each row of the table the leksem that turns its first alternative into the second; 0 for a choice.
constexpr auto LinkLeksems = [] {
    std::array<char, CriteriaGrammar.size()> leksems{};
    for (std::size_t at = 0; at < leksems.size(); ++at) {
        const GrammarRow& row = CriteriaGrammar[at];
        if (IsLink(row)) leksems[at] = RowOf(row.alternatives[1].back()).alternatives[0][0];
    }
    return leksems;
}();

// Of each row the alternative, from 1, that it begins with before a leksem: that of a choice that begins with
// it, the first one of a link; 0 where none does.
constexpr auto FirstAlternatives = [] {
    std::array<std::array<unsigned char, 128>, CriteriaGrammar.size()> chosen{};
    for (std::size_t row = 0; row < chosen.size(); ++row) {
        if (LinkLeksems[row] != 0) chosen[row].fill(1);
        if (LinkLeksems[row] != 0) continue;
        const auto& alternatives = CriteriaGrammar[row].alternatives;
        for (std::size_t at = 0; at < alternatives.size(); ++at)
            chosen[row][static_cast<unsigned char>(alternatives[at][0])] = static_cast<unsigned char>(at + 1);
    }
    return chosen;
}();

class Analyser {
  public:
    Analyser(std::string_view leksems, std::size_t stackEntries)
        : leksems_(leksems)
        , stackEntries_(stackEntries) {
        derivation_.productions.reserve(std::min(4 * leksems.size() + 4, stackEntries));
        open_.reserve(std::min(leksems.size() + 4, stackEntries));
    }

    Derivation Analyse();

  private:
    // A production whose alternative has not been gone through to its end.
    struct OpenProduction {
        std::size_t index;     // in the derivation
        std::string_view rest; // of its alternative
    };
    enum class Match { Yes, No, NoRoom };

    Match Take(char leksem);
    // Adds the production that the row begins with before `leksem`.
    Match Expand(char row, char leksem);
    // Turns a link at its end into the longer alternative where `leksem` asks for that.
    bool Lengthen(OpenProduction& link, char leksem);
    bool HasRoom() const { return derivation_.productions.size() < stackEntries_; }

    std::string_view leksems_;
    std::size_t stackEntries_;
    Derivation derivation_;
    std::vector<OpenProduction> open_;
};

Derivation Analyser::Analyse() {
    Match match = leksems_.empty() ? Match::Yes : Expand('S', leksems_[0]);
    std::size_t at = 0;
    for (; match == Match::Yes && at < leksems_.size(); ++at)
        match = Take(leksems_[at]);
    if (match == Match::NoRoom) {
        derivation_.outcome = Derivation::Outcome::StackExhausted;
    } else if (match == Match::No) {
        derivation_.outcome = Derivation::Outcome::SyntaxError;
        const std::size_t matched = at == 0 ? 0 : at - 1;
        derivation_.furthest = matched == 0 ? 0 : matched + 1;
    }
    return std::move(derivation_);
}

Analyser::Match Analyser::Take(char leksem) {
    // Behind a finished operand any leksem at all is first tried as a link, which takes an entry.
    const bool operandFinished = open_.back().rest.empty();
    while (!open_.empty()) {
        OpenProduction& innermost = open_.back();
        if (innermost.rest.empty()) {
            if (!Lengthen(innermost, leksem)) open_.pop_back();
            continue;
        }
        const char symbol = innermost.rest.front();
        if (!IsRow(symbol)) {
            if (symbol != leksem) break;
            innermost.rest.remove_prefix(1);
            return Match::Yes;
        }
        innermost.rest.remove_prefix(1);
        const Match match = Expand(symbol, leksem);
        if (match != Match::Yes) return match;
    }
    return operandFinished && !HasRoom() ? Match::NoRoom : Match::No;
}

Analyser::Match Analyser::Expand(char row, char leksem) {
    if (!HasRoom()) return Match::NoRoom;
    const unsigned char chosen = FirstAlternatives[RowIndex(row)][leksem & 0x7F];
    if (chosen == 0) return Match::No;
    open_.push_back({derivation_.productions.size(), RowOf(row).alternatives[chosen - 1U]});
    derivation_.productions.push_back({row, chosen});
    return Match::Yes;
}

bool Analyser::Lengthen(OpenProduction& link, char leksem) {
    Production& production = derivation_.productions[link.index];
    const char linkLeksem = LinkLeksems[RowIndex(production.row)];
    if (production.alternative != 1 || linkLeksem == 0 || linkLeksem != leksem) return false;
    const std::string_view longer = RowOf(production.row).alternatives[1];
    production.alternative = 2;
    link.rest = longer.substr(longer.size() - 1);
    return true;
}

} // namespace

Derivation AnalyseLeksems(std::string_view leksems, std::size_t stackEntries) {
    return Analyser(leksems, stackEntries).Analyse();
}

} // namespace quorvane
