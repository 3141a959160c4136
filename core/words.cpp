#include "core/words.h"

#include "core/locale_strings.h"

#include <string_view>
#include <utility>

namespace quorvane {

namespace {

// An argument that is not there leaves its place empty; "%" in an argument stays as it is.
std::string Filled(std::string_view words, const std::vector<std::string>& arguments) {
    if (arguments.empty()) return std::string(words);
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool place =
            words[i] == '%' && i + 1 < words.size() && words[i + 1] >= '1' && words[i + 1] <= '9';
        if (!place) {
            text += words[i];
            continue;
        }
        const auto number = static_cast<std::size_t>(words[++i] - '1');
        if (number < arguments.size()) text += arguments[number];
    }
    return text;
}

} // namespace

Words::Words(std::string builtIn, int id, std::vector<std::string> arguments)
    : builtIn_(std::move(builtIn))
    , id_(id)
    , arguments_(std::move(arguments))
    , text_(Filled(builtIn_, arguments_)) {}

bool Words::Localise(const LocaleStrings& table) {
    if (id_ == NoId) return false;
    std::string text = Filled(table.TextOr(id_, builtIn_), arguments_);
    if (text == text_) return false;
    text_ = std::move(text);
    return true;
}

} // namespace quorvane
