#pragma once

#include "platform/drawing.h"

#include <QFont>
#include <QString>

namespace quorvane {

// The font that comes nearest; a blank name or a size of 0 leaves the program's own.
inline QFont FontOf(const FontSpec& spec) {
    QFont font;
    if (!spec.name.empty()) font.setFamily(QString::fromStdString(spec.name));
    if (spec.size > 0) font.setPointSizeF(static_cast<double>(spec.size));
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    font.setUnderline(spec.underline);
    font.setStrikeOut(spec.strikethrough);
    return font;
}

inline FontSpec SpecOf(const QFont& font) {
    return {font.family().toStdString(),
            static_cast<float>(font.pointSizeF()),
            font.bold(),
            font.italic(),
            font.underline(),
            font.strikeOut()};
}

} // namespace quorvane
