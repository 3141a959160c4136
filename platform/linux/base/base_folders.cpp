#include "platform/linux/base/base_folders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace quorvane {
namespace {

// The absolute path in a variable; empty where there is none.
std::string PathIn(const char* variable) {
    const char* path = std::getenv(variable);
    return path && *path == '/' ? path : "";
}

std::string HomeFolder() {
    const std::string home = PathIn("HOME");
    if (!home.empty()) return home;
    const passwd* person = getpwuid(getuid());
    return person && person->pw_dir ? person->pw_dir : "";
}

std::string BaseFolder(const char* variable, const char* belowHome) {
    const std::string folder = PathIn(variable);
    return folder.empty() ? HomeFolder() + belowHome : folder;
}

} // namespace

std::string ConfigFolder() {
    return BaseFolder("XDG_CONFIG_HOME", "/.config");
}

std::string DataFolder() {
    return BaseFolder("XDG_DATA_HOME", "/.local/share");
}

std::string StateFolder() {
    return BaseFolder("XDG_STATE_HOME", "/.local/state");
}

} // namespace quorvane
