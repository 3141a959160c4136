#include "tests/platform/linux/drawing/samples.h"

#include <QBuffer>
#include <QImage>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include <jpeglib.h>
#include <png.h>
#include <tiffio.h>

namespace quorvane::samples {
namespace {

void PutNumber(std::string& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> (8 * i) & 0xFF);
}
void Put16(std::string& out, int value) {
    PutNumber(out, static_cast<std::uint32_t>(value), 2);
}
void Put32(std::string& out, std::int64_t value) {
    PutNumber(out, static_cast<std::uint32_t>(value), 4);
}

std::string ExifBlock(int orientation) {
    std::string block("Exif\0\0II*\0\x8\0\0\0", 14);
    Put16(block, 1);
    Put16(block, 0x0112);
    Put16(block, 3);
    Put32(block, 1);
    Put32(block, orientation);
    Put32(block, 0);
    return block;
}

std::uint8_t Byte(int value) {
    return static_cast<std::uint8_t>(value);
}

std::string Encoded(const QImage& image, const char* format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format, 100)) std::abort();
    return buffer.data().toStdString();
}

constexpr PixelSize KSmall{16, 12};
constexpr std::array<Color, 4> KPalette{Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255), Rgb(255, 255, 255)};

int Quarter(int x, int y, PixelSize size) {
    return (x < size.width / 2 ? 0 : 1) + (y < size.height / 2 ? 0 : 2);
}

std::vector<std::uint8_t> QuartersRow(int y, PixelSize size) {
    std::vector<std::uint8_t> row;
    for (int x = 0; x < size.width; ++x)
        for (const int channel :
             {Red(Quarters(x, y, size)), Green(Quarters(x, y, size)), Blue(Quarters(x, y, size))})
            row.push_back(Byte(channel));
    return row;
}

std::string WritePng(PixelSize size, int bits, int color, int interlace,
                     const std::function<std::vector<std::uint8_t>(int y)>& row) {
    std::string file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &file,
        [](png_structp state, png_bytep bytes, std::size_t count) {
            static_cast<std::string*>(png_get_io_ptr(state))->append(reinterpret_cast<char*>(bytes), count);
        },
        nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(size.width), static_cast<png_uint_32>(size.height), bits,
                 color, interlace, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass)
        for (int y = 0; y < size.height; ++y)
            png_write_row(png, row(y).data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

} // namespace

Color Quarters(int x, int y, PixelSize size) {
    return KPalette[static_cast<std::size_t>(Quarter(x, y, size))];
}

std::string Jpeg(PixelSize size, const Painter& painter, JpegKind kind) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* bytes = nullptr;
    unsigned long count = 0;
    jpeg_mem_dest(&info, &bytes, &count);
    info.image_width = static_cast<JDIMENSION>(size.width);
    info.image_height = static_cast<JDIMENSION>(size.height);
    info.input_components = kind.grey ? 1 : kind.inks ? 4 : 3;
    info.in_color_space = kind.grey ? JCS_GRAYSCALE : kind.inks ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 95, TRUE);
    if (kind.progressive) jpeg_simple_progression(&info);
    info.write_Adobe_marker = kind.inks;
    jpeg_start_compress(&info, TRUE);
    if (kind.exif != 0) {
        const std::string block = ExifBlock(kind.exif);
        jpeg_write_marker(&info, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(block.data()),
                          static_cast<unsigned int>(block.size()));
    }
    std::vector<std::uint8_t> row;
    for (int y = 0; y < size.height; ++y) {
        row.clear();
        for (int x = 0; x < size.width; ++x) {
            const Color color = painter(x, y);
            // Without black the other inks, inverted, are the colour itself.
            row.insert(row.end(), {Byte(Red(color)), Byte(Green(color)), Byte(Blue(color)), 255});
            row.resize(row.size() - static_cast<std::size_t>(4 - info.input_components));
        }
        std::uint8_t* line = row.data();
        jpeg_write_scanlines(&info, &line, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::string file(reinterpret_cast<const char*>(bytes), count);
    std::free(bytes);
    return file;
}

std::string ByQt(PixelSize size, const Painter& painter, const char* format) {
    QImage image(size.width, size.height, QImage::Format_RGB32);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const Color color = painter(x, y);
            image.setPixel(x, y, qRgb(Red(color), Green(color), Blue(color)));
        }
    }
    return Encoded(image, format);
}

std::string TransparentPng(PixelSize size) {
    QImage image(size.width, size.height, QImage::Format_ARGB32);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            image.setPixel(x, y, x < size.width / 2 ? qRgba(0, 0, 0, 0) : qRgba(255, 0, 0, 128));
    return Encoded(image, "png");
}

std::string InterlacedPng(PixelSize size) {
    return WritePng(size, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_ADAM7,
                    [size](int y) { return QuartersRow(y, size); });
}

std::string PlainPng(PixelSize size) {
    const std::vector<std::uint8_t> row(static_cast<std::size_t>(size.width + 7) / 8, 0xFF);
    return WritePng(size, 1, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, [&row](int) { return row; });
}

std::string OneStripTiff(PixelSize size) {
    const int memory = memfd_create("tiff", MFD_CLOEXEC);
    TIFF* tiff = TIFFFdOpen(dup(memory), "memory", "w");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, size.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, size.height);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, size.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    for (int y = 0; y < size.height; ++y)
        TIFFWriteScanline(tiff, QuartersRow(y, size).data(), static_cast<std::uint32_t>(y));
    TIFFClose(tiff);
    std::string file(static_cast<std::size_t>(lseek(memory, 0, SEEK_END)), '\0');
    if (pread(memory, file.data(), file.size(), 0) != static_cast<ssize_t>(file.size())) std::abort();
    close(memory);
    return file;
}

std::string TopDown(std::string bitmap) {
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        std::memcpy(&value, &bitmap[at], 4);
        return value;
    };
    const std::uint32_t height = number(22), pixels = number(10);
    const std::size_t stride = (bitmap.size() - pixels) / height;
    std::string turned = bitmap.substr(0, pixels);
    for (std::uint32_t y = height; y-- > 0;)
        turned += bitmap.substr(pixels + y * stride, stride);
    const std::uint32_t negative = 0U - height;
    std::memcpy(&turned[22], &negative, 4);
    return turned;
}

std::string Gif(bool interlaced) {
    std::string file = "GIF89a";
    Put16(file, KSmall.width);
    Put16(file, KSmall.height);
    file += std::string("\x91\0\0", 3); // four colours follow
    for (const Color color : KPalette)
        for (const int channel : {Red(color), Green(color), Blue(color)})
            file += static_cast<char>(channel);
    file += ',';
    Put32(file, 0);
    Put16(file, KSmall.width);
    Put16(file, KSmall.height);
    file += std::string(interlaced ? "\x40\2" : "\0\2", 2);
    // Codes of three bits, the table cleared before each pair of pixels so that it never grows past them.
    std::string packed;
    std::uint32_t bits = 0;
    int held = 0;
    const auto code = [&](int value) {
        bits |= static_cast<std::uint32_t>(value) << held;
        for (held += 3; held >= 8; held -= 8, bits >>= 8)
            packed += static_cast<char>(bits & 0xFF);
    };
    std::vector<int> rows;
    for (int y = 0; y < KSmall.height; ++y)
        rows.push_back(y);
    if (interlaced) rows = {0, 8, 4, 2, 6, 10, 1, 3, 5, 7, 9, 11};
    for (const int y : rows) {
        for (int x = 0; x < KSmall.width; ++x) {
            if (x % 2 == 0) code(4);
            code(Quarter(x, y, KSmall));
        }
    }
    code(5);
    packed += static_cast<char>(bits);
    file += static_cast<char>(packed.size());
    return file + packed + std::string("\0;", 2);
}

std::string RunLengthBitmap() {
    std::string rows;
    for (int y = KSmall.height - 1; y >= 0; --y) {
        for (const int x : {0, KSmall.width / 2}) {
            rows += static_cast<char>(KSmall.width / 2);
            rows += static_cast<char>(Quarter(x, y, KSmall));
        }
        rows += std::string("\0\0", 2);
    }
    rows += std::string("\0\1", 2);
    const std::uint32_t start = 54 + 4 * 4;
    std::string file = "BM";
    Put32(file, start + rows.size());
    Put32(file, 0);
    Put32(file, start);
    Put32(file, 40);
    Put32(file, KSmall.width);
    Put32(file, KSmall.height);
    Put16(file, 1);
    Put16(file, 8);
    Put32(file, 1); // run lengths of eight bits
    Put32(file, static_cast<std::int64_t>(rows.size()));
    Put32(file, 0);
    Put32(file, 0);
    Put32(file, 4);
    Put32(file, 0);
    for (const Color color : KPalette)
        Put32(file, Red(color) << 16 | Green(color) << 8 | Blue(color));
    return file + rows;
}

std::string Svg() {
    return "<?xml version=\"1.0\"?><svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"12\" "
           "viewBox=\"0 0 16 12\"><rect width=\"8\" height=\"6\" fill=\"#f00\"/>"
           "<rect x=\"8\" width=\"8\" height=\"6\" fill=\"#0f0\"/><rect y=\"6\" width=\"8\" height=\"6\" "
           "fill=\"#00f\"/><rect x=\"8\" y=\"6\" width=\"8\" height=\"6\" fill=\"#fff\"/></svg>";
}

std::string WindowsMetafile() {
    std::string records;
    const auto record = [&records](int function, const std::vector<int>& words) {
        Put32(records, 3 + static_cast<int>(words.size()));
        Put16(records, function);
        for (const int word : words)
            Put16(records, word);
    };
    record(0x020B, {0, 0});          // window origin
    record(0x020C, {1000, 2000});    // window extent, height first
    record(0x02FA, {5, 0, 0, 0, 0}); // no pen
    record(0x012D, {0});
    record(0x02FC, {0, 255, 0, 0}); // a red brush, colour as two words
    record(0x012D, {1});
    record(0x041B, {1000, 1000, 0, 0}); // rectangle: bottom, right, top, left
    record(0x02FC, {0, 0, 255, 0});     // a blue one
    record(0x012D, {2});
    record(0x041B, {1000, 2000, 0, 1000});
    record(0, {});

    std::string file("\xD7\xCD\xC6\x9A\0\0", 6);
    for (const int word : {0, 0, 2000, 1000, 1000, 0, 0})
        Put16(file, word);
    int checksum = 0;
    for (std::size_t at = 0; at < 20; at += 2)
        checksum ^= Byte(file[at]) | Byte(file[at + 1]) << 8;
    Put16(file, checksum);
    for (const int word : {1, 9, 0x0300})
        Put16(file, word);
    Put32(file, static_cast<std::int64_t>(9 + records.size() / 2));
    Put16(file, 3);
    Put32(file, 8);
    Put16(file, 0);
    return file + records;
}

std::string EnhancedMetafile() {
    int count = 1;
    std::string records;
    const auto record = [&](int kind, const std::vector<std::int64_t>& numbers) {
        Put32(records, kind);
        Put32(records, static_cast<std::int64_t>(8 + 4 * numbers.size()));
        for (const std::int64_t number : numbers)
            Put32(records, number);
        ++count;
    };
    record(37, {0x80000008}); // no pen
    record(39, {1, 0, 0x0000FF, 0});
    record(37, {1});
    record(43, {0, 0, 96, 96});
    record(39, {2, 0, 0xFF0000, 0});
    record(37, {2});
    record(43, {96, 0, 192, 96});
    record(14, {0, 16, 20});

    std::string file;
    const std::int64_t bytes = 108 + static_cast<std::int64_t>(records.size());
    for (const std::int64_t number : std::initializer_list<std::int64_t>{
             1, 108, 0, 0, 191, 95, 0, 0, 5080, 2540, 0x464D4520, 0x10000, bytes, count})
        Put32(file, number);
    Put16(file, 3); // handles
    Put16(file, 0);
    // Description, palette, then a device of 96 dots an inch in pixels, millimetres and micrometres.
    for (const std::int64_t number :
         std::initializer_list<std::int64_t>{0, 0, 0, 1920, 1200, 508, 318, 0, 0, 0, 508000, 317500})
        Put32(file, number);
    return file + records;
}

} // namespace quorvane::samples
