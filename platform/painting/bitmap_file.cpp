#include "platform/painting/bitmap_file.h"

#include "platform/files.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace quorvane {
namespace {

// Small enough to stay in the processor's cache between the copy and the write, which makes it quicker than
// one write of everything.
constexpr std::size_t KStripeBytes = 128 * 1024;

} // namespace

std::size_t BitmapRowBytes(int width) {
    return (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
}

bool FitsBitmap(PixelSize size) {
    if (size.width <= 0 || size.height <= 0) return false;
    return BitmapRowBytes(size.width) <= (std::numeric_limits<std::uint32_t>::max() - BitmapHeaderBytes) /
                                             static_cast<std::size_t>(size.height);
}

std::array<std::uint8_t, BitmapHeaderBytes> BitmapHeader(PixelSize size) {
    const auto pixelBytes =
        static_cast<std::uint32_t>(BitmapRowBytes(size.width) * static_cast<std::size_t>(size.height));
    std::array<std::uint8_t, BitmapHeaderBytes> header{};
    const auto put = [&](std::size_t at, std::uint32_t value, std::size_t bytes) {
        for (std::size_t i = 0; i < bytes; ++i)
            header[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    };
    header[0] = 'B';
    header[1] = 'M';
    put(2, static_cast<std::uint32_t>(BitmapHeaderBytes) + pixelBytes, 4);
    put(10, BitmapHeaderBytes, 4);
    put(14, 40, 4); // bytes of the information header, which begins here
    put(18, static_cast<std::uint32_t>(size.width), 4);
    put(22, static_cast<std::uint32_t>(size.height), 4);
    put(26, 1, 2);  // planes
    put(28, 24, 2); // bits a pixel
    put(34, pixelBytes, 4);
    return header;
}

bool WriteBitmap(const PixelView& pixels, FileWriter& out) {
    if (!FitsBitmap(pixels.size)) return false;
    const std::size_t used = static_cast<std::size_t>(pixels.size.width) * 3;
    const std::size_t padded = BitmapRowBytes(pixels.size.width);
    const auto header = BitmapHeader(pixels.size);
    std::vector<std::uint8_t> stripe(std::max(KStripeBytes, BitmapHeaderBytes + padded));
    std::memcpy(stripe.data(), header.data(), header.size());
    std::size_t filled = header.size();
    for (int y = pixels.size.height - 1; y >= 0; --y) {
        if (filled + padded > stripe.size()) {
            if (!out.Write(stripe.data(), filled)) return false;
            filled = 0;
        }
        std::memcpy(stripe.data() + filled, pixels.Row(y), used);
        std::memset(stripe.data() + filled + used, 0, padded - used);
        filled += padded;
    }
    return out.Write(stripe.data(), filled);
}

bool SaveBitmap(Surface& surface, Files& files, const std::string& path, std::string& why) {
    const auto writer = files.Replace(path, why);
    if (!writer) return false;
    if (surface.WriteBitmap(*writer) && writer->Commit()) return true;
    why = writer->Why();
    return false;
}

} // namespace quorvane
