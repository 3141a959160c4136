#include "core/utf8.h"

namespace quorvane {

namespace {

// Bytes of the letter that begins with `byte`; 0 where none does.
int LetterLength(unsigned char byte) {
    if (byte < 0x80) return 1;
    if (byte >= 0xC2 && byte < 0xE0) return 2;
    if (byte >= 0xE0 && byte < 0xF0) return 3;
    if (byte >= 0xF0 && byte < 0xF5) return 4;
    return 0;
}

} // namespace

char32_t DecodeLetter(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const auto length = static_cast<std::size_t>(LetterLength(first));
    if (length < 2 || at + length > text.size()) {
        ++at;
        return first;
    }
    char32_t letter = first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[at + i])) {
            ++at;
            return first;
        }
        letter = (letter << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3Fu);
    }
    at += length;
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
        DecodeLetter(text, at);
    return count;
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
