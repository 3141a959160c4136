#include "platform/windows/desktop/tray.h"

#include "platform/windows/base/resolution.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/desktop/native_menu.h"

#include <iterator>
#include <utility>

namespace quorvane {
namespace {

constexpr UINT IconId = 1;
constexpr UINT CallbackMessage = 512;

// As large as the area of the first screen shows it.
HICON LoadSmallIcon(HWND window) {
    const int size = SystemMetric(SM_CXSMICON, ResolutionOf(window));
    return static_cast<HICON>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
}

// The shell's word that its area is new reaches a program that was started as an administrator as well.
void LetThrough(HWND window, UINT message) {
    using Function = BOOL(WINAPI*)(HWND, UINT, DWORD, void*);
    constexpr DWORD Allow = 1;
    if (const auto filter = SystemFunction<Function>("ChangeWindowMessageFilterEx"))
        filter(window, message, Allow, nullptr);
}

} // namespace

WindowsTray::WindowsTray(WindowsEventLoop& events)
    : events_(events)
    , areaCreated_(RegisterWindowMessageW(L"TaskbarCreated"))
    , icon_(LoadSmallIcon(events.Window())) {
    LetThrough(events_.Window(), areaCreated_);
    events_.AddHandler([this](UINT message, WPARAM wide, LPARAM low) -> std::optional<LRESULT> {
        if (NativeMenu::DrawPart(message, low)) return TRUE;
        if (message == areaCreated_) {
            Restore();
            return 0;
        }
        if (message != CallbackMessage || wide != IconId) return std::nullopt;
        const int event = static_cast<int>(LOWORD(low));
        const bool told = event == tray_message::LeftDoubleClick || event == tray_message::RightButtonUp;
        if (told && onMessage_) events_.Deliver([this, event] { onMessage_(event); });
        return 0;
    });
}

WindowsTray::~WindowsTray() {
    Remove();
    if (icon_) DestroyIcon(icon_);
}

bool WindowsTray::Tell(DWORD operation, const TrayRecord& record) {
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = events_.Window();
    data.uID = IconId;
    data.uFlags = static_cast<UINT>(record.flags) & (NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_INFO);
    if (record.balloonText.empty()) data.uFlags &= ~UINT{NIF_INFO};
    data.uCallbackMessage = CallbackMessage;
    data.hIcon = icon_;
    CopyToField(record.tip, data.szTip, std::size(data.szTip));
    CopyToField(record.balloonTitle, data.szInfoTitle, std::size(data.szInfoTitle));
    CopyToField(record.balloonText, data.szInfo, std::size(data.szInfo));
    data.dwInfoFlags = static_cast<DWORD>(record.balloonIcon);
    if (operation == NIM_SETVERSION) {
        data.uVersion = static_cast<UINT>(record.version);
    } else {
        data.uTimeout = static_cast<UINT>(record.balloonTimeoutMilliseconds);
    }
    return Shell_NotifyIconW(operation, &data);
}

// Told where the shell has started anew, and where the first screen's scale is another: then the icon stands
// and wants a new size.
void WindowsTray::Restore() {
    const HICON before = std::exchange(icon_, LoadSmallIcon(events_.Window()));
    if (wanted_) Show();
    if (before) DestroyIcon(before);
}

// A shell that is busy, at log-on above all, may say that it did not add the icon and have it all the same.
bool WindowsTray::Show() {
    TrayRecord whole = shown_;
    whole.flags |= NIF_MESSAGE | NIF_ICON | NIF_TIP;
    return (Tell(NIM_ADD, whole) || Tell(NIM_MODIFY, whole)) && Tell(NIM_SETVERSION, whole);
}

bool WindowsTray::Add(const TrayRecord& record) {
    wanted_ = true;
    shown_ = record;
    return Show();
}

// An icon that the shell did not take before is offered again.
bool WindowsTray::Modify(const TrayRecord& record) {
    shown_ = record;
    const bool told = Tell(NIM_MODIFY, shown_) || (wanted_ && Show());
    shown_.balloonText.clear(); // an area that comes back does not tell old news
    return told;
}

bool WindowsTray::SetVersion(int version) {
    shown_.version = version;
    return Tell(NIM_SETVERSION, shown_);
}

void WindowsTray::Remove() {
    if (std::exchange(wanted_, false)) Tell(NIM_DELETE, shown_);
}

void WindowsTray::Popup(Menu& menu) {
    if (std::exchange(open_, true)) return;
    const ShownMenu shown = menu.Open();
    POINT pointer{};
    GetCursorPos(&pointer);
    const MenuItem* chosen = nullptr;
    {
        const TimersHeld held(events_);
        chosen = NativeMenu::Ask(shown, events_.Window(), pointer);
    }
    open_ = false;
    events_.LeaveIfEnding();
    if (chosen) Menu::Choose(*chosen);
}

void WindowsTray::OnMessage(std::function<void(int message)> handler) {
    onMessage_ = std::move(handler);
}

} // namespace quorvane
