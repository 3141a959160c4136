#include "platform/linux/drawing/child.h"

#include <QByteArray>

#include <cerrno>
#include <clocale>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr qsizetype LargestOutput = 64 << 20;

// What a child may use at most; a limit that stands already is never raised.
void Restrict() {
    const rlimit seconds{5, 5};
    setrlimit(RLIMIT_CPU, &seconds);
    const rlimit fileBytes{0, 0};
    setrlimit(RLIMIT_FSIZE, &fileBytes);
    const rlimit noDump{0, 0};
    setrlimit(RLIMIT_CORE, &noDump);
    long pages = 0;
    if (std::FILE* memory = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(memory, "%ld", &pages) != 1) pages = 0;
        std::fclose(memory);
    }
    constexpr rlim_t More = rlim_t{512} << 20;
    const rlim_t bytes = static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + More;
    const rlimit memory{bytes, bytes};
    if (pages > 0) setrlimit(RLIMIT_AS, &memory);
}

[[noreturn]] void RunChild(int output, const std::function<bool(std::FILE*)>& work) {
    Restrict();
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    std::setlocale(LC_ALL, "C"); // the libraries print numbers
    std::FILE* out = fdopen(output, "wb");
    const bool done = out && work(out) && std::fflush(out) == 0;
    _exit(done ? 0 : 1);
}

// Reads to the end; false where that does not come by `deadline`.
bool ReadAll(int from, Clock::time_point deadline, QByteArray& output) {
    char bytes[16384];
    while (output.size() < LargestOutput) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd ready{from, POLLIN, 0};
        if (left <= 0 || poll(&ready, 1, static_cast<int>(left)) == 0) return false;
        const ssize_t count = read(from, bytes, sizeof bytes);
        if (count == 0) return true;
        if (count < 0 && errno != EINTR) return false;
        if (count > 0) output.append(bytes, count);
    }
    return false;
}

} // namespace

QByteArray OutputOfChild(const std::function<bool(std::FILE*)>& work, std::chrono::milliseconds limit) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return {};
    const pid_t child = fork();
    if (child == 0) RunChild(ends[1], work);
    close(ends[1]);
    QByteArray output;
    const bool whole = child > 0 && ReadAll(ends[0], Clock::now() + limit, output);
    close(ends[0]);
    if (child > 0 && !whole) kill(child, SIGKILL);
    int status = -1;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return whole && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? output : QByteArray();
}

} // namespace quorvane
