#pragma once

#include "platform/channel.h"
#include "platform/windows/base/win32.h"

#include <memory>

namespace quorvane {

class WindowsEventLoop;

// Questions come to the event loop's hidden window and are copied there; the program works on them from its
// loop. Each answer goes out on a thread of its own, which lives as long as the client takes to receive it:
// sending it waits for the client, and the program must not.
class WindowsChannel final : public Channel {
  public:
    explicit WindowsChannel(WindowsEventLoop& events);
    // Waits a moment for answers that are under way.
    ~WindowsChannel() override;

    bool Listen(std::function<void(std::string question, Reply reply)> handler) override;
    void Close() override;

  private:
    class Ticket;
    struct Open; // how many questions are open; outlives the channel where a client is slow

    LRESULT Take(HWND client, const COPYDATASTRUCT& data);

    WindowsEventLoop& events_;
    std::function<void(std::string, Reply)> handler_;
    std::shared_ptr<Open> open_;
};

} // namespace quorvane
