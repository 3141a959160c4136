#pragma once

#include "core/date_time.h"

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::commands {

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
// behind "--" all words are inputs. The one short option is "-0", for commands that know the flag "0".
class Arguments {
  public:
    // `valued` and `flags` name the options known here, without their hyphens; "json" is always known.
    Arguments(const std::vector<std::string>& words, const std::vector<std::string>& valued,
              const std::vector<std::string>& flags);

    const std::vector<std::string>& Inputs() const { return inputs_; }
    // All words as they were given.
    const std::vector<std::string>& Words() const { return words_; }
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
    // What ends a result: a line's end, or with the flag "-0" a zero byte, which no file name holds.
    char ResultEnd() const { return Has("0") ? '\0' : '\n'; }
    // The moment of "--at". Throws UsageError.
    std::optional<DateTime> At() const;

  private:
    std::multimap<std::string, std::string, std::less<>> options_;
    std::vector<std::string> inputs_;
    std::vector<std::string> words_;
};

// "YYYY-MM-DD", or that and " HH:MM:SS"; empty for anything that is no date of the calendar.
std::optional<DateTime> ParseDate(std::string_view text);
std::optional<DateTime> ParseDateTime(std::string_view text);

} // namespace quorvane::commands
