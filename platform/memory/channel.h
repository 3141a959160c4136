#pragma once

#include "platform/channel.h"
#include "platform/event_loop.h"

namespace quorvane {

class MemoryChannel final : public Channel {
  public:
    explicit MemoryChannel(EventLoop& events)
        : events_(events) {}

    bool Listen(std::function<void(std::string question, Reply reply)> handler) override {
        if (refuse) return false;
        handler_ = std::move(handler);
        return true;
    }
    void Close() override { handler_ = nullptr; }

    // A client asks. What it is answered, once it is: the text stays empty until then.
    std::shared_ptr<std::optional<std::string>> Ask(const std::string& question) {
        auto answer = std::make_shared<std::optional<std::string>>();
        const auto handler = handler_;
        if (!handler) return answer;
        events_.Deliver(
            [&] { handler(question, [answer](std::string text) { *answer = std::move(text); }); });
        return answer;
    }
    bool Listening() const { return handler_ != nullptr; }

    bool refuse = false;

  private:
    EventLoop& events_;
    std::function<void(std::string, Reply)> handler_;
};

} // namespace quorvane
