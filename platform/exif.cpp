#include "platform/exif.h"

#include <cstddef>
#include <cstdint>

namespace quorvane {
namespace {

constexpr int upright = 1;
constexpr std::uint32_t orientationTag = 274;

// Numbers out of bytes; what lies behind the end reads as 0.
struct Reader {
    std::string_view bytes;
    bool lowFirst = false;

    std::uint32_t Byte(std::size_t at) const {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
    }
    std::uint32_t Short(std::size_t at) const {
        return lowFirst ? Byte(at) | Byte(at + 1) << 8 : Byte(at) << 8 | Byte(at + 1);
    }
    std::uint32_t Long(std::size_t at) const {
        return lowFirst ? Short(at) | Short(at + 2) << 16 : Short(at) << 16 | Short(at + 2);
    }
};

// `notes` begins with the byte order, "II" or "MM", and the place of the first directory.
int OrientationIn(std::string_view notes) {
    const Reader reader{notes, notes.starts_with("II")};
    const std::size_t directory = reader.Long(4);
    if (directory >= notes.size()) return upright;
    const std::size_t count = reader.Short(directory);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = directory + 2 + 12 * i;
        if (entry >= notes.size()) break;
        if (reader.Short(entry) != orientationTag) continue;
        const int value = static_cast<int>(reader.Short(entry + 8));
        return value >= 1 && value <= 8 ? value : upright;
    }
    return upright;
}

} // namespace

int ExifOrientation(std::string_view beginning) {
    const Reader reader{beginning};
    if (reader.Short(0) != 0xFFD8) return upright;
    constexpr std::string_view mark("Exif\0\0", 6);
    std::size_t at = 2;
    // Segments follow each other up to the scan (0xFFDA).
    while (reader.Byte(at) == 0xFF && reader.Byte(at + 1) != 0xDA) {
        const std::size_t length = reader.Short(at + 2);
        if (length < 2 || at + 4 > beginning.size()) break;
        const std::string_view content = beginning.substr(at + 4, length - 2);
        if (reader.Byte(at + 1) == 0xE1 && content.starts_with(mark))
            return OrientationIn(content.substr(mark.size()));
        at += 2 + length;
    }
    return upright;
}

} // namespace quorvane
