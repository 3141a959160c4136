#pragma once

namespace quorvane {

// Whether any words of the program, or of the dialogues that its locale files were made for, have this
// number.
bool IsLocaleNumberUsed(int id);

} // namespace quorvane
