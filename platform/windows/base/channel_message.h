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
inline constexpr ULONG_PTR NoAnswer = 0x51760003; // the question is given up
} // namespace channel_message

// Sends `bytes` as a message of `kind`; false where the other window did not take it in time.
bool SendChannelMessage(HWND from, HWND to, ULONG_PTR kind, std::string& bytes, UINT flags, int milliseconds);

// True where a window belongs to a process of this person.
bool IsOwnWindow(HWND window);

} // namespace quorvane
