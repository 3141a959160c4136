#include "platform/windows/base/system.h"

#include "core/utf8.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/base/win32.h"

#include <algorithm>
#include <iterator>

namespace quorvane {
namespace {

std::string Directory(UINT(WINAPI* call)(LPWSTR, UINT)) {
    std::wstring path(4096, L'\0');
    const UINT length = call(path.data(), static_cast<UINT>(path.size()));
    path.resize(length < path.size() ? length : 0);
    return Utf8(path);
}

int CALLBACK CollectFont(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM list) {
    const std::wstring_view name = font->lfFaceName;
    // A leading "@" marks the form of a font that is turned for vertical text.
    if (!name.starts_with(L'@')) reinterpret_cast<std::vector<std::string>*>(list)->push_back(Utf8(name));
    return 1;
}

} // namespace

VersionRecord WindowsSystem::Version() {
    OSVERSIONINFOEXW info{};
    info.dwOSVersionInfoSize = sizeof info;
    // GetVersionEx answers with the newest system that the manifest names; this one tells the truth.
    using RtlGetVersion = LONG(WINAPI*)(OSVERSIONINFOEXW*);
    const auto rtlGetVersion = SystemFunction<RtlGetVersion>(L"ntdll", "RtlGetVersion");
    if (!rtlGetVersion || rtlGetVersion(&info) != 0) GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&info));
    VersionRecord record;
    record.dwOSVersionInfoSize = static_cast<std::int32_t>(info.dwOSVersionInfoSize);
    record.dwMajorVersion = static_cast<std::int32_t>(info.dwMajorVersion);
    record.dwMinorVersion = static_cast<std::int32_t>(info.dwMinorVersion);
    record.dwBuildNumber = static_cast<std::int32_t>(info.dwBuildNumber);
    record.dwPlatformId = static_cast<std::int32_t>(info.dwPlatformId);
    record.szCSDVersion = Utf8(info.szCSDVersion);
    record.suiteMask = info.wSuiteMask;
    return record;
}

std::string WindowsSystem::UserName() {
    wchar_t name[257]{};
    DWORD length = 257;
    return GetUserNameW(name, &length) ? Utf8(name) : std::string();
}

std::string WindowsSystem::ComputerName() {
    wchar_t name[257]{};
    DWORD length = 257;
    return GetComputerNameW(name, &length) ? Utf8(name) : std::string();
}

std::string WindowsSystem::CodePageText(std::string_view bytes) {
    const int count = static_cast<int>(bytes.size());
    std::wstring wide(bytes.size(), L'\0'); // a byte or two give one letter
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, wide.data(), static_cast<int>(wide.size()))));
    return Utf8(wide);
}

std::int32_t WindowsSystem::ProcessId() {
    return static_cast<std::int32_t>(GetCurrentProcessId());
}

std::int32_t WindowsSystem::ThreadId() {
    return static_cast<std::int32_t>(GetCurrentThreadId());
}

std::string WindowsSystem::WindowsDirectory() {
    return Directory(GetWindowsDirectoryW);
}

std::string WindowsSystem::SystemWindowsDirectory() {
    return Directory(GetSystemWindowsDirectoryW);
}

bool WindowsSystem::EnablePrivilege(std::string_view name) {
    TOKEN_PRIVILEGES wanted{};
    wanted.PrivilegeCount = 1;
    wanted.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    if (!LookupPrivilegeValueW(nullptr, Wide(name).c_str(), &wanted.Privileges[0].Luid)) return false;
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token)) return false;
    // The call succeeds for a privilege that the account lacks as well; the last error tells.
    const bool adjusted = AdjustTokenPrivileges(token, FALSE, &wanted, 0, nullptr, nullptr);
    const bool granted = adjusted && GetLastError() == ERROR_SUCCESS;
    CloseHandle(token);
    return granted;
}

DateNames WindowsSystem::ShortDateNames() {
    DateNames names;
    const auto read = [](std::string& name, LCTYPE what) {
        wchar_t text[128]{};
        if (GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, static_cast<int>(std::size(text))) > 0)
            name = Utf8(text);
    };
    for (std::size_t month = 0; month < names.months.size(); ++month)
        read(names.months[month], LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month));
    for (std::size_t day = 0; day < names.days.size(); ++day)
        read(names.days[day], LOCALE_SABBREVDAYNAME1 + static_cast<LCTYPE>(day));
    return names;
}

std::vector<std::string> WindowsSystem::FontNames() {
    std::vector<std::string> names;
    const HDC screen = GetDC(nullptr);
    LOGFONTW any{};
    any.lfCharSet = DEFAULT_CHARSET;
    EnumFontFamiliesExW(screen, &any, CollectFont, reinterpret_cast<LPARAM>(&names), 0);
    ReleaseDC(nullptr, screen);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

bool WindowsSystem::SubstitutesFont(const std::string& family) {
    // The system shows any text in some font; only a name that is redirected on purpose counts.
    return RegGetValueW(HKEY_LOCAL_MACHINE,
                        L"Software\\Microsoft\\Windows NT\\CurrentVersion\\FontSubstitutes",
                        Wide(family).c_str(), RRF_RT_REG_SZ, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

int WindowsSystem::AddFontFile(const std::string& path) {
    return AddFontResourceExW(WidePath(path).c_str(), FR_PRIVATE, nullptr);
}

void WindowsSystem::Complain(std::string_view line) {
    const std::string text = EscapeControls(line) + "\n";
    OutputDebugStringW(Wide(text).c_str());
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written,
              nullptr);
}

} // namespace quorvane
