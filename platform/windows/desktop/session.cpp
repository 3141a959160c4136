#include "platform/windows/desktop/session.h"

#include "core/text.h"
#include "platform/store.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"

#include <atomic>
#include <utility>

namespace quorvane {
namespace {

constexpr StoreKey RunKey{{}, Hive::CurrentUser, "Software\\Microsoft\\Windows\\CurrentVersion\\Run"};
constexpr std::string_view RunValue = "Quorvane II";
constexpr DWORD PatienceMilliseconds = 10'000;
constexpr int NotSaved = 1; // exit status

// The window that a console's requests go to. They come on a thread of the system's own, which knows nothing
// but this.
std::atomic<HWND> consoleTarget{nullptr};

BOOL WINAPI OnConsoleRequest(DWORD) {
    const HWND target = consoleTarget;
    if (!target) return FALSE;
    PostMessageW(target, WM_CLOSE, 0, 0);
    // The system ends the process as soon as this returns; the loop needs time to save and to leave.
    Sleep(PatienceMilliseconds);
    return TRUE;
}

} // namespace

WindowsSession::WindowsSession(WindowsEventLoop& events, Store& store)
    : events_(events)
    , store_(store) {
    events_.AddHandler([this](UINT message, WPARAM wide, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_QUERYENDSESSION) return TRUE;
        if (message == WM_CLOSE || (message == WM_ENDSESSION && wide)) {
            RequestEnd();
            return 0;
        }
        return std::nullopt;
    });
}

WindowsSession::~WindowsSession() {
    SetConsoleCtrlHandler(OnConsoleRequest, FALSE);
    consoleTarget = nullptr;
}

std::string WindowsSession::CommandLine() {
    const wchar_t* text = GetCommandLineW();
    bool quoted = false;
    while (*text && (quoted || (*text != L' ' && *text != L'\t'))) {
        if (*text == L'"') quoted = !quoted;
        ++text;
    }
    return std::string(Trim(Utf8(text)));
}

int WindowsSession::SetAutostart(bool enabled, const std::string& switches) {
    if (!enabled) {
        const int error = store_.DeleteValue(RunKey, RunValue);
        return error == store_error::NotFound ? store_error::None : error;
    }
    std::wstring program(32768, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    std::string command = Utf8(program);
    if (!switches.empty()) command += " " + switches;
    command.push_back('\0');
    return store_.Set(RunKey, RunValue, {ValueType::Text, command});
}

void WindowsSession::OnEndRequest(std::function<void()> handler) {
    onEndRequest_ = std::move(handler);
    consoleTarget = events_.Window();
    SetConsoleCtrlHandler(OnConsoleRequest, TRUE);
}

// A second request that gets here finds the first one waiting for somebody: nothing more can be saved.
void WindowsSession::RequestEnd() {
    if (std::exchange(ending_, true)) {
        events_.Deliver([] { throw ProcessEnd{NotSaved}; });
    } else if (onEndRequest_) {
        events_.Deliver(onEndRequest_);
    }
}

} // namespace quorvane
