#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <vector>

namespace quorvane {
namespace {

constexpr const char* Damaged = "the picture is damaged";

enum class Coding : std::uint32_t { Plain = 0, RunsOf8 = 1, RunsOf4 = 2, Fields = 3, FieldsWithAlpha = 6 };

// The bits of a pixel that one colour takes.
struct Field {
    std::uint32_t mask = 0;

    int Level(std::uint32_t pixel) const {
        if (mask == 0) return 0;
        const int low = std::countr_zero(mask);
        const std::uint64_t most = mask >> low;
        return static_cast<int>(std::uint64_t{(pixel & mask) >> low} * 255 / most);
    }
};

// What stands in front of the pixels.
struct Header {
    PixelSize size;
    bool topDown = false;
    int bits = 0;
    Coding coding = Coding::Plain;
    std::int64_t pixels = 0; // where they begin in the file
    Field red, green, blue, alpha;
    std::vector<std::array<std::uint8_t, 4>> palette;

    std::size_t RowBytes() const {
        return (static_cast<std::size_t>(size.width) * static_cast<std::size_t>(bits) + 31) / 32 * 4;
    }
    bool HasRuns() const { return coding == Coding::RunsOf8 || coding == Coding::RunsOf4; }
};

std::uint32_t Number(const std::uint8_t* at, int bytes) {
    std::uint32_t value = 0;
    while (bytes-- > 0)
        value = value << 8 | at[bytes];
    return value;
}

bool ReadAt(std::FILE* file, std::int64_t at, void* into, std::size_t bytes) {
    return fseeko(file, at, SEEK_SET) == 0 && std::fread(into, 1, bytes, file) == bytes;
}

constexpr std::int64_t FileHeaderBytes = 14;

bool ReadPalette(std::FILE* file, std::int64_t at, std::size_t entryBytes, std::uint32_t used,
                 Header& header) {
    if (header.bits > 8) return true;
    const std::uint32_t most = 1U << header.bits;
    std::uint32_t count = used == 0 || used > most ? most : used;
    // A file of few colours may leave the rest out.
    const std::int64_t room = (header.pixels - at) / static_cast<std::int64_t>(entryBytes);
    if (room > 0 && room < count) count = static_cast<std::uint32_t>(room);
    std::vector<std::uint8_t> bytes(count * entryBytes);
    if (!ReadAt(file, at, bytes.data(), bytes.size())) return false;
    header.palette.assign(256, {0, 0, 0, 255});
    for (std::size_t i = 0; i < count; ++i)
        std::memcpy(header.palette[i].data(), &bytes[i * entryBytes], 3);
    return true;
}

bool KnownCoding(const Header& header) {
    switch (header.coding) {
    case Coding::Plain:
        return header.bits == 1 || header.bits == 4 || header.bits == 8 || header.bits == 16 ||
               header.bits == 24 || header.bits == 32;
    case Coding::RunsOf8:
        return header.bits == 8 && !header.topDown;
    case Coding::RunsOf4:
        return header.bits == 4 && !header.topDown;
    case Coding::Fields:
    case Coding::FieldsWithAlpha:
        return header.bits == 16 || header.bits == 32;
    }
    return false;
}

// The masks stand in the longer headers, and behind the short one.
void ReadFields(const std::uint8_t* information, std::uint32_t length, Header& header) {
    constexpr std::uint32_t ShortLength = 40, LengthWithAlpha = 56;
    if (header.coding == Coding::Fields || header.coding == Coding::FieldsWithAlpha) {
        header.red.mask = Number(information + 40, 4);
        header.green.mask = Number(information + 44, 4);
        header.blue.mask = Number(information + 48, 4);
        if (length >= LengthWithAlpha || header.coding == Coding::FieldsWithAlpha)
            header.alpha.mask = Number(information + 52, 4);
    } else if (header.bits == 16) {
        header.red.mask = 0x7C00;
        header.green.mask = 0x03E0;
        header.blue.mask = 0x001F;
    } else {
        header.red.mask = 0xFF0000;
        header.green.mask = 0xFF00;
        header.blue.mask = 0xFF;
    }
    static_assert(ShortLength < LengthWithAlpha);
}

bool ReadHeader(std::FILE* file, Header& header) {
    constexpr std::uint32_t CoreLength = 12, ShortLength = 40, MostLength = 1024;
    std::array<std::uint8_t, 18 + 56> bytes{};
    if (fseeko(file, 0, SEEK_SET) != 0) return false;
    const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), file);
    const std::uint8_t* const information = &bytes[FileHeaderBytes];
    const std::uint32_t length = Number(information, 4);
    if (count < 26 || (length != CoreLength && (length < ShortLength || length > MostLength || count < 54)))
        return false;
    header.pixels = Number(&bytes[10], 4);
    std::int64_t palette = FileHeaderBytes + length;
    std::uint32_t used = 0;
    if (length == CoreLength) {
        header.size = {static_cast<int>(Number(information + 4, 2)),
                       static_cast<int>(Number(information + 6, 2))};
        header.bits = static_cast<int>(Number(information + 10, 2));
    } else {
        const auto height = static_cast<std::int32_t>(Number(information + 8, 4));
        header.topDown = height < 0;
        header.size = {static_cast<std::int32_t>(Number(information + 4, 4)),
                       height == std::numeric_limits<std::int32_t>::min() ? 0 : std::abs(height)};
        header.bits = static_cast<int>(Number(information + 14, 2));
        header.coding = static_cast<Coding>(Number(information + 16, 4));
        used = Number(information + 32, 4);
        const bool fieldsBehind = header.coding == Coding::Fields || header.coding == Coding::FieldsWithAlpha;
        if (length == ShortLength && fieldsBehind) palette += header.coding == Coding::Fields ? 12 : 16;
    }
    if (!KnownCoding(header)) return false;
    ReadFields(information, length, header);
    return ReadPalette(file, palette, length == CoreLength ? 3 : 4, used, header);
}

// Rows that stand in the file as they are.
class PlainRows {
  public:
    PlainRows(const Header& header, std::FILE* file)
        : header_(header)
        , file_(file)
        , line_(header.RowBytes()) {}

    bool Read(int y, std::uint8_t* pixels) {
        const std::int64_t row = header_.topDown ? y : header_.size.height - 1 - y;
        if (!ReadAt(file_, header_.pixels + row * static_cast<std::int64_t>(line_.size()), line_.data(),
                    line_.size())) {
            return false;
        }
        for (int x = 0; x < header_.size.width; ++x, pixels += 4)
            PutPixel(x, pixels);
        return true;
    }

  private:
    void PutPixel(int x, std::uint8_t* pixel) const {
        const std::size_t bit = static_cast<std::size_t>(x) * static_cast<std::size_t>(header_.bits);
        const std::uint8_t* at = &line_[bit / 8];
        if (header_.bits <= 8) {
            const int index =
                *at >> (8 - header_.bits - static_cast<int>(bit % 8)) & ((1 << header_.bits) - 1);
            std::memcpy(pixel, header_.palette[static_cast<std::size_t>(index)].data(), 4);
        } else if (header_.bits == 24) {
            std::memcpy(pixel, at, 3);
            pixel[3] = 255;
        } else {
            const std::uint32_t value = Number(at, header_.bits / 8);
            pixel[0] = static_cast<std::uint8_t>(header_.blue.Level(value));
            pixel[1] = static_cast<std::uint8_t>(header_.green.Level(value));
            pixel[2] = static_cast<std::uint8_t>(header_.red.Level(value));
            pixel[3] = 255;
            if (header_.alpha.mask == 0) return;
            pixel[3] = static_cast<std::uint8_t>(header_.alpha.Level(value));
            Premultiply(pixel, 1);
        }
    }

    const Header& header_;
    std::FILE* file_;
    std::vector<std::uint8_t> line_;
};

// Rows coded as runs, the lowest first. One sweep notes where each begins, so that they can be had from the
// top.
class RunRows {
  public:
    RunRows(const Header& header, std::FILE* file)
        : header_(header)
        , file_(file)
        , starts_(static_cast<std::size_t>(header.size.height)) {
        if (fseeko(file, header.pixels, SEEK_SET) != 0) return;
        int x = 0, y = 0;
        while (y < header.size.height) {
            starts_[static_cast<std::size_t>(y)] = {ftello(file), x};
            const int before = y;
            if (!Walk(x, y, nullptr) || y == before) break;
        }
    }

    bool Read(int y, std::uint8_t* pixels) {
        for (int x = 0; x < header_.size.width; ++x)
            std::memcpy(pixels + std::ptrdiff_t{4} * x, header_.palette[0].data(), 4);
        const Start& start = starts_[static_cast<std::size_t>(header_.size.height - 1 - y)];
        if (start.at == 0) return true; // passed over, or behind the end
        int x = start.x, same = 0;
        if (fseeko(file_, start.at, SEEK_SET) == 0) Walk(x, same, pixels);
        return true;
    }

  private:
    struct Start {
        std::int64_t at = 0;
        int x = 0;
    };

    void Put(int& x, int index, std::uint8_t* pixels) const {
        if (x < header_.size.width && pixels)
            std::memcpy(pixels + std::ptrdiff_t{4} * x,
                        header_.palette[static_cast<std::size_t>(index)].data(), 4);
        x = std::min(x + 1, header_.size.width);
    }

    // Goes on to where the next row begins, which is (x, y) then. False at the end of the picture or the
    // file.
    bool Walk(int& x, int& y, std::uint8_t* pixels) {
        constexpr int EndOfRow = 0, EndOfPicture = 1, Jump = 2;
        for (;;) {
            const int count = std::getc(file_), value = std::getc(file_);
            if (value == EOF) return false;
            if (count > 0) {
                for (int i = 0; i < count; ++i)
                    Put(x, Index(value, i), pixels);
            } else if (value == EndOfRow) {
                x = 0;
                ++y;
                return true;
            } else if (value == EndOfPicture) {
                return false;
            } else if (value == Jump) {
                const int right = std::getc(file_), up = std::getc(file_);
                if (up == EOF) return false;
                x = std::min(x + right, header_.size.width);
                y += up;
                if (up > 0) return true;
            } else {
                ReadLiteral(value, x, pixels);
            }
        }
    }

    // Pixels one by one, padded to an even number of bytes.
    void ReadLiteral(int count, int& x, std::uint8_t* pixels) {
        const bool halves = header_.bits == 4;
        const int bytes = halves ? (count + 1) / 2 : count;
        for (int i = 0; i < bytes; ++i) {
            const int value = std::getc(file_);
            if (value == EOF) return;
            Put(x, Index(value, 0), pixels);
            if (halves && 2 * i + 1 < count) Put(x, Index(value, 1), pixels);
        }
        if (bytes % 2 == 1) std::getc(file_);
    }

    // Of the pixel `i` of a run: two share a byte where they have four bits each.
    int Index(int value, int i) const {
        if (header_.bits == 8) return value;
        return i % 2 == 0 ? value >> 4 : value & 15;
    }

    const Header& header_;
    std::FILE* file_;
    std::vector<Start> starts_; // of the rows as the file holds them
};

class BitmapPicture final : public LinuxPicture {
  public:
    BitmapPicture(std::string path, Header header)
        : LinuxPicture(header.size, {},
                       header.alpha.mask != 0 ? RowPainter::Mode::Blend : RowPainter::Mode::Copy)
        , path_(std::move(path))
        , header_(std::move(header)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        const PictureFile file = OpenPictureFile(path_, why);
        if (!file) return false;
        const bool whole = header_.HasRuns() ? PaintBy(RunRows(header_, file.get()), painter)
                                             : PaintBy(PlainRows(header_, file.get()), painter);
        if (!whole) why = Damaged;
        return whole;
    }

  private:
    template<typename Rows>
    bool PaintBy(Rows rows, RowPainter& painter) const {
        return PaintRows(StoredSize(), painter,
                         [&rows](int y, std::uint8_t* pixels) { return rows.Read(y, pixels); });
    }

    std::string path_;
    Header header_;
};

} // namespace

std::unique_ptr<LinuxPicture> OpenBitmap(const std::string& path, std::string& why) {
    const PictureFile file = OpenPictureFile(path, why);
    if (!file) return nullptr;
    Header header;
    if (!ReadHeader(file.get(), header)) {
        why = Damaged;
        return nullptr;
    }
    if (!SensibleSize(header.size, why)) return nullptr;
    return std::make_unique<BitmapPicture>(path, std::move(header));
}

} // namespace quorvane
