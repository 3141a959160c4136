#pragma once

#include "platform/channel.h"
#include "platform/event_loop.h"

#include <memory>
#include <vector>

class QSocketNotifier;

namespace quorvane {

// The running program's socket. Nothing waits on it: a client is read and written as far as it goes, and let
// go when its time is over. At rest it is one descriptor that nobody writes to.
class LinuxChannel final : public Channel {
  public:
    explicit LinuxChannel(EventLoop& events);
    ~LinuxChannel() override;

    bool Listen(std::function<void(std::string question, Reply reply)> handler) override;
    void Close() override;

  private:
    struct Client;
    class Ticket;

    void Accept();
    void ReadFrom(const std::shared_ptr<Client>& client);
    void HandOver(const std::shared_ptr<Client>& client, std::string question);
    void WriteTo(const std::shared_ptr<Client>& client);
    void Drop(const std::shared_ptr<Client>& client);
    // While there are clients: ends those whose time is over, and lets the next ones in.
    void LookAfterClients();
    void LetIn();

    EventLoop& events_;
    std::function<void(std::string, Reply)> handler_;
    std::string path_;
    int socket_ = -1;
    std::unique_ptr<QSocketNotifier> knocking_;
    std::vector<std::shared_ptr<Client>> clients_;
    TimerId timer_ = 0;
    int acceptedLately_ = 0;
    std::shared_ptr<LinuxChannel*> self_; // what replies reach the channel by, as long as it stands
};

} // namespace quorvane
