#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Without the blanks at both ends.
std::string_view Trim(std::string_view text);

// Lower case of UTF-8 text: Latin, Greek and Cyrillic letters that keep their length; other bytes stay.
std::string LowerCase(std::string_view text);
// The same, of the first letter alone, upper case.
std::string UpperFirst(std::string_view text);

// Trimmed and in lower case: what the identity of paths and names is compared by.
std::string FoldedName(std::string_view text);
bool SameName(std::string_view a, std::string_view b);

std::vector<std::string> Split(std::string_view text, char separator);
// Every `from` in `text` replaced by `to`.
std::string Replace(std::string_view text, std::string_view from, std::string_view to);

} // namespace quorvane
