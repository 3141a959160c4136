#include "platform/shared/name_pattern.h"

#include "core/text.h"
#include "core/utf8.h"

#include <algorithm>

namespace quorvane {
namespace {

bool IsPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return (c & 0x80) == 0 && c != '*' && c != '?'; });
}

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool EndsWithTail(std::string_view name, std::string_view foldedTail) {
    if (name.size() < foldedTail.size()) return false;
    const char* at = name.data() + (name.size() - foldedTail.size());
    for (const char c : foldedTail) {
        if (LowerAscii(*at++) != c) return false;
    }
    return true;
}

// Both sides folded. On a mismatch the last star takes one letter more, so the work is bounded by the product
// of the lengths.
bool FitsWildcards(std::string_view name, std::string_view pattern) {
    constexpr std::size_t None = std::string_view::npos;
    std::size_t at = 0;
    std::size_t inPattern = 0;
    std::size_t star = None;
    std::size_t starTook = 0;
    while (at < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = ++inPattern;
            starTook = at;
        } else if (inPattern < pattern.size() && pattern[inPattern] == '?') {
            ++inPattern;
            at = NextLetter(name, at);
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[at]) {
            ++inPattern;
            ++at;
        } else if (star != None) {
            inPattern = star;
            at = starTook = NextLetter(name, starTook);
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == None;
}

} // namespace

NamePattern::NamePattern(std::string_view patterns) {
    for (const std::string& part : Split(patterns, ';')) {
        std::string folded = FoldedName(part);
        if (folded.empty()) continue;
        if (folded == "*" || folded == "*.*") takesAll_ = true;
        const bool isTail = folded[0] == '*' && IsPlainAscii(std::string_view(folded).substr(1));
        if (isTail) folded.erase(0, 1);
        needsFolding_ |= !isTail;
        alternatives_.push_back({std::move(folded), isTail});
    }
    takesAll_ |= alternatives_.empty();
}

bool NamePattern::Fits(std::string_view name) const {
    if (takesAll_) return true;
    const std::string folded = needsFolding_ ? LowerCase(name) : std::string();
    return std::any_of(alternatives_.begin(), alternatives_.end(), [&](const Alternative& alternative) {
        return alternative.isTail ? EndsWithTail(name, alternative.folded)
                                  : FitsWildcards(folded, alternative.folded);
    });
}

} // namespace quorvane
