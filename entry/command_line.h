#pragma once

#include <string>
#include <string_view>

namespace quorvane {

// What the command line asks for. Each is a search for letters anywhere in the whole text, in any letter
// case, so that every text with a "v" in it asks for the version.
struct CommandLineRequests {
    bool RunOnWin9x = false;
    bool version = false;
    bool help = false;
    bool test = false;
    bool settings = false;
};

CommandLineRequests ReadCommandLine(std::string_view text);

// Texts of the version box and the help box; lines end in "\r\n".
std::string VersionText();
std::string HelpText();

} // namespace quorvane
