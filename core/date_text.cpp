#include "core/date_text.h"

#include <algorithm>

namespace quorvane {
namespace {

std::string Digits(int number, std::size_t width) {
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
}

} // namespace

std::string GeneralDateText(const DateTime& moment, std::string_view shortDate) {
    if (shortDate.empty()) shortDate = "yyyy-MM-dd";
    std::string text;
    bool quoted = false;
    for (std::size_t at = 0; at < shortDate.size();) {
        const char letter = shortDate[at];
        const std::size_t end = std::min(shortDate.find_first_not_of(letter, at), shortDate.size());
        const std::size_t run = end - at;
        const bool isField = !quoted && (letter == 'd' || letter == 'M' || letter == 'y');
        if (letter == '\'') {
            quoted ^= run % 2 == 1;
        } else if (!isField) {
            text.append(run, letter);
        } else if (letter == 'y') {
            text += run > 2 ? Digits(moment.year, 4) : Digits(moment.year % 100, run);
        } else {
            text += Digits(letter == 'd' ? moment.day : moment.month, std::min<std::size_t>(run, 2));
        }
        at = end;
    }
    return text + " " + std::to_string(moment.hour) + ":" + Digits(moment.minute, 2) + ":" +
           Digits(moment.second, 2);
}

} // namespace quorvane
