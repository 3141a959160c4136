#include "core/numbers.h"

#include "core/run_time_error.h"
#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace quorvane {
namespace {

constexpr int LongestNumber = 64;

// Where the shortest form that reads back has no more than `digits` digits it is the one wanted, and much
// cheaper to find than the general one. Null where it is longer, or the number is one for the exponent form.
char* FormatShort(double value, int digits, char* buffer) {
    const double size = std::abs(value);
    if (!(size >= 1e-3 && size < 1e15)) return nullptr;
    if (value == std::trunc(value) && digits == 15)
        return std::to_chars(buffer, buffer + LongestNumber, static_cast<std::int64_t>(value)).ptr;
    char* const end = std::to_chars(buffer, buffer + LongestNumber, value, std::chars_format::fixed).ptr;
    const auto notDigits = (value < 0 ? 1 : 0) + (std::find(buffer, end, '.') != end ? 1 : 0);
    return end - buffer - notDigits <= digits ? end : nullptr;
}

// Digits without trailing zeros; the exponent form outside 1E-05 to 1E+15 in double precision.
std::string Format(double value, int digits) {
    if (value == 0) return "0";
    char buffer[LongestNumber];
    if (char* shortEnd = FormatShort(value, digits, buffer)) return {buffer, shortEnd};
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    std::string text(buffer, end.ptr);
    for (char& c : text) {
        if (c == 'e') c = 'E';
    }
    return text;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t CountDigits(std::string_view text, std::size_t from) {
    std::size_t at = from;
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return at - from;
}

// The length of the number that `text` starts with, 0 for none.
std::size_t NumberLength(std::string_view text) {
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    std::size_t digits = CountDigits(text, at);
    at += digits;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fraction = CountDigits(text, at + 1);
        digits += fraction;
        at += 1 + fraction;
    }
    if (digits == 0) return 0;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        std::size_t exponent = at + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
        const std::size_t count = CountDigits(text, exponent);
        if (count > 0) at = exponent + count;
    }
    return at;
}

// Whether a number that is out of range lies close to 0, not beyond the greatest one.
bool IsTiny(std::string_view number) {
    const std::size_t digitsEnd = std::min(number.find_first_of("eE"), number.size());
    const auto point = static_cast<long>(std::min(number.find('.'), digitsEnd));
    const auto first = static_cast<long>(number.find_first_of("123456789"));
    std::string_view exponent = number.substr(digitsEnd);
    exponent.remove_prefix(
        exponent.size() > 1 && exponent[1] == '+' ? 2 : std::min<std::size_t>(1, exponent.size()));
    int shift = 0;
    const auto result = std::from_chars(exponent.data(), exponent.data() + exponent.size(), shift);
    if (result.ec == std::errc::result_out_of_range) return exponent[0] == '-';
    return point - first + shift < 0;
}

double ConvertNumber(std::string_view number) {
    if (!number.empty() && number[0] == '+') number.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        if (IsTiny(number)) return 0;
        throw RunTimeError::Overflow();
    }
    return value;
}

} // namespace

std::string NumberText(double value) {
    return Format(value, 15);
}

std::string PlainNumberText(double value) {
    std::string text = Format(value, 15);
    const std::size_t mark = text.find('E');
    if (mark == std::string::npos) return text;

    int exponent = 0;
    const char* digits = text.data() + mark + (text[mark + 1] == '+' ? 2 : 1);
    std::from_chars(digits, text.data() + text.size(), exponent);
    text.resize(mark);
    const std::string sign = text[0] == '-' ? "-" : "";
    text.erase(0, sign.size());
    if (text.size() > 1) text.erase(1, 1); // the point
    if (exponent < 0) return sign + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + text;
    const auto places = static_cast<std::size_t>(exponent) + 1;
    return sign + text.append(places - text.size(), '0'); // at most 15 digits, at least 16 places
}

std::string LocaleNumberText(double value, std::string_view separator) {
    std::string text = Format(value, 15);
    return separator == "." ? text : Replace(text, ".", separator);
}

std::string LocaleNumberText(float value, std::string_view separator) {
    return Replace(Format(static_cast<double>(value), 7), ".", separator);
}

std::string SignedNumberText(double value) {
    return (value < 0 ? "" : " ") + NumberText(value);
}

double LeadingNumber(std::string_view text) {
    std::string packed;
    for (const char c : text) {
        if (c != ' ' && c != '\t' && c != '\n') packed.push_back(c);
    }
    const std::size_t length = NumberLength(packed);
    return length == 0 ? 0 : ConvertNumber(std::string_view(packed).substr(0, length));
}

double ParseDecimal(std::string_view text, std::string_view separator) {
    std::string number;
    bool separated = false;
    for (std::size_t at = 0; at < text.size();) {
        if (IsDigit(text[at])) {
            number.push_back(text[at++]);
            continue;
        }
        const bool own = !separator.empty() && text.substr(at).starts_with(separator);
        if (separated || !(own || text[at] == '.' || text[at] == ',')) break;
        separated = true;
        number.append(separator);
        at += own ? separator.size() : 1; // the sign may be of several bytes, as the Arabic one is
    }
    return number.empty() ? 0.0 : LocaleTextToDouble(number, separator);
}

double LocaleTextToDouble(std::string_view text, std::string_view separator) {
    const bool pointed = separator == "." || separator.empty();
    if (!pointed && text.find('.') != std::string_view::npos) throw RunTimeError::TypeMismatch();
    const std::string number = pointed ? std::string(Trim(text)) : Replace(Trim(text), separator, ".");
    const std::size_t length = NumberLength(number);
    if (length == 0 || length != number.size()) throw RunTimeError::TypeMismatch();
    return ConvertNumber(number);
}

std::int32_t TextToInteger(std::string_view text, std::string_view separator) {
    return ToInteger(LocaleTextToDouble(text, separator));
}

bool TextToBoolean(std::string_view text) {
    const std::string folded = FoldedName(text);
    if (folded == "true") return true;
    if (folded == "false") return false;
    return LocaleTextToDouble(text, ".") != 0;
}

std::string BooleanText(bool value) {
    return value ? "True" : "False";
}

double RoundHalfEven(double value) {
    const double low = std::floor(value);
    const double rest = value - low;
    if (rest < 0.5) return low;
    if (rest > 0.5) return low + 1;
    return std::fmod(low, 2) == 0 ? low : low + 1;
}

std::int32_t ToInteger(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw RunTimeError::Overflow();
    }
    return static_cast<std::int32_t>(rounded);
}

} // namespace quorvane
