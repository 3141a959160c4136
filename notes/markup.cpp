#include "notes/markup.h"

#include "core/numbers.h"
#include "core/run_time_error.h"
#include "core/text.h"

#include <charconv>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace quorvane {
namespace {

constexpr float LargestSize = 2160; // points

// The first token of a letter: "$", the letter, a value, "$".
struct Token {
    bool begun = false;  // "$" and the letter are there
    bool closed = false; // and a "$" behind them
    std::string value;
};

Token FindToken(std::string_view text, char letter) {
    const std::size_t begin = text.find(std::string{'$', letter});
    if (begin == std::string_view::npos) return {};
    const std::size_t end = text.find('$', begin + 1);
    if (end == std::string_view::npos) return {true, false, {}};
    return {true, true, std::string(text.substr(begin + 2, end - begin - 2))};
}

void Delete(std::string& text, char letter, const std::string& value) {
    text = Replace(text, std::string{'$', letter} + value + '$', "");
}

// A whole number, or behind "&H" the bits of one.
std::int32_t ColorOf(const std::string& value, std::string_view decimalSign) {
    const std::string_view text = Trim(value);
    if (text.size() < 2 || text[0] != '&' || (text[1] | 0x20) != 'h') return TextToInteger(text, decimalSign);
    std::uint32_t bits = 0;
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + text.size(), bits, 16);
    if (error != std::errc() || end != text.data() + text.size()) throw RunTimeError::TypeMismatch();
    return static_cast<std::int32_t>(bits);
}

// The steps in their order, on a copy of the text.
class MarkupReader {
  public:
    MarkupReader(std::string_view text, const NoteValues& values, const NoteLook& before)
        : text_(text)
        , values_(values)
        , look_(before) {}

    NoteLook Read() {
        Substitute();
        look_.bold = TakeStyle("\\b");
        look_.italic = TakeStyle("\\i");
        look_.underline = TakeStyle("\\u");
        look_.strikethrough = TakeStyle("\\s");
        ReadSize();
        ReadFont();
        ReadColor('c', 0, look_.forecolor);
        ReadColor('b', NoteLook::ToolTipBackground, look_.backcolor);
        ReadOpacity();
        ReadLink();
        look_.text = text_;
        return look_;
    }

  private:
    void Substitute() {
        for (const char* token : {"$time$", "$clock$"})
            look_.ticking = look_.ticking || text_.find(token) != std::string::npos;
        const std::pair<std::string_view, std::string_view> replacements[] = {
            {"$time$", values_.time}, {"$clock$", values_.time}, {"$name$", Trim(values_.name)},
            {"$host$", values_.host}, {"\\n", "\r\n"},           {"\\t", "\t"}};
        for (const auto& [token, value] : replacements)
            text_ = Replace(text_, token, value);
    }

    bool TakeStyle(std::string_view token) {
        const bool there = text_.find(token) != std::string::npos;
        if (there) text_ = Replace(text_, token, "");
        return there;
    }

    void ReadSize() {
        const Token token = FindToken(text_, 's');
        if (!token.closed) {
            look_.size = NoteLook::DefaultSize;
            return;
        }
        const std::string value = token.value.empty() ? "8" : token.value;
        PassOver([&] {
            const auto size = static_cast<float>(LocaleTextToDouble(value, values_.decimalSign));
            if (size > 0 && size <= LargestSize) look_.size = size;
        });
        Delete(text_, 's', value);
    }

    void ReadFont() {
        const Token token = FindToken(text_, 'f');
        if (token.value.empty()) return;
        Delete(text_, 'f', token.value);
        look_.font = token.value;
    }

    // Deleted is the token that names the colour in decimal, so one in hexadecimal stays in the text.
    void ReadColor(char letter, std::int32_t byDefault, std::int32_t& color) {
        const Token token = FindToken(text_, letter);
        if (token.begun && !token.closed) return;
        if (token.value.empty()) {
            color = byDefault;
            return;
        }
        PassOver([&] { color = ColorOf(token.value, values_.decimalSign); });
        Delete(text_, letter, std::to_string(color));
    }

    void ReadOpacity() {
        const Token token = FindToken(text_, 'r');
        if (!token.begun) look_.alpha = 255;
        if (!token.closed) return;
        if (!token.value.empty()) Delete(text_, 'r', token.value);
        PassOver([&] {
            const double percent =
                token.value.empty() ? 100 : LocaleTextToDouble(token.value, values_.decimalSign);
            const double alpha = std::fmod(std::floor(percent / 100 * 255), 256);
            look_.alpha = static_cast<std::uint8_t>(alpha < 0 ? alpha + 256 : alpha);
        });
    }

    void ReadLink() {
        const Token token = FindToken(text_, 'u');
        look_.link = Replace(token.value, "||", "\\");
        if (!token.value.empty()) Delete(text_, 'u', token.value);
    }

    std::string text_;
    const NoteValues& values_;
    NoteLook look_;
};

} // namespace

NoteLook Set_Text(std::string_view text, const NoteValues& values, const NoteLook& before) {
    return MarkupReader(text, values, before).Read();
}

std::string NoteDisplayText(std::string_view text) {
    std::string shown(text);
    for (const char letter : {'s', 'f', 'c', 'b', 'r', 'u'}) {
        const Token token = FindToken(shown, letter);
        if (!token.value.empty()) Delete(shown, letter, token.value);
    }
    return Replace(Replace(shown, "\r\n", "\\n"), "\t", "\\t");
}

} // namespace quorvane
