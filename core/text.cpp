#include "core/text.h"

#include "core/utf8.h"

namespace quorvane {
namespace {

// Two-byte letters only, and only where both cases take two bytes, so that folding never changes a length.
char32_t LowerLetter(char32_t c) {
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

char32_t UpperLetter(char32_t c) {
    for (const char32_t distance : {32U, 80U, 1U}) {
        if (c >= distance && c - distance >= 0xC0 && LowerLetter(c - distance) == c && LowerLetter(c) == c)
            return c - distance;
    }
    return c;
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
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if ((c & 0x80) != 0 && LetterBytes(text, at) == 2) {
            AppendLetter(result, LowerLetter(DecodeLetter(text, at)));
        } else {
            result.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
            ++at;
        }
    }
    return result;
}

std::string UpperFirst(std::string_view text) {
    std::string result(text);
    if (text.empty()) return result;
    if (LetterBytes(text, 0) == 2) {
        std::size_t at = 0;
        std::string first;
        AppendLetter(first, UpperLetter(DecodeLetter(text, at)));
        result.replace(0, at, first);
    } else if (result[0] >= 'a' && result[0] <= 'z') {
        result[0] = static_cast<char>(result[0] - 32);
    }
    return result;
}

std::string FoldedName(std::string_view text) {
    return LowerCase(Trim(text));
}

bool SameName(std::string_view a, std::string_view b) {
    return FoldedName(a) == FoldedName(b);
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
