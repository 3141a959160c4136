#pragma once

#include "platform/windows/base/win32.h"

#include <string>

namespace quorvane {

// What both sides of the channel share: a question is WM_COPYDATA from the client's window to the hidden
// window of a running copy, taken where that answers TRUE; the answer comes the same way back.
namespace channel_message {
inline constexpr wchar_t WindowClass[] = L"QuorvaneEvents"; // of the running copies
inline constexpr ULONG_PTR Question = 0x51760001;
inline constexpr ULONG_PTR Answer = 0x51760002;
inline constexpr ULONG_PTR NoAnswer = 0x51760003;        // the question is given up
inline constexpr wchar_t Listens[] = L"QuorvaneListens"; // a window property of the copies that answer
} // namespace channel_message

// What became of a message. Busy: the other side has enough to do and may be asked again.
enum class Sending { Failed, Taken, Busy };
inline constexpr LRESULT BusyResult = 2; // of WM_COPYDATA

// Sends `bytes` as a message of `kind`.
Sending SendChannelMessage(HWND from, HWND to, ULONG_PTR kind, std::string& bytes, UINT flags,
                           int milliseconds);

// True where a window belongs to a process of this person.
bool IsOwnWindow(HWND window);

} // namespace quorvane
