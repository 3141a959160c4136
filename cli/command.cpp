#include "cli/command.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <ostream>

namespace quorvane::cli {
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

const Command* FindCommand(const std::vector<Command>& commands, std::string_view name) {
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& command) { return command.name == name; });
    return found == commands.end() ? nullptr : &*found;
}

void ListCommands(const std::vector<Command>& commands, std::ostream& out) {
    out << "usage: quorvanectl COMMAND ...\n";
    for (const Command& command : commands)
        out << "  " << command.usage << '\n';
}

// The length of the UTF-8 sequence at the start of `text`, 0 where there is none.
std::size_t SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (byte(0) < 0x80) return 1;
    if (byte(0) < 0xC2 || byte(0) >= 0xF5) return 0;
    const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
    if (text.size() < length) return 0;
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0) != 0x80) return 0;
    }
    const bool overlong = (byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xF0 && byte(1) < 0x90);
    const bool surrogate = byte(0) == 0xED && byte(1) >= 0xA0;
    const bool beyond = byte(0) == 0xF4 && byte(1) >= 0x90;
    return overlong || surrogate || beyond ? 0 : length;
}

void AppendEscaped(std::string& json, char c) {
    static constexpr char Digits[] = "0123456789abcdef";
    switch (c) {
    case '"':
        json += "\\\"";
        return;
    case '\\':
        json += "\\\\";
        return;
    case '\n':
        json += "\\n";
        return;
    case '\r':
        json += "\\r";
        return;
    case '\t':
        json += "\\t";
        return;
    default:
        break;
    }
    if (static_cast<unsigned char>(c) < 0x20) {
        json += "\\u00";
        json += Digits[static_cast<unsigned char>(c) >> 4];
        json += Digits[c & 0xF];
    } else {
        json += c;
    }
}

bool IsPlain(char c) {
    return c >= 0x20 && c < 0x7F && c != '"' && c != '\\';
}

void AppendJsonText(std::string& json, std::string_view text) {
    json += '"';
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(
            std::find_if_not(text.begin(), text.end(), [](char c) { return IsPlain(c); }) - text.begin());
        json += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const std::size_t length = SequenceLength(text);
        if (length == 0) {
            json += "\xEF\xBF\xBD";
        } else if (length == 1) {
            AppendEscaped(json, text[0]);
        } else {
            json += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    json += '"';
}

} // namespace

Arguments::Arguments(const std::vector<std::string>& words, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags) {
    bool onlyInputs = false;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const std::string& word = words[at];
        if (!onlyInputs && word == "--") {
            onlyInputs = true;
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

int RunCommand(const std::vector<Command>& commands, const std::vector<std::string>& words,
               Streams& streams) {
    if (words.empty()) {
        ListCommands(commands, streams.err);
        return WrongUsage;
    }
    if (words[0] == "help" || words[0] == "--help" || words[0] == "-h") {
        ListCommands(commands, streams.out);
        return Done;
    }
    const Command* command = FindCommand(commands, words[0]);
    if (!command) {
        streams.err << "quorvanectl: unknown command \"" << words[0] << "\"\n";
        ListCommands(commands, streams.err);
        return WrongUsage;
    }
    try {
        const Arguments arguments({words.begin() + 1, words.end()}, command->valuedOptions,
                                  command->flagOptions);
        return command->run(arguments, streams);
    } catch (const UsageError& error) {
        streams.err << "quorvanectl: " << error.what() << "\nusage: quorvanectl " << command->usage << '\n';
        return WrongUsage;
    } catch (const std::exception& error) {
        streams.err << "quorvanectl: " << error.what() << '\n';
        return Refused;
    }
}

int ForEachInput(const Arguments& arguments, const std::string& input, std::string_view name,
                 Streams& streams, const std::function<int(const std::string&)>& one) {
    if (input != "-") return one(input);
    for (std::string line; std::getline(streams.in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        try {
            one(line);
        } catch (const RefusedInput& error) {
            streams.err << "quorvanectl: " << error.what() << '\n';
            if (arguments.Json())
                streams.out << JsonObject().Add(name, line).Add("message", error.what()).Text();
            streams.out << '\n';
        }
        // Whoever waits for an answer before asking on gets it.
        if (streams.in.rdbuf()->in_avail() <= 0) streams.out.flush();
    }
    return Done;
}

std::string JsonText(std::string_view text) {
    std::string json;
    AppendJsonText(json, text);
    return json;
}

void JsonObject::AddKey(std::string_view key) {
    if (!members_.empty()) members_ += ", ";
    AppendJsonText(members_, key);
    members_ += ": ";
}

JsonObject& JsonObject::AddRaw(std::string_view key, std::string_view json) {
    AddKey(key);
    members_ += json;
    return *this;
}

JsonObject& JsonObject::Add(std::string_view key, std::string_view text) {
    AddKey(key);
    AppendJsonText(members_, text);
    return *this;
}

JsonObject& JsonObject::Add(std::string_view key, double number) {
    if (number - number != 0) return AddRaw(key, "null");
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
    return AddRaw(key, {buffer, static_cast<std::size_t>(end.ptr - buffer)});
}

JsonObject& JsonObject::Add(std::string_view key, std::int64_t number) {
    return AddRaw(key, std::to_string(number));
}

JsonObject& JsonObject::Add(std::string_view key, bool value) {
    return AddRaw(key, value ? "true" : "false");
}

JsonObject& JsonObject::Add(std::string_view key, const std::vector<std::string>& texts) {
    std::string json = "[";
    for (const std::string& text : texts)
        json += (json.size() > 1 ? ", " : "") + JsonText(text);
    return AddRaw(key, json + "]");
}

JsonObject& JsonObject::Add(std::string_view key, const JsonObject& object) {
    return AddRaw(key, object.Text());
}

} // namespace quorvane::cli
