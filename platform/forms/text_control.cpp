#include "core/utf8.h"
#include "platform/forms/controls.h"

#include <algorithm>

namespace quorvane {

namespace {

// The bytes at the start that both texts share, whole letters only.
std::size_t CommonStart(std::string_view a, std::string_view b) {
    const auto [end, unused] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    auto count = static_cast<std::size_t>(end - a.begin());
    while (count > 0 && ((count < a.size() && IsContinuation(a[count])) ||
                         (count < b.size() && IsContinuation(b[count])))) {
        --count;
    }
    return count;
}

std::size_t CommonEnd(std::string_view a, std::string_view b) {
    std::size_t count = 0;
    while (count < a.size() && count < b.size() && a[a.size() - 1 - count] == b[b.size() - 1 - count])
        ++count;
    while (count > 0 && IsContinuation(a[a.size() - count]))
        --count;
    return count;
}

} // namespace

void TextControl::SetText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    selectionStart_ = static_cast<int>(text_.size());
    selectionLength_ = 0;
    Changed(Aspect::Value);
    Raise(onChange);
}

void TextControl::SetSelection(int start, int length) {
    const int size = static_cast<int>(text_.size());
    selectionStart_ = std::clamp(start, 0, size);
    selectionLength_ = std::clamp(length, 0, size - selectionStart_);
    Changed(Aspect::Value);
}

void TextControl::SetReadOnly(bool readOnly) {
    if (readOnly == readOnly_) return;
    readOnly_ = readOnly;
    Changed(Aspect::State);
}

std::string TextControl::ValueText() const {
    return Quoted(text_);
}

// What of a person's new text is let in: the letters that the filter and the length allow. The caret moves
// with them.
std::string TextControl::Admitted(const std::string& typed, int& caret) const {
    if (!keyFilter && maxLength <= 0) return typed;
    const std::size_t start = CommonStart(text_, typed);
    const std::string_view rest = std::string_view(typed).substr(start);
    const std::size_t end = CommonEnd(std::string_view(text_).substr(start), rest);
    const std::string_view entered = rest.substr(0, rest.size() - end);

    int room =
        maxLength > 0 ? maxLength - CountLetters(typed) + CountLetters(entered) : CountLetters(entered);
    std::string admitted;
    for (std::size_t at = 0; at < entered.size() && room > 0;) {
        char32_t letter = DecodeLetter(entered, at);
        if (keyFilter && letter >= U' ') letter = keyFilter(letter);
        if (letter == 0) continue;
        AppendLetter(admitted, letter);
        --room;
    }
    caret = static_cast<int>(start + admitted.size());
    return typed.substr(0, start) + admitted + std::string(rest.substr(rest.size() - end));
}

bool TextControl::Take(const Act& done) {
    if (const auto* select = std::get_if<act::Select>(&done)) {
        selectionStart_ = select->caret;
        selectionLength_ = select->selectionLength;
        return true;
    }
    const auto* type = std::get_if<act::Type>(&done);
    if (!type) return false;
    if (readOnly_) {
        Changed(Aspect::Value);
        return true;
    }
    int caret = type->caret;
    std::string text = Admitted(type->text, caret);
    const bool corrected = text != type->text;
    const bool changed = text != text_;
    text_ = std::move(text);
    selectionStart_ = std::clamp(caret, 0, static_cast<int>(text_.size()));
    selectionLength_ = corrected ? 0 : type->selectionLength;
    if (corrected) Changed(Aspect::Value);
    if (changed) Raise(onChange);
    return true;
}

TextBox::TextBox(Container& parent, std::string name, int index, Lines howMany)
    : TextControl(parent, std::move(name), index)
    , multiLine_(howMany == Lines::Many) {
    if (multiLine_) {
        columns = 40;
        lines = 5;
    }
}

RichTextBox::RichTextBox(Container& parent, std::string name, int index)
    : TextControl(parent, std::move(name), index) {
    columns = 40;
    lines = 5;
}

} // namespace quorvane
