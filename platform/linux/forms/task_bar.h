#pragma once

class QWidget;

namespace quorvane {

// Marks a window that is not mapped yet as one that task bars and pagers leave out. Nothing on a display that
// has no such mark.
void SetSkippedByTaskBar(QWidget& window);

} // namespace quorvane
