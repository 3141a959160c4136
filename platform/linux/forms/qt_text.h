#pragma once

#include "core/color.h"

#include <QColor>
#include <QString>
#include <string>
#include <string_view>

namespace quorvane {

// Texts of the model are UTF-8 with "\r\n" for a line end and positions in bytes, texts of the widgets UTF-16
// with "\n" and positions in units.

inline QString ToWidgetText(std::string_view text) {
    QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return shown;
}

inline std::string FromWidgetText(QString text) {
    text.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text.toStdString();
}

inline int ToWidgetPosition(std::string_view text, int position) {
    return static_cast<int>(ToWidgetText(text.substr(0, static_cast<std::size_t>(position))).size());
}

inline int FromWidgetPosition(const QString& text, int position) {
    return static_cast<int>(FromWidgetText(text.left(position)).size());
}

inline QColor ToQColor(Color color) {
    return {Red(color), Green(color), Blue(color)};
}

} // namespace quorvane
