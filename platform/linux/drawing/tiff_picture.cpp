#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_rows.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include <unistd.h>

#include <tiffio.h>

namespace quorvane {
namespace {

class Decoder {
  public:
    Decoder(const std::string& path, std::string& why)
        : why_(why) {
        const PictureFile file = OpenPictureFile(path, why);
        if (!file) return;
        TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
        TIFFOpenOptionsSetErrorHandlerExtR(options, OnError, this);
        TIFFOpenOptionsSetWarningHandlerExtR(
            options, [](TIFF*, void*, const char*, const char*, va_list) { return 1; }, nullptr);
        // Not mapped: a file that is cut short meanwhile would end the program.
        tiff_ = TIFFFdOpenExt(dup(fileno(file.get())), "picture", "rm", options);
        TIFFOpenOptionsFree(options);
        if (!tiff_) return;
        std::uint32_t width = 0, height = 0;
        TIFFGetField(tiff_, TIFFTAG_IMAGEWIDTH, &width);
        TIFFGetField(tiff_, TIFFTAG_IMAGELENGTH, &height);
        constexpr std::uint32_t Most = 1U << 30;
        size_ = {static_cast<int>(std::min(width, Most)), static_cast<int>(std::min(height, Most))};
    }
    ~Decoder() {
        if (tiff_) TIFFClose(tiff_);
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    TIFF* Get() const { return tiff_; }
    PixelSize Size() const { return size_; }

    int Number(std::uint32_t tag) const {
        std::uint16_t number = 0;
        return TIFFGetFieldDefaulted(tiff_, tag, &number) ? number : 0;
    }
    bool HasAlpha() const {
        std::uint16_t count = 0, *kinds = nullptr;
        return TIFFGetField(tiff_, TIFFTAG_EXTRASAMPLES, &count, &kinds) && count > 0;
    }
    // Rows that come out of the file together.
    int BlockRows() const {
        std::uint32_t rows = 0;
        if (TIFFIsTiled(tiff_)) {
            TIFFGetField(tiff_, TIFFTAG_TILELENGTH, &rows);
        } else {
            TIFFGetFieldDefaulted(tiff_, TIFFTAG_ROWSPERSTRIP, &rows);
        }
        return static_cast<int>(std::clamp(rows, 1U, static_cast<std::uint32_t>(size_.height)));
    }

  private:
    static int OnError(TIFF*, void* data, const char*, const char* format, va_list arguments) {
        char words[256];
        std::vsnprintf(words, sizeof words, format, arguments);
        static_cast<Decoder*>(data)->why_ = std::string("the picture is damaged: ") + words;
        return 1;
    }

    std::string& why_;
    TIFF* tiff_ = nullptr;
    PixelSize size_;
};

// The rows by the library's own conversion, which knows every kind of pixel, a strip or a row of tiles at a
// time. Such files have small ones as a rule; a larger one is held whole.
class BlockRows {
  public:
    explicit BlockRows(const Decoder& decoder)
        : size_(decoder.Size())
        , blockRows_(decoder.BlockRows()) {
        char words[1024] = "";
        begun_ = TIFFRGBAImageBegin(&image_, decoder.Get(), 1, words) == 1;
        if (!begun_) why_ = words;
        // The rows as they are stored, whichever way up they are meant.
        image_.orientation = image_.req_orientation = ORIENTATION_TOPLEFT;
    }
    ~BlockRows() {
        if (begun_) TIFFRGBAImageEnd(&image_);
    }
    BlockRows(const BlockRows&) = delete;
    BlockRows& operator=(const BlockRows&) = delete;

    const std::string& Why() const { return why_; }

    bool Read(int y, std::uint8_t* pixels) {
        const auto width = static_cast<std::size_t>(size_.width);
        if (!begun_ || (y >= end_ && !ReadBlock(y / blockRows_ * blockRows_))) return false;
        const std::uint32_t* row = &block_[width * static_cast<std::size_t>(y - from_)];
        for (std::size_t x = 0; x < width; ++x, pixels += 4) {
            pixels[0] = static_cast<std::uint8_t>(TIFFGetB(row[x]));
            pixels[1] = static_cast<std::uint8_t>(TIFFGetG(row[x]));
            pixels[2] = static_cast<std::uint8_t>(TIFFGetR(row[x]));
            pixels[3] = static_cast<std::uint8_t>(TIFFGetA(row[x]));
        }
        return true;
    }

  private:
    bool ReadBlock(int from) {
        from_ = from;
        end_ = std::min(from + blockRows_, size_.height);
        block_.resize(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(end_ - from));
        image_.row_offset = from;
        return TIFFRGBAImageGet(&image_, block_.data(), static_cast<std::uint32_t>(size_.width),
                                static_cast<std::uint32_t>(end_ - from)) == 1;
    }

    PixelSize size_;
    int blockRows_;
    TIFFRGBAImage image_{};
    bool begun_ = false;
    std::string why_;
    int from_ = 0;
    int end_ = 0;
    std::vector<std::uint32_t> block_;
};

// The rows one by one, however large the strips are, in the kinds of pixel that most files have: grey,
// indexed, red-green-blue and inks, whose samples lie together.
class SingleRows {
  public:
    explicit SingleRows(const Decoder& decoder)
        : tiff_(decoder.Get())
        , width_(decoder.Size().width)
        , bits_(decoder.Number(TIFFTAG_BITSPERSAMPLE))
        , samples_(decoder.Number(TIFFTAG_SAMPLESPERPIXEL))
        , photometric_(decoder.Number(TIFFTAG_PHOTOMETRIC)) {
        std::uint16_t count = 0, *kinds = nullptr;
        if (TIFFGetField(tiff_, TIFFTAG_EXTRASAMPLES, &count, &kinds) && count > 0) extra_ = kinds[0];
        const int colors = photometric_ == PHOTOMETRIC_RGB         ? 3
                           : photometric_ == PHOTOMETRIC_SEPARATED ? 4
                                                                   : 1;
        const bool indexed = photometric_ == PHOTOMETRIC_PALETTE;
        const bool plainBits = bits_ == 8 || (bits_ == 16 && !indexed) ||
                               (samples_ == 1 && (bits_ == 1 || bits_ == 2 || bits_ == 4));
        const bool known = photometric_ == PHOTOMETRIC_MINISBLACK || photometric_ == PHOTOMETRIC_MINISWHITE ||
                           photometric_ == PHOTOMETRIC_RGB || photometric_ == PHOTOMETRIC_SEPARATED ||
                           (indexed && TIFFGetField(tiff_, TIFFTAG_COLORMAP, &red_, &green_, &blue_));
        fits_ = known && plainBits && (samples_ == colors || samples_ == colors + 1) && !TIFFIsTiled(tiff_) &&
                decoder.Number(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG &&
                decoder.Number(TIFFTAG_SAMPLEFORMAT) <= SAMPLEFORMAT_UINT;
        alpha_ =
            samples_ == colors + 1 && (extra_ == EXTRASAMPLE_ASSOCALPHA || extra_ == EXTRASAMPLE_UNASSALPHA);
    }

    bool Fit() const { return fits_; }

    bool Read(int y, std::uint8_t* pixels) {
        line_.resize(static_cast<std::size_t>(std::max<tmsize_t>(TIFFScanlineSize(tiff_), 1)) + 8);
        for (; next_ <= y; ++next_)
            if (TIFFReadScanline(tiff_, line_.data(), static_cast<std::uint32_t>(next_)) != 1) return false;
        for (int x = 0; x < width_; ++x)
            PutPixel(x, pixels + std::ptrdiff_t{4} * x);
        if (alpha_ && extra_ == EXTRASAMPLE_UNASSALPHA) Premultiply(pixels, width_);
        return true;
    }

  private:
    // From 0 to 255, or an index as it stands.
    int Sample(int x, int sample) const {
        const std::size_t at = static_cast<std::size_t>(x) * static_cast<std::size_t>(samples_) +
                               static_cast<std::size_t>(sample);
        if (bits_ == 8) return line_[at];
        if (bits_ == 16) {
            std::uint16_t level = 0;
            std::memcpy(&level, &line_[2 * at], 2);
            return (level + 128) / 257;
        }
        const std::size_t bit = at * static_cast<std::size_t>(bits_);
        const int most = (1 << bits_) - 1;
        const int level = line_[bit / 8] >> (8 - bits_ - static_cast<int>(bit % 8)) & most;
        return photometric_ == PHOTOMETRIC_PALETTE ? level : level * 255 / most;
    }

    void PutPixel(int x, std::uint8_t* pixel) const {
        int red = Sample(x, 0), green = red, blue = red;
        if (photometric_ == PHOTOMETRIC_MINISWHITE) {
            red = green = blue = 255 - red;
        } else if (photometric_ == PHOTOMETRIC_PALETTE) {
            const std::size_t index = static_cast<std::size_t>(red);
            red = red_[index] >> 8;
            green = green_[index] >> 8;
            blue = blue_[index] >> 8;
        } else if (photometric_ != PHOTOMETRIC_MINISBLACK) {
            green = Sample(x, 1);
            blue = Sample(x, 2);
        }
        if (photometric_ == PHOTOMETRIC_SEPARATED) {
            const int light = 255 - Sample(x, 3);
            red = (255 - red) * light / 255;
            green = (255 - green) * light / 255;
            blue = (255 - blue) * light / 255;
        }
        pixel[0] = static_cast<std::uint8_t>(blue);
        pixel[1] = static_cast<std::uint8_t>(green);
        pixel[2] = static_cast<std::uint8_t>(red);
        pixel[3] = static_cast<std::uint8_t>(alpha_ ? Sample(x, samples_ - 1) : 255);
    }

    TIFF* tiff_;
    int width_;
    int bits_;
    int samples_;
    int photometric_;
    int extra_ = 0;
    const std::uint16_t* red_ = nullptr;
    const std::uint16_t* green_ = nullptr;
    const std::uint16_t* blue_ = nullptr;
    bool fits_ = false;
    bool alpha_ = false;
    int next_ = 0;
    std::vector<std::uint8_t> line_;
};

class TiffPicture final : public LinuxPicture {
  public:
    TiffPicture(std::string path, const Decoder& decoder)
        : LinuxPicture(decoder.Size(), OrientationOf(decoder.Number(TIFFTAG_ORIENTATION)),
                       decoder.HasAlpha() ? RowPainter::Mode::Blend : RowPainter::Mode::Copy)
        , path_(std::move(path)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        const Decoder decoder(path_, why);
        if (!decoder.Get() || decoder.Size() != StoredSize()) return false;
        if (SingleRows rows(decoder); rows.Fit())
            return PaintRows(StoredSize(), painter,
                             [&rows](int y, std::uint8_t* pixels) { return rows.Read(y, pixels); });
        BlockRows rows(decoder);
        if (!rows.Why().empty()) why = "the picture is damaged: " + rows.Why();
        return PaintRows(StoredSize(), painter,
                         [&rows](int y, std::uint8_t* pixels) { return rows.Read(y, pixels); });
    }

  private:
    std::string path_;
};

} // namespace

std::unique_ptr<LinuxPicture> OpenTiff(const std::string& path, std::string& why) {
    const Decoder decoder(path, why);
    if (!decoder.Get() || !SensibleSize(decoder.Size(), why)) return nullptr;
    return std::make_unique<TiffPicture>(path, decoder);
}

} // namespace quorvane
