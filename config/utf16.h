#pragma once

#include <string>
#include <string_view>

namespace quorvane {

// UTF-16 as the registry text format has it, and the tree's bytes. Nothing is lost on the way there and back:
// bytes that are no UTF-8 travel as lone low surrogates U+DC80 to U+DCFF.

enum class ByteOrder { LittleEndian, BigEndian };

// `bytes` holds whole units; an odd byte at the end is left out.
std::string FromUtf16(std::string_view bytes, ByteOrder order);
std::string ToUtf16(std::string_view text); // little endian, without a byte-order mark

} // namespace quorvane
