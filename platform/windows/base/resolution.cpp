#include "platform/windows/base/resolution.h"

#include <algorithm>

namespace quorvane {

int ScreenResolution() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return std::max(dots, 48);
}

int ResolutionOf(HWND window) {
    using Function = UINT(WINAPI*)(HWND);
    static const auto ofWindow = SystemFunction<Function>("GetDpiForWindow");
    const UINT dots = ofWindow ? ofWindow(window) : 0;
    return dots > 0 ? static_cast<int>(dots) : ScreenResolution();
}

int SystemMetric(int which, int dotsPerInch) {
    using Function = int(WINAPI*)(int, UINT);
    static const auto forDpi = SystemFunction<Function>("GetSystemMetricsForDpi");
    return forDpi ? forDpi(which, static_cast<UINT>(dotsPerInch)) : GetSystemMetrics(which);
}

} // namespace quorvane
