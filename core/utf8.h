#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane {

// Letters of UTF-8 texts. A byte that begins no letter counts as a letter of its own value, so that texts of
// arbitrary bytes pass.

constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The letter at `at`, which moves behind it.
char32_t DecodeLetter(std::string_view text, std::size_t& at);
void AppendLetter(std::string& text, char32_t letter);
int CountLetters(std::string_view text);

// In quotation marks, with line ends as \r and \n and quotation marks as \": for dumps and logs.
std::string Quoted(std::string_view text);

} // namespace quorvane
