#pragma once

#include "core/date_time.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::cli {

// Exit statuses, the same for every command.
inline constexpr int Done = 0;
inline constexpr int Refused = 1;
inline constexpr int WrongUsage = 2;

// The command was called wrongly: said on standard error together with its usage line.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The input was refused: said on standard error.
class RefusedInput : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// What stands behind the command's name on the command line. "--name value" and "--name=value" are options,
// a lone "-" and everything else are inputs, also "--(1)", as no option begins with anything but a letter;
// behind "--" all words are inputs.
class Arguments {
  public:
    // `valued` and `flags` name the options known here, without their hyphens; "json" is always known.
    Arguments(const std::vector<std::string>& words, const std::vector<std::string>& valued,
              const std::vector<std::string>& flags);

    const std::vector<std::string>& Inputs() const { return inputs_; }
    // The one input that the command takes. Throws UsageError where there is none or more than one.
    const std::string& OnlyInput(std::string_view what) const;
    // For a command that takes no input. Throws UsageError where there is one.
    void NoInputs() const;

    bool Has(std::string_view option) const;
    std::optional<std::string> Value(std::string_view option) const;
    // Every value of an option that may be repeated, in order.
    std::vector<std::string> Values(std::string_view option) const;
    // A number, decimal point whatever the locale. Throws UsageError.
    std::optional<double> Number(std::string_view option) const;
    std::optional<std::int64_t> WholeNumber(std::string_view option) const;
    bool Json() const { return Has("json"); }
    // The moment of "--at". Throws UsageError.
    std::optional<DateTime> At() const;

  private:
    std::multimap<std::string, std::string, std::less<>> options_;
    std::vector<std::string> inputs_;
};

// "YYYY-MM-DD", or that and " HH:MM:SS"; empty for anything that is no date of the calendar.
std::optional<DateTime> ParseDate(std::string_view text);
std::optional<DateTime> ParseDateTime(std::string_view text);

struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

struct Command {
    const char* name;
    const char* usage; // without the program's name
    std::vector<std::string> valuedOptions;
    std::vector<std::string> flagOptions;
    // Returns the exit status. May throw UsageError and RefusedInput.
    std::function<int(const Arguments&, Streams&)> run;
};

// Runs one command by the words behind the program's name.
int RunCommand(const std::vector<Command>& commands, const std::vector<std::string>& words, Streams& streams);

// Calls `one` for the input itself, or for each line of standard input where it is "-". Returns what `one`
// answered for a single input, and Done after a batch. A line that is refused in a batch is told of on
// standard error and gives a line all the same, so that results and inputs stay side by side: an empty one,
// or with --json the input under the key `name` and what is wrong under "message".
int ForEachInput(const Arguments& arguments, const std::string& input, std::string_view name,
                 Streams& streams, const std::function<int(const std::string&)>& one);

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
    JsonObject& Add(std::string_view key, const JsonObject& object);
    std::string Text() const { return "{" + members_ + "}"; }

  private:
    void AddKey(std::string_view key);
    JsonObject& AddRaw(std::string_view key, std::string_view json);
    std::string members_;
};

// A JSON string with its quotes. Bytes that are no UTF-8 are written as U+FFFD.
std::string JsonText(std::string_view text);

} // namespace quorvane::cli
