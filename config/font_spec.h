#pragma once

#include "config/settings_record.h"
#include "platform/drawing.h"

namespace quorvane {

// The same font as a setting holds it and as a surface draws it.

inline FontSpec ToFontSpec(const FontRecord& font) {
    return {font.FontName, font.Size, font.Bold, font.Italic, font.Underline, font.Strikethru};
}
inline FontRecord ToFontRecord(const FontSpec& font) {
    return {font.bold, font.italic, font.size, font.strikethrough, font.underline, font.name};
}

} // namespace quorvane
