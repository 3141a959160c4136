#include "platform/linux/base/channel_socket.h"

#include "platform/linux/base/base_folders.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
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
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return runtime && runtime[0] == '/' ? runtime : StateFolder();
}

// The tree of settings as a short name: FNV-1a of the folder that holds it, in hexadecimal.
std::string NameOfTree() {
    std::error_code error;
    const std::filesystem::path folder = ConfigFolder();
    const std::string whole = std::filesystem::weakly_canonical(folder, error).string();
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char byte : error ? folder.string() : whole)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    std::array<char, 16> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16);
    return {digits.data(), end.ptr};
}

} // namespace

std::string ChannelFolder() {
    return BaseFolder() + "/quorvane/channel-" + NameOfTree();
}

bool MakeChannelFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(folder).parent_path(), error);
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return false;
    struct stat found {};
    return lstat(folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == geteuid() &&
           chmod(folder.c_str(), 0700) == 0;
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
