#pragma once

#include "platform/channel.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>

namespace quorvane {

// What both sides of the channel share: one sequenced-packet socket for each running copy, "PID.sock" in a
// folder that nobody else may enter, and a message in packets, each with a byte in front that tells whether
// more follow.

// The folder for the copies that work on this tree of settings, whether it is there or not: a program with
// another tree is another program.
std::string ChannelFolder();
// Makes the folder where it is missing; false where it cannot be had for this person alone.
bool MakeChannelFolder(const std::string& folder);

// Nothing where the path is too long for a socket.
std::optional<sockaddr_un> SocketAddress(const std::string& path);
std::string SocketPath(const std::string& folder, int process);

// True where the other end of a connected socket is a process of this person.
bool IsOwnPeer(int socket);

// A socket descriptor for the length of a scope.
class SocketHandle {
  public:
    explicit SocketHandle(int descriptor = -1)
        : descriptor_(descriptor) {}
    ~SocketHandle();
    SocketHandle(const SocketHandle&) = delete;
    SocketHandle& operator=(const SocketHandle&) = delete;

    int Get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }

  private:
    int descriptor_;
};

// Puts a message together from what a socket gives.
class MessageReader {
  public:
    enum class State { More, Whole, Broken };
    // Takes the packets that are there, some of them where there are many. Broken for anything that is no
    // packet, for a message above the limit and for an end in its middle.
    State Read(int socket);
    std::string Take() { return std::move(message_); }

  private:
    std::string message_;
};

// Sends a message as far as the socket takes it.
class MessageWriter {
  public:
    enum class State { More, Whole, Broken };
    explicit MessageWriter(std::string message)
        : message_(std::move(message)) {}
    State Write(int socket);

  private:
    std::string message_;
    std::size_t sent_ = 0;
};

} // namespace quorvane
