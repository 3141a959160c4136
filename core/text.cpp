#include "core/text.h"

#include <algorithm>
#include <cstdint>

namespace quorvane {
namespace {

using CodePoint = std::uint32_t;

// Two-byte letters only, and only where both cases take two bytes, so that folding never changes a length.
CodePoint LowerLetter(CodePoint c) {
    const bool latin1 = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    const bool greek = c >= 0x391 && c <= 0x3A9 && c != 0x3A2;
    const bool cyrillic = c >= 0x410 && c <= 0x42F;
    if (latin1 || greek || cyrillic) return c + 32;
    if (c >= 0x400 && c <= 0x40F) return c + 80;
    const bool evenIsUpper = (c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) ||
                             (c >= 0x14A && c <= 0x177) || (c >= 0x460 && c <= 0x481) ||
                             (c >= 0x48A && c <= 0x4BF) || (c >= 0x4D0 && c <= 0x52F);
    const bool oddIsUpper =
        (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E) || (c >= 0x4C1 && c <= 0x4CE);
    if (evenIsUpper) return c | 1;
    if (oddIsUpper && c % 2 == 1) return c + 1;
    return c;
}

CodePoint UpperLetter(CodePoint c) {
    for (const CodePoint distance : {32U, 80U, 1U}) {
        if (c >= distance && c - distance >= 0xC0 && LowerLetter(c - distance) == c && LowerLetter(c) == c)
            return c - distance;
    }
    return c;
}

bool IsTwoByteLetter(std::string_view text, std::size_t at) {
    return (static_cast<unsigned char>(text[at]) & 0xE0) == 0xC0 && at + 1 < text.size() &&
           (static_cast<unsigned char>(text[at + 1]) & 0xC0) == 0x80;
}

CodePoint TwoByteLetter(std::string_view text, std::size_t at) {
    return (static_cast<CodePoint>(text[at] & 0x1F) << 6) | static_cast<CodePoint>(text[at + 1] & 0x3F);
}

void AppendTwoByteLetter(std::string& out, CodePoint c) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
}

bool StartsLetter(char c) {
    return (c & 0xC0) != 0x80;
}

} // namespace

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string LowerCase(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (IsTwoByteLetter(text, at)) {
            AppendTwoByteLetter(result, LowerLetter(TwoByteLetter(text, at)));
            ++at;
        } else {
            result.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
        }
    }
    return result;
}

std::string UpperFirst(std::string_view text) {
    if (text.empty()) return {};
    std::string result;
    if (IsTwoByteLetter(text, 0)) {
        AppendTwoByteLetter(result, UpperLetter(TwoByteLetter(text, 0)));
        return result.append(text.substr(2));
    }
    const char c = text[0];
    result.push_back(c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c);
    return result.append(text.substr(1));
}

std::string FoldedName(std::string_view text) {
    return LowerCase(Trim(text));
}

bool SameName(std::string_view a, std::string_view b) {
    return FoldedName(a) == FoldedName(b);
}

std::size_t LetterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), StartsLetter));
}

std::string_view FirstLetters(std::string_view text, std::size_t count) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (StartsLetter(text[at]) && count-- == 0) return text.substr(0, at);
    }
    return text;
}

std::string_view LastLetters(std::string_view text, std::size_t count) {
    const std::size_t letters = LetterCount(text);
    return letters <= count ? text : text.substr(FirstLetters(text, letters - count).size());
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator, start)) != std::string_view::npos; start = end + 1) {
        parts.emplace_back(text.substr(start, end - start));
    }
    parts.emplace_back(text.substr(start));
    return parts;
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    std::size_t start = 0;
    for (std::size_t at; (at = text.find(from, start)) != std::string_view::npos; start = at + from.size()) {
        result.append(text.substr(start, at - start)).append(to);
    }
    return result.append(text.substr(start));
}

} // namespace quorvane
