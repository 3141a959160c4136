#include "platform/linux/base/channel_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr std::size_t PacketBytes = 64 * 1024;
constexpr int PacketsInOneGo = 16;
constexpr char MoreFollow = 1;
constexpr char LastOne = 0;

std::string BaseFolder() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value && value[0] == '/' ? value : "");
    };
    if (const std::string runtime = variable("XDG_RUNTIME_DIR"); !runtime.empty()) return runtime;
    if (const std::string state = variable("XDG_STATE_HOME"); !state.empty()) return state;
    const std::string home = variable("HOME");
    return home.empty() ? home : home + "/.local/state";
}

} // namespace

std::optional<std::string> ChannelFolder() {
    const std::string base = BaseFolder();
    if (base.empty()) return std::nullopt;
    std::error_code error;
    const std::string folder = base + "/quorvane/channel";
    std::filesystem::create_directories(base + "/quorvane", error);
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return std::nullopt;
    struct stat found {};
    if (lstat(folder.c_str(), &found) != 0 || !S_ISDIR(found.st_mode) || found.st_uid != geteuid())
        return std::nullopt;
    if ((found.st_mode & 0077) != 0 && chmod(folder.c_str(), 0700) != 0) return std::nullopt;
    return folder;
}

std::string SocketPath(const std::string& folder, int process) {
    return folder + "/" + std::to_string(process) + ".sock";
}

std::optional<sockaddr_un> SocketAddress(const std::string& path) {
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path) return std::nullopt;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size());
    return address;
}

bool IsOwnPeer(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

SocketHandle::~SocketHandle() {
    if (descriptor_ >= 0) close(descriptor_);
}

MessageReader::State MessageReader::Read(int socket) {
    std::array<char, PacketBytes + 1> packet;
    for (int count = 0; count < PacketsInOneGo; ++count) {
        const ssize_t size = recv(socket, packet.data(), packet.size(), MSG_DONTWAIT | MSG_TRUNC);
        if (size < 0 && (errno == EAGAIN || errno == EINTR)) return State::More;
        if (size <= 0 || static_cast<std::size_t>(size) > packet.size()) return State::Broken;
        const auto bytes = static_cast<std::size_t>(size) - 1;
        const char flag = packet[0];
        if ((flag != MoreFollow && flag != LastOne) ||
            message_.size() + bytes > channel_limit::MessageBytes) {
            return State::Broken;
        }
        message_.append(packet.data() + 1, bytes);
        if (flag == LastOne) return State::Whole;
    }
    return State::More;
}

MessageWriter::State MessageWriter::Write(int socket) {
    do {
        const std::size_t bytes = std::min(message_.size() - sent_, PacketBytes);
        char flag = sent_ + bytes < message_.size() ? MoreFollow : LastOne;
        std::array<iovec, 2> parts{iovec{&flag, 1}, iovec{message_.data() + sent_, bytes}};
        msghdr packet{};
        packet.msg_iov = parts.data();
        packet.msg_iovlen = parts.size();
        if (sendmsg(socket, &packet, MSG_DONTWAIT | MSG_NOSIGNAL) < 0) {
            const bool full = errno == EAGAIN || errno == EINTR || errno == ENOBUFS;
            return full ? State::More : State::Broken;
        }
        sent_ += bytes;
    } while (sent_ < message_.size());
    return State::Whole;
}

} // namespace quorvane
