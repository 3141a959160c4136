#include "platform/channel.h"
#include "platform/headless.h"
#include "platform/windows/base/channel_message.h"

#include <algorithm>
#include <optional>

namespace quorvane {
namespace {

constexpr wchar_t ClientClass[] = L"QuorvaneQuestion";
constexpr DWORD BusyMilliseconds = 5;

// The window that one question is asked from and that its answer comes to.
class Asker {
  public:
    Asker() {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = ClientClass;
        RegisterClassExW(&windowClass); // fails where a question was asked before, and the class is there
        window_ = CreateWindowExW(0, ClientClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  windowClass.hInstance, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    ~Asker() {
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        DestroyWindow(window_);
    }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    ChannelClient::Result Ask(HWND copy, std::string question, int milliseconds);

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
        auto* own = reinterpret_cast<Asker*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message != WM_COPYDATA || !own) return DefWindowProcW(window, message, wide, low);
        return own->Take(reinterpret_cast<HWND>(wide), *reinterpret_cast<const COPYDATASTRUCT*>(low));
    }
    BOOL Take(HWND from, const COPYDATASTRUCT& data) {
        if (from != copy_ || data.cbData > channel_limit::MessageBytes) return FALSE;
        const bool answers = data.dwData == channel_message::Answer;
        if (!answers && data.dwData != channel_message::NoAnswer) return FALSE;
        given_ = true;
        if (answers) answer_.emplace(static_cast<const char*>(data.lpData), data.cbData);
        return TRUE;
    }

    // Others may stand in front, and there is nothing to wait on but the time.
    bool Send(HWND copy, std::string& question, int milliseconds) {
        const ULONGLONG deadline = GetTickCount64() + channel_limit::MilliSecondsBetween;
        Sending sending = Sending::Busy;
        while (sending == Sending::Busy && GetTickCount64() < deadline) {
            sending = SendChannelMessage(window_, copy, channel_message::Question, question, SMTO_NORMAL,
                                         milliseconds);
            if (sending == Sending::Busy) Sleep(BusyMilliseconds);
        }
        return sending == Sending::Taken;
    }

    HWND window_ = nullptr;
    HWND copy_ = nullptr;
    bool given_ = false;
    std::optional<std::string> answer_;
};

ChannelClient::Result Asker::Ask(HWND copy, std::string question, int milliseconds) {
    using Outcome = ChannelClient::Outcome;
    copy_ = copy;
    DWORD id = 0;
    GetWindowThreadProcessId(copy, &id);
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, id);
    const ULONGLONG deadline = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    bool running = Send(copy, question, std::max(milliseconds, channel_limit::MilliSecondsBetween));
    while (running && !given_) {
        const ULONGLONG now = GetTickCount64();
        if (now >= deadline) break;
        const DWORD count = process ? 1 : 0;
        const DWORD woken = MsgWaitForMultipleObjects(count, &process, FALSE,
                                                      static_cast<DWORD>(deadline - now), QS_ALLINPUT);
        running = woken != WAIT_FAILED && !(count == 1 && woken == WAIT_OBJECT_0);
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    if (process) CloseHandle(process);
    if (answer_) return {Outcome::Answered, std::move(*answer_)};
    return {Outcome::NoAnswer, {}};
}

// Calls `visit` with the window of each copy that listens until it answers true.
template<typename Visit>
void ForEachCopy(Visit visit) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, channel_message::WindowClass, nullptr))) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        const bool listens = GetPropW(window, channel_message::Listens) != nullptr;
        if (listens && IsOwnWindow(window) && visit(window, static_cast<std::int32_t>(process))) return;
    }
}

std::int64_t StartOf(std::int32_t id) {
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(id));
    if (!process) return 0;
    FILETIME created{}, ended{}, kernel{}, user{};
    GetProcessTimes(process, &created, &ended, &kernel, &user);
    CloseHandle(process);
    return static_cast<std::int64_t>(created.dwHighDateTime) << 32 | created.dwLowDateTime;
}

class WindowsChannelClient final : public ChannelClient {
  public:
    std::vector<RunningCopy> Copies() override {
        std::vector<RunningCopy> copies;
        ForEachCopy([&](HWND, std::int32_t process) {
            copies.push_back({process, StartOf(process)});
            return false;
        });
        std::stable_sort(copies.begin(), copies.end(),
                         [](const RunningCopy& a, const RunningCopy& b) { return a.started > b.started; });
        return copies;
    }
    Result Ask(std::int32_t process, const std::string& question, int patienceMilliseconds) override {
        Result result;
        if (question.size() > channel_limit::MessageBytes) return {Outcome::NoAnswer, {}};
        ForEachCopy([&](HWND window, std::int32_t owner) {
            if (owner != process) return false;
            result = Asker().Ask(window, question, patienceMilliseconds);
            return true;
        });
        return result;
    }
};

} // namespace

std::unique_ptr<ChannelClient> CreateChannelClient() {
    return std::make_unique<WindowsChannelClient>();
}

} // namespace quorvane
