#include "calendar/month_sheet.h"
#include "cli/commands.h"
#include "cli/moment.h"

#include <charconv>
#include <ostream>

namespace quorvane::cli {
namespace {

DateTime DateOf(const std::string& text) {
    const auto date = ParseDate(text);
    if (!date) throw RefusedInput("no date YYYY-MM-DD: \"" + text + "\"");
    return *date;
}

// "+N" and "-N".
DateTime Shifted(const DateTime& date, const std::string& count) {
    std::int64_t days = 0;
    const char* begin = count.data() + (count[0] == '+' ? 1 : 0);
    const auto [end, error] = std::from_chars(begin, count.data() + count.size(), days);
    if (error == std::errc::invalid_argument || end != count.data() + count.size())
        throw RefusedInput("no number of days: \"" + count + "\"");
    const auto shifted = error == std::errc() ? PlusDays(date, days) : std::nullopt;
    if (!shifted) throw RefusedInput("that lies outside the years 1 to 9999");
    return *shifted;
}

int TellDays(const Arguments& arguments, Streams& streams) {
    const std::vector<std::string>& inputs = arguments.Inputs();
    if (inputs.size() != 2)
        throw UsageError("a date is wanted, and a second one or a number of days with its sign");
    const DateTime from = DateOf(inputs[0]);
    const bool counts = !inputs[1].empty() && (inputs[1][0] == '+' || inputs[1][0] == '-');
    JsonObject json;
    std::string plain;
    if (counts) {
        plain = DateText(Shifted(from, inputs[1]));
        json.Add("date", plain);
    } else {
        const std::int64_t days = CalculeDiffrences(from, DateOf(inputs[1]));
        plain = std::to_string(days);
        json.Add("days", days);
    }
    streams.out << (arguments.Json() ? json.Text() : plain) << '\n';
    return Done;
}

} // namespace

Command DaysCommand() {
    return {"days", "days [--json] FROM TO|+N|-N", {}, {}, TellDays};
}

} // namespace quorvane::cli
