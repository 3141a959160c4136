#include "platform/headless.h"

#include <filesystem>
#include <unistd.h>

namespace quorvane {

void BecomeProgram(const std::string& name, const std::vector<std::string>& words) {
    std::error_code error;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
    std::vector<std::string> copies{(own.parent_path() / name).string()};
    copies.insert(copies.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : copies)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
}

} // namespace quorvane
