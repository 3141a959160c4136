#include "entry/command_line.h"

#include "core/text.h"
#include "core/version.h"

#include <initializer_list>

namespace quorvane {

namespace {

constexpr const char* LineEnd = "\r\n";

std::string Rule() {
    return std::string(54, '-') + LineEnd;
}

bool HasAny(std::string_view text, std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words) {
        if (text.find(word) != std::string_view::npos) return true;
    }
    return false;
}

} // namespace

CommandLineRequests ReadCommandLine(std::string_view text) {
    const std::string folded = LowerCase(text);
    CommandLineRequests requests;
    requests.RunOnWin9x = HasAny(folded, {"/win98", "/win95", "/win9x"});
    requests.version = HasAny(folded, {"v", "ver", "version"});
    requests.help = HasAny(folded, {"?", "h", "help"});
    requests.test = HasAny(folded, {"test"});
    requests.settings = HasAny(folded, {"settings"});
    return requests;
}

std::string VersionText() {
    return std::string(18, ' ') + "Quorvane II" + LineEnd + Rule() + "Version: " + VersionNumbers() +
           LineEnd + "Programming: the Quorvane project" + LineEnd + "Quorvane project, 2026" + LineEnd +
           Rule();
}

std::string HelpText() {
    std::string text = std::string("Quorvane II command line switches") + LineEnd + Rule();
    for (const char* line :
         {"/win98; /win95; /win9x - Run on Windows 98", "/?; /h; /help - Show this help and exit...",
          "/test - Load test subsystem.", "/settings - Display configuration dialog.",
          "/v; /ver; /version - Show software version"}) {
        text += std::string(line) + LineEnd;
    }
    return text + Rule();
}

} // namespace quorvane
