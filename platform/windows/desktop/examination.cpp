#include "platform/examination.h"

#include "platform/windows/base/wide.h"
#include "platform/windows/base/win32.h"

#include <algorithm>

namespace quorvane {
namespace {

using State = Finding::State;

std::wstring ShownWallpaper() {
    std::wstring path(MAX_PATH, L'\0');
    if (!SystemParametersInfoW(SPI_GETDESKWALLPAPER, static_cast<UINT>(path.size()), path.data(), 0))
        return {};
    return path.c_str();
}

Finding ExamineStore() {
    HKEY key = nullptr;
    const LSTATUS status =
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Quorvane", 0, KEY_READ | KEY_WRITE, &key);
    if (status == ERROR_SUCCESS) RegCloseKey(key);
    if (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND)
        return {"settings", State::Ok,
                "they are kept in the registry, HKEY_CURRENT_USER\\Software\\Quorvane"};
    return {"settings", State::Missing, "HKEY_CURRENT_USER\\Software\\Quorvane cannot be written",
            "give yourself full control of this key"};
}

Finding ExamineWallpaper(const Expected& expected) {
    const std::wstring wanted = Wide(expected.wallpaper);
    if (GetFileAttributesW(wanted.c_str()) == INVALID_FILE_ATTRIBUTES)
        return {"wallpaper", State::Limited, "none has been made yet", "quorvanectl do change"};
    if (lstrcmpiW(ShownWallpaper().c_str(), wanted.c_str()) == 0)
        return {"wallpaper", State::Ok, "the desktop shows it"};
    return {"wallpaper", State::Missing, "the desktop shows another one",
            "quorvanectl do change; another program that sets wallpapers may have to be switched off"};
}

Finding ExamineTray() {
    if (FindWindowW(L"Shell_TrayWnd", nullptr)) return {"tray", State::Ok, "the task bar shows icons"};
    return {"tray", State::Missing, "there is no task bar: the menu cannot be opened",
            "quorvanectl does what the menu does"};
}

int CALLBACK TakeFamily(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

bool IsInstalled(const std::string& family) {
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    const std::wstring name = Wide(family);
    std::copy_n(name.c_str(), std::min<std::size_t>(name.size(), LF_FACESIZE - 1), wanted.lfFaceName);
    bool found = false;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesExW(screen, &wanted, TakeFamily, reinterpret_cast<LPARAM>(&found), 0);
    ReleaseDC(nullptr, screen);
    return found;
}

void ExamineFonts(const Expected& expected, std::vector<Finding>& findings) {
    const std::size_t before = findings.size();
    for (const std::string& family : expected.fonts) {
        if (IsInstalled(family)) continue;
        findings.push_back({"fonts", State::Limited, family + " is not installed and shown as another one",
                            "install it, or choose another font for the calendar"});
    }
    if (findings.size() == before)
        findings.push_back({"fonts", State::Ok, "all that the wallpaper is set in are installed"});
}

Finding ExamineAutostart(const Expected& expected) {
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run", L"Quorvane II",
                     RRF_RT_REG_SZ, nullptr, nullptr, nullptr);
    const bool there = status == ERROR_SUCCESS;
    if (there == expected.autostart)
        return {"autostart", State::Ok, there ? "Quorvane starts at log-on" : "not wanted"};
    return {"autostart", there ? State::Limited : State::Missing,
            there ? "Quorvane starts at log-on though the settings do not want it"
                  : "Quorvane does not start at log-on though the settings want it",
            "quorvanectl do save"};
}

} // namespace

std::vector<Finding> ExamineDesktop(const Expected& expected) {
    std::vector<Finding> findings{ExamineStore(), ExamineWallpaper(expected), ExamineTray()};
    ExamineFonts(expected, findings);
    findings.push_back(ExamineAutostart(expected));
    return findings;
}

} // namespace quorvane
