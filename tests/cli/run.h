#pragma once

#include "cli/commands.h"

#include <sstream>
#include <string>
#include <vector>

namespace quorvane::cli {

// What a call of quorvanectl left.
struct Ran {
    int status = 0;
    std::string out;
    std::string err;

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        std::istringstream text(out);
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }
};

inline Ran RunWords(const std::vector<std::string>& words, const std::string& input = "",
                    const std::vector<Command>& commands = AllCommands()) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{in, out, err};
    const int status = RunCommand(commands, words, streams);
    return {status, out.str(), err.str()};
}

} // namespace quorvane::cli
