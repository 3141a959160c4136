#include "platform/linux/drawing/library_jump.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_rows.h"
#include "platform/painting/exif.h"

#include <vector>

#include <png.h>

namespace quorvane {
namespace {

// The library's state. Where it gives up, its words are the reason.
class Decoder : public LibraryJump {
  public:
    Decoder(const std::string& path, std::string& why)
        : why_(why)
        , file_(OpenPictureFile(path, why)) {}
    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    bool ReadHeader() {
        if (!file_) return false;
        png =
            png_create_read_struct(PNG_LIBPNG_VER_STRING, this, OnError, [](png_structp, png_const_charp) {});
        info = png ? png_create_info_struct(png) : nullptr;
        return info && Guarded([this] {
                   png_init_io(png, file_.get());
                   png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
                   png_read_info(png, info);
               });
    }

    // From now on a row is four bytes a pixel, blue first.
    bool Begin() {
        return Guarded([this] {
            png_set_expand(png);
            png_set_scale_16(png);
            png_set_gray_to_rgb(png);
            png_set_bgr(png);
            png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
            passes = png_set_interlace_handling(png);
            png_read_update_info(png, info);
        });
    }

    PixelSize Size() const {
        return {static_cast<int>(png_get_image_width(png, info)),
                static_cast<int>(png_get_image_height(png, info))};
    }
    bool IsInterlaced() const { return png_get_interlace_type(png, info) != PNG_INTERLACE_NONE; }
    bool HasAlpha() const {
        return (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) != 0 ||
               png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    }

    png_structp png = nullptr;
    png_infop info = nullptr;
    int passes = 1;

  private:
    [[noreturn]] static void OnError(png_structp png, png_const_charp words) {
        auto& decoder = *static_cast<Decoder*>(png_get_error_ptr(png));
        decoder.why_ = std::string("the picture is damaged: ") + words;
        decoder.GiveUp();
    }

    std::string& why_;
    PictureFile file_;
};

class PngPicture final : public LinuxPicture {
  public:
    PngPicture(std::string path, const Decoder& decoder, Orientation orientation)
        : LinuxPicture(decoder.Size(), orientation,
                       decoder.HasAlpha() ? RowPainter::Mode::Blend : RowPainter::Mode::Copy)
        , path_(std::move(path))
        , interlaced_(decoder.IsInterlaced())
        , alpha_(decoder.HasAlpha()) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        return interlaced_ ? RenderInterlaced(painter, why) : RenderRows(painter, why);
    }

  private:
    bool Start(Decoder& decoder) const {
        return decoder.ReadHeader() && decoder.Size() == StoredSize() && decoder.Begin();
    }

    bool RenderRows(RowPainter& painter, std::string& why) const {
        Decoder decoder(path_, why);
        if (!Start(decoder)) return false;
        int next = 0;
        return PaintRows(StoredSize(), painter, [&](int y, std::uint8_t* pixels) {
            const bool read = decoder.Guarded([&] {
                for (; next <= y; ++next)
                    png_read_row(decoder.png, pixels, nullptr);
            });
            if (read && alpha_) Premultiply(pixels, StoredSize().width);
            return read;
        });
    }

    // Each of the passes over an interlaced picture holds a few pixels of many rows.
    bool RenderInterlaced(RowPainter& painter, std::string& why) const {
        const PixelSize size = StoredSize();
        return PaintBands(size, painter, [&](int from, int count, std::uint8_t* band) {
            Decoder decoder(path_, why);
            if (!Start(decoder)) return false;
            const bool read = decoder.Guarded([&] {
                for (int pass = 0; pass < decoder.passes; ++pass) {
                    const int end = pass + 1 < decoder.passes ? size.height : from + count;
                    for (int y = 0; y < end; ++y) {
                        const bool wanted = y >= from && y < from + count;
                        png_read_row(decoder.png,
                                     wanted ? band + std::ptrdiff_t{4} * size.width * (y - from) : nullptr,
                                     nullptr);
                    }
                }
            });
            if (read && alpha_) Premultiply(band, size.width * count);
            return read;
        });
    }

    std::string path_;
    bool interlaced_;
    bool alpha_;
};

} // namespace

std::unique_ptr<LinuxPicture> OpenPng(const std::string& path, std::string& why) {
    Decoder decoder(path, why);
    if (!decoder.ReadHeader() || !SensibleSize(decoder.Size(), why)) return nullptr;
    return std::make_unique<PngPicture>(path, decoder, NotedOrientation(path));
}

} // namespace quorvane
