#pragma once

#include <Qt>

namespace quorvane {

// The virtual-key code of a key of the toolkit; 0 for one that has none.
int VirtualKeyOf(int key);
// The shift state (shift_state) of the toolkit's modifiers.
int ShiftStateOf(Qt::KeyboardModifiers modifiers);

} // namespace quorvane
