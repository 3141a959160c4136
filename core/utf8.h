#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace quorvane {

// Letters of UTF-8 texts. A byte that begins no letter counts as a letter of its own value, so that texts of
// arbitrary bytes pass.

constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How many bytes the letter at `at` has: 1 to 4, or 0 where none begins there (a byte alone, an overlong
// form, a surrogate).
std::size_t LetterBytes(std::string_view text, std::size_t at);
// The position behind the letter at `at`.
inline std::size_t NextLetter(std::string_view text, std::size_t at) {
    return at + std::max<std::size_t>(LetterBytes(text, at), 1);
}

// The letter at `at`, which moves behind it.
char32_t DecodeLetter(std::string_view text, std::size_t& at);
void AppendLetter(std::string& text, char32_t letter);

int CountLetters(std::string_view text);
// The first and the last `count` letters, or the whole text where it has no more.
std::string_view FirstLetters(std::string_view text, int count);
std::string_view LastLetters(std::string_view text, int count);

// With control letters as \n, \t or \x1b: what a terminal or a notification would obey is shown instead.
std::string EscapeControls(std::string_view text);

// In quotation marks, with line ends as \r and \n and quotation marks as \": for dumps and logs.
std::string Quoted(std::string_view text);

} // namespace quorvane
