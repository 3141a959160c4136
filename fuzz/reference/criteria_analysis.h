#pragma once

#include "alarms/criteria/analyser.h"
#include "alarms/criteria/generation.h"
#include "alarms/criteria/grammar.h"
#include "alarms/criteria/rewriting.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// The criteria language as a text-book walk over its grammar and its lists, step by step and as slow as that
// is: the measure for the analyser and the rewriting, which reach the same results another way.
namespace quorvane::reference {

struct Entry {
    std::string form;
    std::size_t pos;
    std::size_t leks;
    int alt;
};

// The production that an entry of the stack stands for: the first row left in its form was expanded.
inline Production ProductionOf(const Entry& entry) {
    const auto row = std::find_if(entry.form.begin(), entry.form.end(), IsRow);
    return {*row, static_cast<unsigned char>(entry.alt)};
}

inline int AlternativeLimit(char row) {
    return row == 'G' ? 8 : 2;
}

// The backtracking walk. Empty where it has not ended after `patience` steps; every level of brackets before
// an error makes it about eight times longer.
inline std::optional<Derivation> Walk(const std::string& leksems, std::size_t stackEntries, long patience) {
    std::vector<Entry> stack;
    Entry now{"S", 1, 1, 1};
    bool advance = true;
    std::size_t furthest = 0;
    Derivation result;
    const auto pop = [&] {
        if (stack.empty()) return false;
        now = stack.back();
        stack.pop_back();
        return true;
    };
    for (; now.leks <= leksems.size(); --patience) {
        if (patience == 0) return std::nullopt;
        const char symbol = now.pos > now.form.size() ? '*' : now.form[now.pos - 1];
        bool popped = true;
        if (IsRow(symbol)) {
            if (!advance) {
                if (now.alt == AlternativeLimit(symbol)) {
                    if (!pop()) popped = false;
                    if (popped) continue;
                } else {
                    ++now.alt;
                }
            }
            if (popped) {
                if (stack.size() == stackEntries) {
                    result.outcome = Derivation::Outcome::StackExhausted;
                    return result;
                }
                stack.push_back(now);
                now.form.replace(
                    now.pos - 1, 1,
                    std::string(RowOf(symbol).alternatives[static_cast<std::size_t>(now.alt) - 1]));
                now.alt = 1;
                advance = true;
            }
        } else if (symbol == leksems[now.leks - 1]) {
            ++now.pos;
            ++now.leks;
            furthest = std::max(furthest, now.pos);
        } else {
            advance = false;
            popped = pop();
        }
        if (!popped) {
            result.outcome = Derivation::Outcome::SyntaxError;
            result.furthest = furthest;
            return result;
        }
    }
    for (const Entry& entry : stack)
        result.productions.push_back(ProductionOf(entry));
    return result;
}

inline bool IsUnreduced(const Production& p) {
    return p.row == 'S' || p.row == 'T' || p.row == 'E' || (p.row == 'G' && p.alternative == Group);
}
inline bool IsLeaf(const Production& p) {
    return p.row == 'G' && (p.alternative == ConstantOperand || p.alternative == VariableOperand);
}
inline bool IsBinary(const Production& p) {
    return p.row != 'G' && p.alternative == 2;
}
inline bool IsCall(const Production& p) {
    return p.row == 'G' && p.alternative >= Minus;
}
inline bool IsOperatorRow(const Production& p) {
    return p.row == 'R' || p.row == 'F' || p.row == 'H';
}

// The entry right behind the subtree at `at`.
inline std::size_t Behind(const std::vector<Production>& list, std::size_t at) {
    int open = 1;
    for (; open > 0 && at < list.size(); ++at)
        open += IsLeaf(list[at]) ? -1 : IsBinary(list[at]) ? 1 : 0;
    return at;
}

// The rewriting in place: entries deleted and turned into one another until no unreduced one is left. Empty
// where that never comes.
inline std::optional<std::vector<Production>> Rewrite(std::vector<Production> list) {
    std::size_t start = 0;
    for (long patience = 1000000; patience > 0; --patience) {
        const auto first = std::find_if(list.begin(), list.end(), IsUnreduced);
        if (first == list.end()) return list;
        start = static_cast<std::size_t>(first - list.begin());
        for (; start < list.size() && !IsCall(list[start]); --patience) {
            if (patience <= 0) return std::nullopt;
            Production& entry = list[start];
            if (!IsUnreduced(entry)) {
                ++start;
            } else if (!IsBinary(entry)) {
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(start));
            } else if (start + 1 < list.size() && IsUnreduced(list[start + 1])) {
                ++start;
            } else {
                const std::size_t partner = Behind(list, start + 1);
                if (partner >= list.size() || !IsOperatorRow(list[partner])) return std::nullopt;
                entry = list[partner];
                entry.alternative = 2;
                if (IsBinary(list[partner])) {
                    const char unlinked = list[partner].row == 'R'   ? 'S'
                                          : list[partner].row == 'F' ? 'T'
                                                                     : 'E';
                    list[partner] = {unlinked, 2};
                } else {
                    list.erase(list.begin() + static_cast<std::ptrdiff_t>(partner));
                }
            }
        }
    }
    return std::nullopt;
}

// What the analyser and the rewriting do otherwise than the slow way, which ended as `slow`; empty where they
// agree.
inline std::string Difference(const std::string& leksems, std::size_t stackEntries, const Derivation& slow) {
    Derivation fast = AnalyseLeksems(leksems, stackEntries);
    if (fast.outcome != slow.outcome) return "the outcome";
    if (fast.furthest != slow.furthest) return "the furthest leksem";
    if (fast.outcome != Derivation::Outcome::Accepted) return "";
    if (fast.productions != slow.productions) return "the derivation";

    NumberValues(fast.productions);
    const auto rewritten = Rewrite(fast.productions);
    auto prefix = PrefixOrder(fast.productions);
    for (Production& production : prefix) {
        if (IsOperatorRow(production)) production.alternative = 2; // as the merged node is called
    }
    return rewritten && prefix == *rewritten ? "" : "the prefix order";
}

} // namespace quorvane::reference
