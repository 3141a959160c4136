#pragma once

#include <QIcon>

namespace quorvane {

// The program's own icon, drawn anew for each size.
QIcon ProgramIcon();

} // namespace quorvane
