#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

// The language of a note's text: words mixed with tokens, "$" and a letter and a value and "$", or "\" and a
// letter. It has no grammar. A chain of steps reads it, each of which looks through the whole text for its
// own token, and what one step leaves behind is what the next one sees: a token inside another's value is
// taken by the earlier step.

// What the tokens that stand for values become.
struct NoteValues {
    std::string time; // "$time$" and "$clock$": date and time as the system writes them
    std::string name; // "$name$": of the person who is logged on
    std::string host; // "$host$"
    std::string decimalSign = ".";
};

// How a note looks. A new one begins with this.
struct NoteLook {
    static constexpr float DefaultSize = 8.25F;
    static constexpr std::int32_t ToolTipBackground = static_cast<std::int32_t>(0x80000018);

    std::string text;     // as it is printed: lines end with CR LF
    bool ticking = false; // it shows the time, and is read anew each second
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    float size = DefaultSize; // in points
    std::string font;         // empty where no token named one
    std::int32_t forecolor = 0;
    std::int32_t backcolor = ToolTipBackground;
    std::uint8_t alpha = 255;
    std::string link; // empty: no button

    bool operator==(const NoteLook&) const = default;
};

// The look that a text gives to a note that looked like `before`. Properties whose value cannot be converted
// stay as they were, and so does ticking once it is on.
NoteLook Set_Text(std::string_view text, const NoteValues& values, const NoteLook& before = {});

// The text as the editors show it: without the tokens of size, font, colours, opacity and link, and with line
// ends and tabs as "\n" and "\t".
std::string NoteDisplayText(std::string_view text);

} // namespace quorvane
