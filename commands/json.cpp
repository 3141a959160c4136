#include "commands/json.h"

#include "core/utf8.h"

#include <algorithm>
#include <charconv>

namespace quorvane::commands {
namespace {

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
        const std::size_t length = LetterBytes(text, 0);
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

template<typename Item, typename ToJson>
std::string JsonList(const std::vector<Item>& items, ToJson toJson) {
    std::string json = "[";
    for (const Item& item : items)
        json += (json.size() > 1 ? ", " : "") + toJson(item);
    return json + "]";
}

} // namespace

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
    return AddRaw(key, JsonList(texts, JsonText));
}

JsonObject& JsonObject::Add(std::string_view key, const std::vector<int>& numbers) {
    return AddRaw(key, JsonList(numbers, [](int number) { return std::to_string(number); }));
}

JsonObject& JsonObject::Add(std::string_view key, const JsonObject& object) {
    return AddRaw(key, object.Text());
}

JsonObject& JsonObject::Add(std::string_view key, const std::vector<JsonObject>& objects) {
    return AddRaw(key, JsonList(objects, [](const JsonObject& object) { return object.Text(); }));
}

} // namespace quorvane::commands
