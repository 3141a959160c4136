#include "platform/windows/base/wide.h"

#include "platform/windows/base/win32.h"

#include <algorithm>

namespace quorvane {

std::wstring Wide(std::string_view utf8) {
    if (utf8.empty()) return {};
    const int bytes = static_cast<int>(utf8.size());
    const int count = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(count), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), count);
    return wide;
}

std::string Utf8(std::wstring_view wide) {
    if (wide.empty()) return {};
    const int letters = static_cast<int>(wide.size());
    const int count = WideCharToMultiByte(CP_UTF8, 0, wide.data(), letters, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(count), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), letters, utf8.data(), count, nullptr, nullptr);
    return utf8;
}

std::wstring WidePath(std::string_view utf8) {
    constexpr std::size_t LongestPlain = 240; // folders must leave room for a short file name
    std::wstring path = Wide(utf8);
    if (path.size() < LongestPlain || path.starts_with(L"\\\\?\\")) return path;
    const DWORD room = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(room, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), room, full.data(), nullptr));
    if (full.empty()) return path;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

void CopyToField(std::string_view text, wchar_t* field, std::size_t capacity) {
    const std::wstring wide = Wide(text);
    std::size_t count = std::min(wide.size(), capacity - 1);
    const bool parted = count > 0 && count < wide.size() && IS_HIGH_SURROGATE(wide[count - 1]);
    if (parted) --count;
    std::copy_n(wide.data(), count, field);
    field[count] = L'\0';
}

} // namespace quorvane
