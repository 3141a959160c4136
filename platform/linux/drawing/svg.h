#pragma once

#include "platform/painting/row_painter.h"

#include <string>

class QByteArray;

namespace quorvane {

// The drawing without anything that stands outside it: no other file is read, and no pipe waited for, because
// a drawing names it. Inline pictures stay.
QByteArray WithoutOutside(const QByteArray& svg);

// Paints a drawing at the painter's size. False, with the reason in `why`, where it cannot be read. Needs a
// QGuiApplication.
bool PaintSvg(const QByteArray& svg, RowPainter& painter, std::string& why);

} // namespace quorvane
