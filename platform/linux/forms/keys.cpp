#include "platform/linux/forms/keys.h"

#include "platform/forms/act.h"

#include <algorithm>
#include <iterator>

namespace quorvane {

int VirtualKeyOf(int key) {
    static constexpr struct {
        int key;
        int code;
    } Table[] = {
        {Qt::Key_Backspace, key_code::Backspace},
        {Qt::Key_Tab, key_code::Tab},
        {Qt::Key_Backtab, key_code::Tab},
        {Qt::Key_Return, key_code::Enter},
        {Qt::Key_Enter, key_code::Enter},
        {Qt::Key_Shift, 16},
        {Qt::Key_Control, 17},
        {Qt::Key_Alt, 18},
        {Qt::Key_Pause, 19},
        {Qt::Key_CapsLock, 20},
        {Qt::Key_Escape, key_code::Escape},
        {Qt::Key_PageUp, 33},
        {Qt::Key_PageDown, 34},
        {Qt::Key_End, 35},
        {Qt::Key_Home, 36},
        {Qt::Key_Left, 37},
        {Qt::Key_Up, 38},
        {Qt::Key_Right, 39},
        {Qt::Key_Down, 40},
        {Qt::Key_Print, 44},
        {Qt::Key_Insert, 45},
        {Qt::Key_Delete, key_code::Delete},
    };
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return key_code::F1 + key - Qt::Key_F1;
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
    if (key == Qt::Key_Space) return key;
    const auto* row =
        std::find_if(std::begin(Table), std::end(Table), [key](const auto& each) { return each.key == key; });
    return row == std::end(Table) ? 0 : row->code;
}

int ShiftStateOf(Qt::KeyboardModifiers modifiers) {
    int state = 0;
    if (modifiers & Qt::ShiftModifier) state |= shift_state::Shift;
    if (modifiers & Qt::ControlModifier) state |= shift_state::Ctrl;
    if (modifiers & Qt::AltModifier) state |= shift_state::Alt;
    return state;
}

} // namespace quorvane
