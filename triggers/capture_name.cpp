#include "triggers/capture_name.h"

#include "core/text.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr std::string_view Extension = ".bmp";

char Upper(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// Every `from`, which is in upper case, in either case.
std::string ReplaceLetters(std::string_view text, std::string_view from, std::string_view to) {
    std::string replaced;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view part = text.substr(at, from.size());
        const bool same = std::equal(part.begin(), part.end(), from.begin(), from.end(),
                                     [](char letter, char wanted) { return Upper(letter) == wanted; });
        replaced += same ? to : text.substr(at, 1);
        at += same ? from.size() : 1;
    }
    return replaced;
}

// The last two digits.
std::string TwoDigits(int number) {
    const std::string text = "0" + std::to_string(number);
    return text.substr(text.size() - 2);
}

} // namespace

std::string ExpandCaptureName(std::string_view nameTemplate, const DateTime& moment) {
    std::string name = ReplaceLetters(nameTemplate, "YY", TwoDigits(moment.year));
    const std::pair<std::string_view, int> parts[] = {{"MM", moment.month},
                                                      {"DD", moment.day},
                                                      {"HH", moment.hour},
                                                      {"NN", moment.minute},
                                                      {"SS", moment.second}};
    for (const auto& [letters, number] : parts)
        name = ReplaceLetters(name, letters, TwoDigits(number));
    const bool ends = name.size() >= Extension.size() &&
                      LowerCase(std::string_view(name).substr(name.size() - Extension.size())) == Extension;
    return ends ? name : name.append(Extension);
}

} // namespace quorvane
