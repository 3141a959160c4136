#pragma once

#include "tests/support/temporary_folder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quorvane::test {

namespace fs = std::filesystem;

// Asks again and again, up to the limit; true as soon as the condition holds.
inline bool WaitFor(const std::function<bool()>& condition,
                    std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        poll(nullptr, 0, 10);
    }
    return true;
}

inline std::string ReadWhole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A running program, ended with the object. `environment` is added to ours: "NAME=value", or "NAME" to take a
// variable away. Its two output streams go to files.
class Process {
  public:
    Process(const std::vector<std::string>& command, const std::vector<std::string>& environment = {},
            const fs::path& output = "/dev/null", const fs::path& errors = "/dev/null") {
        id_ = fork();
        if (id_ != 0) return;
        for (const std::string& variable : environment) {
            const std::size_t equals = variable.find('=');
            if (equals == std::string::npos) {
                unsetenv(variable.c_str());
            } else {
                setenv(variable.substr(0, equals).c_str(), variable.c_str() + equals + 1, 1);
            }
        }
        dup2(open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600), STDOUT_FILENO);
        dup2(open(errors.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600), STDERR_FILENO);
        std::vector<char*> arguments;
        for (const std::string& argument : command)
            arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    ~Process() {
        if (id_ > 0 && !status_) {
            kill(id_, SIGKILL);
            waitpid(id_, nullptr, 0);
        }
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t Id() const { return id_; }
    void Signal(int number) const { kill(id_, number); }

    // The exit status, 128 and more for a signal; nothing while it runs.
    std::optional<int> ExitStatus() {
        int raw = 0;
        if (!status_ && waitpid(id_, &raw, WNOHANG) == id_)
            status_ = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
        return status_;
    }
    std::optional<int> WaitForEnd(std::chrono::milliseconds limit = std::chrono::seconds(20)) {
        WaitFor([this] { return ExitStatus().has_value(); }, limit);
        return ExitStatus();
    }

  private:
    pid_t id_ = -1;
    std::optional<int> status_;
};

// Runs `work` in a process of its own, which ends with its answer.
inline pid_t StartChild(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    return child;
}
// The status of a child that has come to its end: 0 where it answered 0.
inline int StatusOf(pid_t child) {
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

// Runs a command to its end and answers what it printed.
inline std::string Output(const std::vector<std::string>& command,
                          const std::vector<std::string>& environment = {}) {
    const TemporaryFolder folder;
    Process process(command, environment, folder.Path() / "out");
    process.WaitForEnd();
    return ReadWhole(folder.Path() / "out");
}

} // namespace quorvane::test
