#include "cli/batch.h"

#include "commands/json.h"
#include "core/utf8.h"

#include <istream>
#include <ostream>

namespace quorvane::cli {

int ForEachInput(const Arguments& arguments, const std::string& input, std::string_view name,
                 Streams& streams, const std::function<int(const std::string&)>& one) {
    if (input != "-") return one(input);
    for (std::string line; std::getline(streams.in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        try {
            one(line);
        } catch (const RefusedInput& error) {
            streams.err << "quorvanectl: " << EscapeControls(error.what()) << '\n';
            if (arguments.Json())
                streams.out << JsonObject().Add(name, line).Add("message", error.what()).Text();
            streams.out << arguments.ResultEnd();
        }
        // Whoever waits for an answer before asking on gets it.
        if (streams.in.rdbuf()->in_avail() <= 0) {
            streams.out.flush();
            streams.err.flush();
        }
    }
    return Done;
}

} // namespace quorvane::cli
