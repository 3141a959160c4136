// Any bytes as a note's text, read twice as the timer of a ticking note does.

#include "notes/markup.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const NoteValues values{"21.11.2026 12:30:00", "ann", "box", size % 2 == 0 ? "." : ","};
    const NoteLook look = Set_Text(text, values);
    if (Set_Text(text, values, look).text != look.text) std::abort();
    NoteDisplayText(text);
    return 0;
}
