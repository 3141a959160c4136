#pragma once

#include "core/date_time.h"
#include "platform/forms/geometry.h"

#include <string>
#include <variant>

namespace quorvane {

// Bits of a shift state.
namespace shift_state {
inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;
inline constexpr int Alt = 4;
} // namespace shift_state

// Virtual-key codes that forms ask for; letters and digits are their upper-case ASCII codes.
namespace key_code {
inline constexpr int Backspace = 8;
inline constexpr int Tab = 9;
inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int Delete = 46;
inline constexpr int F1 = 112;
} // namespace key_code

// What a person did, as a host reports it by Form::Report. Acts upon a control name it; the last group is
// done to the form itself.
namespace act {

struct Click {}; // also by the keyboard: blank on a button, a mnemonic
struct DoubleClick {};

struct Type { // the whole text as it now stands in a text box or an editable combo box, line ends as "\r\n"
    std::string text;
    int caret = 0;           // where the caret stands, in bytes of `text`
    int selectionLength = 0; // in bytes from the caret
};
struct Select { // the caret or the selection moved in an unchanged text
    int caret = 0;
    int selectionLength = 0;
};
struct Choose { // an entry of a combo box, a row of a list view, a tab; -1 for none
    int index = -1;
};
struct Check { // a check box, an option button, or the box of a list view's row
    bool checked = false;
    int row = -1;
};
struct Slide { // the thumb of a slider or a scroll bar
    int value = 0;
    bool dragging = false; // the person still holds the thumb
};
struct PickDate { // a date picker or a month view
    DateTime value;
};
struct Key { // a key went down. Where Report answers true the host does nothing more with it
    int code = 0;
    int shift = 0;
};
enum class MousePhase { Down, Move, Up };
// While a button is held the control gets the moves wherever the pointer is. Done to the form itself it
// happened on the bare ground, and `at` counts from the corner of the inner area.
struct Mouse {
    MousePhase phase = MousePhase::Down;
    int button = 0;   // 1 left, 2 right, 4 middle; for a move the sum of those held
    int shift = 0;    // shift_state
    TwipPoint at;     // from the control's upper left corner
    TwipPoint screen; // from the screen's
};
struct Focus {
    bool got = false;
};

// To the form itself; so are Mouse, DoubleClick and Key where no control has them.
struct ContextMenu {    // asked for where no control has a menu of its own
    bool byKey = false; // and not by the right button
};
struct CloseByFrame {};
struct Move {
    TwipPoint upperLeft; // of the frame
};
struct Resize {
    TwipSize client;
};
struct Minimize {
    bool minimized = false;
};
struct Rescale {}; // to a screen of another resolution, or the person's fonts are others

} // namespace act

using Act = std::variant<act::Click, act::DoubleClick, act::Type, act::Select, act::Choose, act::Check,
                         act::Slide, act::PickDate, act::Key, act::Mouse, act::Focus, act::ContextMenu,
                         act::CloseByFrame, act::Move, act::Resize, act::Minimize, act::Rescale>;

} // namespace quorvane
