#include "platform/linux/desktop/channel.h"

#include "platform/linux/base/channel_socket.h"

#include <QSocketNotifier>
#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace quorvane {
namespace {

constexpr int Backlog = 16;
constexpr int LookMilliseconds = 100;
// Clients that are let in between two looks: whoever floods the program waits.
constexpr int MostInALook = 64;

using std::chrono::steady_clock;

} // namespace

struct LinuxChannel::Client {
    explicit Client(int descriptor)
        : socket(descriptor)
        , readable(descriptor, QSocketNotifier::Read)
        , writable(descriptor, QSocketNotifier::Write) {
        writable.setEnabled(false);
        KeepFor();
    }
    void KeepFor() {
        deadline = steady_clock::now() + std::chrono::milliseconds(channel_limit::MilliSecondsBetween);
    }

    SocketHandle socket;
    QSocketNotifier readable;
    QSocketNotifier writable;
    MessageReader reader;
    std::optional<MessageWriter> writer;
    std::optional<steady_clock::time_point> deadline; // none while the program works on the answer
};

// What a reply holds: answered once at most, and where it is dropped the client is let go.
class LinuxChannel::Ticket {
  public:
    Ticket(std::weak_ptr<LinuxChannel*> channel, std::weak_ptr<Client> client)
        : channel_(std::move(channel))
        , client_(std::move(client)) {}
    ~Ticket() {
        const auto channel = channel_.lock();
        const auto client = client_.lock();
        if (channel && client && !client->writer) (*channel)->Drop(client);
    }
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

    void Answer(std::string answer) {
        const auto channel = channel_.lock();
        const auto client = client_.lock();
        if (!channel || !client || client->writer) return;
        client->writer.emplace(std::move(answer));
        client->KeepFor();
        (*channel)->WriteTo(client);
    }

  private:
    std::weak_ptr<LinuxChannel*> channel_;
    std::weak_ptr<Client> client_;
};

LinuxChannel::LinuxChannel(EventLoop& events)
    : events_(events)
    , self_(std::make_shared<LinuxChannel*>(this)) {}

LinuxChannel::~LinuxChannel() {
    Close();
    self_.reset();
    clients_.clear();
    if (timer_ != 0) events_.StopTimer(timer_);
}

bool LinuxChannel::Listen(std::function<void(std::string question, Reply reply)> handler) {
    Close();
    const std::string folder = ChannelFolder();
    const std::string path = SocketPath(folder, getpid());
    const auto address = SocketAddress(path);
    if (!address || !MakeChannelFolder(folder)) return false;
    const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    unlink(path.c_str()); // an earlier process of this number
    if (listener < 0 || bind(listener, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0 ||
        listen(listener, Backlog) != 0) {
        close(listener);
        return false;
    }
    socket_ = listener;
    path_ = path;
    handler_ = std::move(handler);
    knocking_ = std::make_unique<QSocketNotifier>(listener, QSocketNotifier::Read);
    QObject::connect(knocking_.get(), &QSocketNotifier::activated, [this] { Accept(); });
    return true;
}

void LinuxChannel::Close() {
    if (socket_ < 0) return;
    unlink(path_.c_str());
    knocking_.reset();
    close(socket_);
    socket_ = -1;
}

void LinuxChannel::Accept() {
    const int descriptor = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor >= 0 && IsOwnPeer(descriptor)) {
        const auto client = std::make_shared<Client>(descriptor);
        clients_.push_back(client);
        const std::weak_ptr<Client> weak = client;
        QObject::connect(&client->readable, &QSocketNotifier::activated, [this, weak] {
            if (const auto own = weak.lock()) ReadFrom(own);
        });
        QObject::connect(&client->writable, &QSocketNotifier::activated, [this, weak] {
            if (const auto own = weak.lock()) WriteTo(own);
        });
    } else if (descriptor >= 0) {
        close(descriptor);
    }
    ++acceptedLately_;
    if (timer_ == 0) timer_ = events_.StartTimer("channel", LookMilliseconds, [this] { LookAfterClients(); });
    LetIn();
}

void LinuxChannel::LetIn() {
    const bool room =
        clients_.size() < static_cast<std::size_t>(channel_limit::Questions) && acceptedLately_ < MostInALook;
    if (knocking_) knocking_->setEnabled(room);
}

void LinuxChannel::ReadFrom(const std::shared_ptr<Client>& client) {
    switch (client->reader.Read(client->socket.Get())) {
    case MessageReader::State::More:
        return;
    case MessageReader::State::Broken:
        Drop(client);
        return;
    case MessageReader::State::Whole:
        client->readable.setEnabled(false);
        client->deadline.reset();
        HandOver(client, client->reader.Take());
    }
}

// The work runs from the loop, never inside the news of a socket: it may wait for a person.
void LinuxChannel::HandOver(const std::shared_ptr<Client>& client, std::string question) {
    const auto ticket = std::make_shared<Ticket>(self_, client);
    events_.Post([handler = handler_, ticket, question = std::move(question)] {
        if (handler) handler(question, [ticket](std::string answer) { ticket->Answer(std::move(answer)); });
    });
}

void LinuxChannel::WriteTo(const std::shared_ptr<Client>& client) {
    const MessageWriter::State state = client->writer->Write(client->socket.Get());
    if (state == MessageWriter::State::More) {
        client->writable.setEnabled(true);
    } else {
        Drop(client);
    }
}

// A notifier may be telling of this very socket: it goes when nobody speaks any more.
void LinuxChannel::Drop(const std::shared_ptr<Client>& client) {
    client->readable.setEnabled(false);
    client->writable.setEnabled(false);
    client->deadline = steady_clock::now();
    const std::weak_ptr<LinuxChannel*> self = self_;
    events_.Post([self, client] {
        const auto channel = self.lock();
        if (!channel) return;
        std::erase((*channel)->clients_, client);
        (*channel)->LetIn();
    });
}

void LinuxChannel::LookAfterClients() {
    const auto now = steady_clock::now();
    std::erase_if(clients_,
                  [now](const auto& client) { return client->deadline && *client->deadline <= now; });
    const bool calm = clients_.empty() && acceptedLately_ == 0;
    acceptedLately_ = 0;
    LetIn();
    if (!calm) return;
    events_.StopTimer(timer_);
    timer_ = 0;
}

} // namespace quorvane
