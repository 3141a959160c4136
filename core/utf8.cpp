#include "core/utf8.h"

namespace quorvane {

std::size_t LetterBytes(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[at + index]); };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first < 0xC2 || first >= 0xF5) return 0;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (text.size() - at < length) return 0;
    for (std::size_t index = 1; index < length; ++index) {
        if (!IsContinuation(text[at + index])) return 0;
    }
    const unsigned second = byte(1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second >= 0xA0;
    const bool beyond = first == 0xF4 && second >= 0x90;
    return overlong || surrogate || beyond ? 0 : length;
}

char32_t DecodeLetter(std::string_view text, std::size_t& at) {
    const std::size_t length = LetterBytes(text, at);
    const auto first = static_cast<unsigned char>(text[at++]);
    if (length < 2) return first;
    char32_t letter = first & (0x7Fu >> length);
    for (std::size_t rest = length - 1; rest > 0; --rest)
        letter = (letter << 6) | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
    return letter;
}

void AppendLetter(std::string& text, char32_t letter) {
    if (letter < 0x80) {
        text += static_cast<char>(letter);
    } else if (letter < 0x800) {
        text += static_cast<char>(0xC0 | (letter >> 6));
        text += static_cast<char>(0x80 | (letter & 0x3F));
    } else if (letter < 0x10000) {
        text += static_cast<char>(0xE0 | (letter >> 12));
        text += static_cast<char>(0x80 | ((letter >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (letter & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (letter >> 18));
        text += static_cast<char>(0x80 | ((letter >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((letter >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (letter & 0x3F));
    }
}

int CountLetters(std::string_view text) {
    int count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        at = NextLetter(text, at);
    return count;
}

std::string_view FirstLetters(std::string_view text, int count) {
    std::size_t end = 0;
    for (; end < text.size() && count > 0; --count)
        end = NextLetter(text, end);
    return text.substr(0, end);
}

std::string_view LastLetters(std::string_view text, int count) {
    return text.substr(FirstLetters(text, CountLetters(text) - count).size());
}

std::string EscapeControls(std::string_view text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const char32_t letter = DecodeLetter(text, at);
        if (letter >= 0x20 && letter != 0x7F && (letter < 0x80 || letter >= 0xA0)) {
            shown.append(text.substr(start, at - start));
        } else if (letter == '\n' || letter == '\t' || letter == '\r') {
            shown.append({'\\', letter == '\n' ? 'n' : letter == '\t' ? 't' : 'r'});
        } else {
            constexpr std::string_view Digits = "0123456789abcdef";
            shown.append({'\\', 'x', Digits[letter >> 4], Digits[letter & 0xF]});
        }
    }
    return shown;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char each : text) {
        switch (each) {
        case '\r':
            quoted += "\\r";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '"':
            quoted += "\\\"";
            break;
        default:
            quoted += each;
        }
    }
    return quoted += '"';
}

} // namespace quorvane
