#include "commands/arguments.h"

#include <algorithm>
#include <charconv>

namespace quorvane::commands {
namespace {

bool Contains(const std::vector<std::string>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsOption(std::string_view word) {
    if (word.size() < 3 || !word.starts_with("--")) return false;
    const char first = word[2];
    return (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z');
}

template<typename Number>
std::optional<Number> WholeText(std::string_view text) {
    Number value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
    return value;
}

// The fixed-width decimal field of a date.
std::optional<int> Field(std::string_view text, std::size_t start, std::size_t length) {
    if (text.size() < start + length) return std::nullopt;
    const std::string_view field = text.substr(start, length);
    if (field.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
    return WholeText<int>(field);
}

} // namespace

Arguments::Arguments(const std::vector<std::string>& words, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags)
    : words_(words) {
    bool onlyInputs = false;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const std::string& word = words[at];
        if (!onlyInputs && word == "--") {
            onlyInputs = true;
            continue;
        }
        if (!onlyInputs && word == "-0" && Contains(flags, "0")) {
            options_.emplace("0", "");
            continue;
        }
        if (onlyInputs || !IsOption(word)) {
            inputs_.push_back(word);
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(2, equals == std::string::npos ? equals : equals - 2);
        if (name == "json" || Contains(flags, name)) {
            if (equals != std::string::npos) throw UsageError("--" + name + " takes no value");
            options_.emplace(name, "");
        } else if (!Contains(valued, name)) {
            throw UsageError("unknown option --" + name);
        } else if (equals != std::string::npos) {
            options_.emplace(name, word.substr(equals + 1));
        } else if (++at < words.size()) {
            options_.emplace(name, words[at]);
        } else {
            throw UsageError("--" + name + " wants a value");
        }
    }
}

const std::string& Arguments::OnlyInput(std::string_view what) const {
    if (inputs_.empty()) throw UsageError(std::string(what) + " is missing");
    if (inputs_.size() > 1)
        throw UsageError("one " + std::string(what) + " only, not also \"" + inputs_[1] + "\"");
    return inputs_[0];
}

void Arguments::NoInputs() const {
    if (!inputs_.empty()) throw UsageError("what is \"" + inputs_[0] + "\"?");
}

bool Arguments::Has(std::string_view option) const {
    return options_.find(option) != options_.end();
}

std::optional<std::string> Arguments::Value(std::string_view option) const {
    const auto range = options_.equal_range(option);
    if (range.first == range.second) return std::nullopt;
    return std::prev(range.second)->second;
}

std::vector<std::string> Arguments::Values(std::string_view option) const {
    std::vector<std::string> values;
    const auto range = options_.equal_range(option);
    for (auto at = range.first; at != range.second; ++at)
        values.push_back(at->second);
    return values;
}

std::optional<double> Arguments::Number(std::string_view option) const {
    const auto text = Value(option);
    if (!text) return std::nullopt;
    const auto number = WholeText<double>(*text);
    if (!number || *number - *number != 0)
        throw UsageError("--" + std::string(option) + " wants a number, not \"" + *text + "\"");
    return number;
}

std::optional<std::int64_t> Arguments::WholeNumber(std::string_view option) const {
    const auto text = Value(option);
    if (!text) return std::nullopt;
    const auto number = WholeText<std::int64_t>(*text);
    if (!number)
        throw UsageError("--" + std::string(option) + " wants a whole number, not \"" + *text + "\"");
    return number;
}

std::optional<DateTime> Arguments::At() const {
    const auto text = Value("at");
    if (!text) return std::nullopt;
    const auto moment = ParseDateTime(*text);
    if (!moment) throw UsageError("--at wants \"YYYY-MM-DD HH:MM:SS\", not \"" + *text + "\"");
    return moment;
}

std::optional<DateTime> ParseDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = Field(text, 0, 4);
    const auto month = Field(text, 5, 2);
    const auto day = Field(text, 8, 2);
    if (!year || !month || !day || *month < 1 || *month > 12 || *day < 1) return std::nullopt;
    const DateTime date = CivilFromDays(DaysFromCivil(*year, *month, *day));
    if (date.month != *month || date.day != *day) return std::nullopt;
    return date;
}

std::optional<DateTime> ParseDateTime(std::string_view text) {
    auto moment = ParseDate(text.substr(0, 10));
    if (!moment || text.size() == 10) return moment;
    if (text.size() != 19 || text[10] != ' ' || text[13] != ':' || text[16] != ':') return std::nullopt;
    const auto hour = Field(text, 11, 2);
    const auto minute = Field(text, 14, 2);
    const auto second = Field(text, 17, 2);
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    moment->hour = *hour;
    moment->minute = *minute;
    moment->second = *second;
    return moment;
}

} // namespace quorvane::commands
