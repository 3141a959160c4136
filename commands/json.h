#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::commands {

// One JSON object on one line, keys in the order they were added.
class JsonObject {
  public:
    JsonObject& Add(std::string_view key, std::string_view text);
    JsonObject& Add(std::string_view key, const char* text) { return Add(key, std::string_view(text)); }
    JsonObject& Add(std::string_view key, double number);
    JsonObject& Add(std::string_view key, std::int64_t number);
    JsonObject& Add(std::string_view key, int number) { return Add(key, static_cast<std::int64_t>(number)); }
    JsonObject& Add(std::string_view key, bool value);
    JsonObject& Add(std::string_view key, const std::vector<std::string>& texts);
    JsonObject& Add(std::string_view key, const std::vector<int>& numbers);
    JsonObject& Add(std::string_view key, const JsonObject& object);
    JsonObject& Add(std::string_view key, const std::vector<JsonObject>& objects);
    std::string Text() const { return "{" + members_ + "}"; }

  private:
    void AddKey(std::string_view key);
    JsonObject& AddRaw(std::string_view key, std::string_view json);
    std::string members_;
};

// A JSON string with its quotes. Bytes that are no UTF-8 are written as U+FFFD.
std::string JsonText(std::string_view text);

} // namespace quorvane::commands
