#include "platform/windows/base/channel_message.h"

#include <memory>
#include <vector>

namespace quorvane {
namespace {

using Handle = std::unique_ptr<void, decltype(&CloseHandle)>;

// The person whom a process runs for, as the bytes of its security identifier; empty where unknown.
std::vector<BYTE> PersonOf(HANDLE process) {
    HANDLE opened = nullptr;
    if (!process || !OpenProcessToken(process, TOKEN_QUERY, &opened)) return {};
    const Handle token(opened, &CloseHandle);
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<BYTE> bytes(size);
    if (!GetTokenInformation(token.get(), TokenUser, bytes.data(), size, &size)) return {};
    const PSID person = reinterpret_cast<TOKEN_USER*>(bytes.data())->User.Sid;
    const auto* begin = static_cast<const BYTE*>(person);
    return {begin, begin + GetLengthSid(person)};
}

} // namespace

Sending SendChannelMessage(HWND from, HWND to, ULONG_PTR kind, std::string& bytes, UINT flags,
                           int milliseconds) {
    COPYDATASTRUCT data{kind, static_cast<DWORD>(bytes.size()), bytes.data()};
    DWORD_PTR result = FALSE;
    const LRESULT came =
        SendMessageTimeoutW(to, WM_COPYDATA, reinterpret_cast<WPARAM>(from), reinterpret_cast<LPARAM>(&data),
                            flags, static_cast<UINT>(milliseconds), &result);
    if (came == 0 || result == FALSE) return Sending::Failed;
    return result == static_cast<DWORD_PTR>(BusyResult) ? Sending::Busy : Sending::Taken;
}

bool IsOwnWindow(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id), &CloseHandle);
    const std::vector<BYTE> person = PersonOf(process.get());
    return !person.empty() && person == PersonOf(GetCurrentProcess());
}

} // namespace quorvane
