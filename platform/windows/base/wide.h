#pragma once

#include <string>
#include <string_view>

namespace quorvane {

// UTF-8 and the system's UTF-16. What is no valid text comes out as U+FFFD.
std::wstring Wide(std::string_view utf8);
std::string Utf8(std::wstring_view wide);

// A path for the system's calls: one near or above the classic limit of 260 letters gets the prefix that
// lifts it.
std::wstring WidePath(std::string_view utf8);

// Copies `text` into a field of `capacity` units, cut to fit between two letters, with a zero behind it.
void CopyToField(std::string_view text, wchar_t* field, std::size_t capacity);

} // namespace quorvane
