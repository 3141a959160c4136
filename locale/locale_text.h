#pragma once

#include "core/locale_strings.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

// The lines of a locale file, UTF-8, each ended by CR LF or LF:
//
//     # a comment, or behind a text: two blanks, then " # ..."
//     [LOCALE=English;EN]
//     1=Settings
//
// A comment behind a text takes the letter in front of its blank along, so two blanks stand before it.

// A line without its comment; nothing for one that is a comment as a whole.
std::optional<std::string> CleanLocaleLine(std::string_view line);

struct LocaleHeader {
    std::string description; // the language's name
    std::string language;    // its code, "EN"
};
// What the first line in brackets says; empty where there is none.
LocaleHeader ReadLocaleHeader(std::string_view content);

// Whether a language with this code is written from right to left: "AR", "he-IL".
bool IsWrittenFromRightToLeft(std::string_view language);

// Puts the strings into the table; a later line of a number wins, numbers beyond the table are passed over.
// Ends with false at the first line that begins with no number or with 0; what stood before it is in the
// table.
bool LoadLocaleStrings(std::string_view content, LocaleStrings& strings);

} // namespace quorvane
