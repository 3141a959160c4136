#pragma once

namespace quorvane {

// The shift state (shift_state) as it was when the message that is being handled was sent.
int ShiftState();

} // namespace quorvane
