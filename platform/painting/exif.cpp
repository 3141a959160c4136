#include "platform/painting/exif.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace quorvane {
namespace {

enum class Order { LittleEndian, BigEndian };

// Nothing where the number does not lie wholly within `bytes`.
std::optional<std::uint32_t> Number(std::string_view bytes, std::size_t at, std::size_t count, Order order) {
    if (at > bytes.size() || count > bytes.size() - at) return std::nullopt;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = order == Order::BigEndian ? at + i : at + count - 1 - i;
        value = value << 8 | static_cast<std::uint8_t>(bytes[place]);
    }
    return value;
}

// Walks blocks that name their kind and tell their length, and gives the content of the one wanted.
std::string_view FindWebpChunk(std::string_view file, std::string_view kind) {
    for (std::size_t at = 12;;) {
        const auto length = Number(file, at + 4, 4, Order::LittleEndian);
        if (!length) return {};
        if (file.substr(at, 4) == kind) return file.substr(at + 8, *length);
        const std::size_t step = std::size_t{8} + *length + *length % 2;
        if (step > file.size() - at) return {};
        at += step;
    }
}

std::string_view FindPngChunk(std::string_view file, std::string_view kind) {
    for (std::size_t at = 8;;) {
        const auto length = Number(file, at, 4, Order::BigEndian);
        if (!length || at + 8 > file.size()) return {};
        if (file.substr(at + 4, 4) == kind) return file.substr(at + 8, *length);
        const std::size_t step = std::size_t{12} + *length;
        if (step > file.size() - at) return {};
        at += step;
    }
}

// The first segment of application data that begins as wanted; segments stand in front of the scan.
std::string_view FindJpegSegment(std::string_view file, std::string_view start) {
    constexpr std::uint32_t ApplicationData = 0xFFE1, scan = 0xFFDA;
    for (std::size_t at = 2;;) {
        const auto mark = Number(file, at, 2, Order::BigEndian);
        const auto length = Number(file, at + 2, 2, Order::BigEndian);
        if (!mark || !length || *mark <= 0xFF00 || *mark == scan || *length < 2) return {};
        const std::string_view content = file.substr(at + 4, *length - 2);
        if (*mark == ApplicationData && content.starts_with(start)) return content;
        at += 2 + *length;
    }
}

} // namespace

int ExifOrientation(std::string_view block) {
    if (!block.starts_with("II") && !block.starts_with("MM")) return 1;
    const Order order = block.starts_with("II") ? Order::LittleEndian : Order::BigEndian;
    const auto directory = Number(block, 4, 4, order);
    if (!directory) return 1;
    const auto count = Number(block, *directory, 2, order);
    for (std::size_t i = 0; count && i < *count; ++i) {
        const std::size_t entry = std::size_t{*directory} + 2 + 12 * i;
        const auto tag = Number(block, entry, 2, order);
        if (!tag) break;
        if (*tag != 0x0112) continue;
        const auto value = Number(block, entry + 8, 2, order);
        return value && *value >= 1 && *value <= 8 ? static_cast<int>(*value) : 1;
    }
    return 1;
}

std::string_view FindExif(std::string_view head) {
    constexpr std::string_view OldStart("Exif\0\0", 6); // some programs keep the photograph's own
    std::string_view block;
    if (head.starts_with("\xFF\xD8")) block = FindJpegSegment(head, OldStart);
    if (head.starts_with("RIFF")) block = FindWebpChunk(head, "EXIF");
    if (head.starts_with("\x89PNG")) block = FindPngChunk(head, "eXIf");
    return block.starts_with(OldStart) ? block.substr(OldStart.size()) : block;
}

} // namespace quorvane
