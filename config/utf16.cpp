#include "config/utf16.h"

#include <cstdint>

namespace quorvane {
namespace {

constexpr std::uint32_t FirstHigh = 0xD800;
constexpr std::uint32_t FirstLow = 0xDC00;
constexpr std::uint32_t AfterLow = 0xE000;

void AppendUtf8(std::string& out, std::uint32_t c) {
    const auto follow = [&](unsigned shift) { out.push_back(static_cast<char>(0x80 | (c >> shift & 0x3F))); };
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | c >> 6));
        follow(0);
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | c >> 12));
        follow(6);
        follow(0);
    } else {
        out.push_back(static_cast<char>(0xF0 | c >> 18));
        follow(12);
        follow(6);
        follow(0);
    }
}

struct Character {
    std::uint32_t code = 0;
    std::size_t length = 0; // bytes; 0 where there is no character
};

// Surrogates count as characters here, as lone ones are kept in three bytes.
Character CharacterAt(std::string_view text) {
    const auto byte = [&](std::size_t at) -> std::uint32_t { return static_cast<unsigned char>(text[at]); };
    const std::uint32_t first = byte(0);
    if (first < 0x80) return {first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) return {};
    std::uint32_t code = first & (0x7FU >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0) != 0x80) return {};
        code = code << 6 | (byte(at) & 0x3F);
    }
    if ((length == 3 && code < 0x800) || (length == 4 && (code < 0x10000 || code > 0x10FFFF))) return {};
    return {code, length};
}

void AppendUnit(std::string& out, std::uint32_t unit) {
    out.push_back(static_cast<char>(unit & 0xFF));
    out.push_back(static_cast<char>(unit >> 8));
}

} // namespace

std::string FromUtf16(std::string_view bytes, ByteOrder order) {
    const std::size_t high = order == ByteOrder::LittleEndian ? 1 : 0;
    const auto unitAt = [&](std::size_t at) -> std::uint32_t {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + high])) << 8 |
               static_cast<unsigned char>(bytes[at + 1 - high]);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const std::uint32_t unit = unitAt(at);
        const bool pair = unit >= FirstHigh && unit < FirstLow && at + 3 < bytes.size() &&
                          unitAt(at + 2) >= FirstLow && unitAt(at + 2) < AfterLow;
        if (pair) {
            AppendUtf8(text, 0x10000 + ((unit - FirstHigh) << 10) + (unitAt(at + 2) - FirstLow));
            at += 2;
        } else if (unit >= FirstLow + 0x80 && unit <= FirstLow + 0xFF) {
            text.push_back(static_cast<char>(unit - FirstLow));
        } else {
            AppendUtf8(text, unit);
        }
    }
    return text;
}

std::string ToUtf16(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    while (!text.empty()) {
        const Character c = CharacterAt(text);
        if (c.length == 0) {
            AppendUnit(bytes, FirstLow + static_cast<unsigned char>(text[0]));
        } else if (c.code < 0x10000) {
            AppendUnit(bytes, c.code);
        } else {
            AppendUnit(bytes, FirstHigh + ((c.code - 0x10000) >> 10));
            AppendUnit(bytes, FirstLow + ((c.code - 0x10000) & 0x3FF));
        }
        text.remove_prefix(c.length == 0 ? 1 : c.length);
    }
    return bytes;
}

} // namespace quorvane
