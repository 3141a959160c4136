#include "platform/headless.h"
#include "platform/linux/base/channel_socket.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// The process of a socket's file name; 0 for any other name.
std::int32_t ProcessOf(std::string_view name) {
    std::int32_t process = 0;
    const auto end = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isSocket = end.ec == std::errc() && std::string_view(end.ptr) == ".sock";
    return isSocket && process > 0 ? process : 0;
}

// Waits until the socket can be read from or written to. False at the deadline.
bool WaitFor(int socket, short event, steady_clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now()).count();
        if (left <= 0) return false;
        pollfd asked{socket, event, 0};
        const int ready = poll(&asked, 1, static_cast<int>(left));
        if (ready > 0) return true;
        if (ready == 0 || errno != EINTR) return false;
    }
}

class LinuxChannelClient final : public ChannelClient {
  public:
    std::vector<RunningCopy> Copies() override;
    Result Ask(std::int32_t process, const std::string& question, int patienceMilliseconds) override;

  private:
    // Whether a copy listens there. What a killed one left behind is taken away.
    static Outcome Connect(int socket, const std::string& path, steady_clock::time_point deadline);
};

int NewSocket() {
    return socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

ChannelClient::Outcome LinuxChannelClient::Connect(int socket, const std::string& path,
                                                   steady_clock::time_point deadline) {
    const auto address = SocketAddress(path);
    if (!address || socket < 0) return Outcome::NotRunning;
    while (connect(socket, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0) {
        if (errno == ECONNREFUSED) unlink(path.c_str());
        if (errno != EAGAIN && errno != EINTR) return Outcome::NotRunning;
        // Others stand in front: there is nothing to wait on but the time.
        if (steady_clock::now() >= deadline) return Outcome::NoAnswer;
        poll(nullptr, 0, 5);
    }
    return IsOwnPeer(socket) ? Outcome::Answered : Outcome::NotRunning;
}

std::vector<RunningCopy> LinuxChannelClient::Copies() {
    std::vector<RunningCopy> copies;
    const std::string folder = ChannelFolder();
    DIR* entries = opendir(folder.c_str());
    if (!entries) return copies;
    while (const dirent* entry = readdir(entries)) {
        const std::int32_t process = ProcessOf(entry->d_name);
        struct stat file {};
        if (process == 0 || fstatat(dirfd(entries), entry->d_name, &file, AT_SYMLINK_NOFOLLOW) != 0) continue;
        const SocketHandle socket(NewSocket());
        if (Connect(socket.Get(), SocketPath(folder, process), steady_clock::now()) == Outcome::NotRunning)
            continue;
        copies.push_back({process, std::int64_t{file.st_mtim.tv_sec} * 1'000'000'000 + file.st_mtim.tv_nsec});
    }
    closedir(entries);
    std::sort(copies.begin(), copies.end(), [](const RunningCopy& a, const RunningCopy& b) {
        return a.started != b.started ? a.started > b.started : a.process > b.process;
    });
    return copies;
}

ChannelClient::Result LinuxChannelClient::Ask(std::int32_t process, const std::string& question,
                                              int patienceMilliseconds) {
    const SocketHandle socket(NewSocket());
    const auto sendBy = steady_clock::now() + milliseconds(channel_limit::MilliSecondsBetween);
    const Outcome found = Connect(socket.Get(), SocketPath(ChannelFolder(), process), sendBy);
    if (found != Outcome::Answered) return {found, {}};
    MessageWriter writer(question);
    auto sent = writer.Write(socket.Get());
    while (sent == MessageWriter::State::More && WaitFor(socket.Get(), POLLOUT, sendBy))
        sent = writer.Write(socket.Get());
    if (sent != MessageWriter::State::Whole) return {Outcome::NoAnswer, {}};

    MessageReader reader;
    const auto readBy = steady_clock::now() + milliseconds(patienceMilliseconds);
    while (WaitFor(socket.Get(), POLLIN, readBy)) {
        switch (reader.Read(socket.Get())) {
        case MessageReader::State::Whole:
            return {Outcome::Answered, reader.Take()};
        case MessageReader::State::Broken:
            return {Outcome::NoAnswer, {}};
        case MessageReader::State::More:
            break;
        }
    }
    return {Outcome::NoAnswer, {}};
}

} // namespace

std::unique_ptr<ChannelClient> CreateChannelClient() {
    return std::make_unique<LinuxChannelClient>();
}

} // namespace quorvane
