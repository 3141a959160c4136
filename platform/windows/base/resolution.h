#pragma once

#include "platform/windows/base/win32.h"

namespace quorvane {

// A function of the system's that older ones do not have; null there.
template<typename Function>
Function SystemFunction(const char* name) {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

// Of the first screen, as the program was told at its start.
int ScreenResolution();
// Of the screen that a window stands on.
int ResolutionOf(HWND window);
// GetSystemMetrics for a screen of that resolution.
int SystemMetric(int which, int dotsPerInch);

} // namespace quorvane
