#include "entry/application.h"
#include "platform/windows/windows_platform.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    quorvane::WindowsPlatform machine;
    quorvane::Application application(machine.Services());
    return application.Run();
}
