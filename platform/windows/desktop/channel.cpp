#include "platform/windows/desktop/channel.h"

#include "platform/windows/base/channel_message.h"
#include "platform/windows/desktop/event_loop.h"

#include <atomic>
#include <utility>

namespace quorvane {
namespace {

constexpr DWORD LastWaitMilliseconds = 1000;
constexpr DWORD StackBytes = 64 * 1024;

} // namespace

struct WindowsChannel::Open {
    std::atomic<int> questions = 0;
};

// What a reply holds: answered once at most, and where it is dropped the client learns so.
class WindowsChannel::Ticket {
  public:
    Ticket(std::shared_ptr<Open> open, HWND own, HWND client)
        : open_(std::move(open))
        , own_(own)
        , client_(client) {
        ++open_->questions;
    }
    ~Ticket() {
        if (!answered_) Send(channel_message::NoAnswer, {});
    }
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

    void Answer(std::string answer) {
        if (!std::exchange(answered_, true)) Send(channel_message::Answer, std::move(answer));
    }

  private:
    struct Letter {
        std::shared_ptr<Open> open;
        HWND from;
        HWND to;
        ULONG_PTR kind;
        std::string bytes;
    };

    void Send(ULONG_PTR kind, std::string bytes) {
        auto letter = std::make_unique<Letter>(Letter{open_, own_, client_, kind, std::move(bytes)});
        const HANDLE thread = CreateThread(nullptr, StackBytes, Carry, letter.get(),
                                           STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
        if (thread) {
            letter.release();
            CloseHandle(thread);
        } else {
            --open_->questions;
        }
    }
    static DWORD WINAPI Carry(void* given) {
        const std::unique_ptr<Letter> letter(static_cast<Letter*>(given));
        SendChannelMessage(letter->from, letter->to, letter->kind, letter->bytes, SMTO_ABORTIFHUNG,
                           channel_limit::MilliSecondsBetween);
        --letter->open->questions;
        return 0;
    }

    std::shared_ptr<Open> open_;
    HWND own_;
    HWND client_;
    bool answered_ = false;
};

WindowsChannel::WindowsChannel(WindowsEventLoop& events)
    : events_(events)
    , open_(std::make_shared<Open>()) {
    events_.AddHandler([this](UINT message, WPARAM wide, LPARAM low) -> std::optional<LRESULT> {
        if (message != WM_COPYDATA) return std::nullopt;
        return Take(reinterpret_cast<HWND>(wide), *reinterpret_cast<const COPYDATASTRUCT*>(low));
    });
}

WindowsChannel::~WindowsChannel() {
    Close();
    const ULONGLONG end = GetTickCount64() + LastWaitMilliseconds;
    while (open_->questions > 0 && GetTickCount64() < end)
        Sleep(1);
}

bool WindowsChannel::Listen(std::function<void(std::string question, Reply reply)> handler) {
    handler_ = std::move(handler);
    return SetPropW(events_.Window(), channel_message::Listens, reinterpret_cast<HANDLE>(1)) != FALSE;
}

void WindowsChannel::Close() {
    RemovePropW(events_.Window(), channel_message::Listens);
    handler_ = nullptr;
}

LRESULT WindowsChannel::Take(HWND client, const COPYDATASTRUCT& data) {
    if (!handler_ || data.dwData != channel_message::Question || data.cbData > channel_limit::MessageBytes ||
        !IsOwnWindow(client)) {
        return FALSE;
    }
    if (open_->questions >= channel_limit::Questions) return BusyResult;
    std::string question(static_cast<const char*>(data.lpData), data.cbData);
    const auto ticket = std::make_shared<Ticket>(open_, events_.Window(), client);
    events_.Post([handler = handler_, ticket, question = std::move(question)] {
        handler(question, [ticket](std::string answer) { ticket->Answer(std::move(answer)); });
    });
    return TRUE;
}

} // namespace quorvane
