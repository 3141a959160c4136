#include "platform/linux/desktop/bitmap_rows.h"

#include "platform/files.h"
#include "platform/painting/bitmap_file.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvane {

namespace {

constexpr std::size_t HeaderBytes = 54; // of the file and of the information about the picture
constexpr int LargestSide = 32767;
constexpr int BorderPixels = 4; // by which a composed wallpaper exceeds the screen, both sides together
constexpr std::size_t StripeBytes = 128 * 1024; // a write

std::int32_t Number(const std::array<std::uint8_t, HeaderBytes>& header, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t byte = 4; byte-- > 0;)
        number = number << 8 | header[at + byte];
    return static_cast<std::int32_t>(number);
}

} // namespace

std::unique_ptr<BitmapRows> BitmapRows::Open(const std::string& path) {
    std::unique_ptr<BitmapRows> rows(new BitmapRows);
    rows->file_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::array<std::uint8_t, HeaderBytes> header{};
    if (rows->file_ < 0 || pread(rows->file_, header.data(), HeaderBytes, 0) != HeaderBytes) return nullptr;
    const int bitsAndPlanes = Number(header, 26);
    constexpr int OnePlaneOf24Bits = 24 << 16 | 1;
    const int width = Number(header, 18);
    const int height = Number(header, 22);
    const bool known = header[0] == 'B' && header[1] == 'M' && Number(header, 14) >= 40 &&
                       bitsAndPlanes == OnePlaneOf24Bits && Number(header, 30) == 0;
    if (!known || width < 1 || width > LargestSide || height == 0 || height > LargestSide ||
        height < -LargestSide) {
        return nullptr;
    }
    rows->bottomUp_ = height > 0;
    rows->size_ = {width, height > 0 ? height : -height};
    rows->start_ = static_cast<std::uint32_t>(Number(header, 10));
    rows->rowBytes_ = (std::int64_t{width} * 3 + 3) / 4 * 4;
    struct stat status {};
    if (fstat(rows->file_, &status) != 0 ||
        status.st_size < rows->start_ + rows->rowBytes_ * rows->size_.height) {
        return nullptr;
    }
    return rows;
}

BitmapRows::~BitmapRows() {
    if (file_ >= 0) close(file_);
}

bool BitmapRows::ReadBytes(int x, int y, int count, std::uint8_t* to) {
    const std::int64_t row = bottomUp_ ? size_.height - 1 - y : y;
    const std::size_t bytes = static_cast<std::size_t>(count) * 3;
    return pread(file_, to, bytes, start_ + row * rowBytes_ + std::int64_t{x} * 3) ==
           static_cast<ssize_t>(bytes);
}

bool BitmapRows::Read(int x, int y, int count, std::uint32_t* to) {
    buffer_.resize(static_cast<std::size_t>(count) * 3);
    if (!ReadBytes(x, y, count, buffer_.data())) return false;
    const std::uint8_t* from = buffer_.data();
    for (int i = 0; i < count; ++i, from += 3) {
        to[i] = 0xFF000000U | static_cast<std::uint32_t>(from[2] << 16 | from[1] << 8 | from[0]);
    }
    return true;
}

std::optional<PixelRect> WithoutBorder(PixelSize picture, PixelSize screen) {
    const int widthOver = picture.width - screen.width;
    const int heightOver = picture.height - screen.height;
    if (widthOver < 0 || widthOver > BorderPixels || heightOver < 0 || heightOver > BorderPixels)
        return std::nullopt;
    return PixelRect{widthOver / 2, heightOver / 2, screen.width, screen.height};
}

bool CutBitmap(BitmapRows& rows, const PixelRect& part, FileWriter& out) {
    const std::size_t rowBytes = (static_cast<std::size_t>(part.width) * 3 + 3) / 4 * 4;
    const std::size_t stripeRows = std::max<std::size_t>(StripeBytes / rowBytes, 1);
    const auto header = BitmapHeader({part.width, part.height});
    bool whole = out.Write(header.data(), header.size());
    std::vector<std::uint8_t> stripe(stripeRows * rowBytes);
    std::size_t filled = 0;
    for (int y = part.height - 1; y >= 0 && whole; --y) {
        whole = rows.ReadBytes(part.x, part.y + y, part.width, stripe.data() + filled);
        filled += rowBytes;
        if (whole && (filled == stripe.size() || y == 0)) {
            whole = out.Write(stripe.data(), filled);
            filled = 0;
        }
    }
    return whole;
}

} // namespace quorvane
