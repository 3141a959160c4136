#include "platform/windows/desktop/desktop.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/base/win32.h"

namespace quorvane {

PixelSize WindowsDesktop::ScreenSize() {
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

PixelRect WindowsDesktop::WorkArea() {
    RECT area{};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0))
        return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

bool WindowsDesktop::SetWallpaper(const std::string& path) {
    std::wstring wide = Wide(path);
    return SystemParametersInfoW(SPI_SETDESKWALLPAPER, 0, wide.data(), SPIF_UPDATEINIFILE);
}

void WindowsDesktop::ShowBusyPointer(bool busy) {
    // The shape holds until the pointer next moves over a window, which then sets its own.
    SetCursor(LoadCursorW(nullptr, busy ? IDC_WAIT : IDC_ARROW));
}

std::optional<PixelPoint> WindowsDesktop::PointerPosition() {
    POINT at{};
    if (!GetCursorPos(&at)) return std::nullopt;
    return PixelPoint{at.x, at.y};
}

} // namespace quorvane
