#include "platform/linux/drawing/jpeg_source.h"
#include "platform/linux/drawing/library_jump.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/painting/exif.h"
#include "platform/painting/resample.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <jpeglib.h>

#include <jerror.h>

namespace quorvane {
namespace {

// What a progressive file may make the library hold: the coefficients of some 130 million pixels.
constexpr long MostMemory = 512L << 20;
// A file of more scans than that is made to keep a program busy.
constexpr int MostScans = 200;

// The library's state.
class Decoder : public LibraryJump {
  public:
    explicit Decoder(const std::string& path);
    ~Decoder();
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    bool ReadHeader();
    int ExifNumber() const;
    // The library's words for the last error.
    std::string Reason();
    // The data ended before the picture did: what the library gives from now on is made up.
    bool Exhausted() const { return exhausted_; }

    jpeg_decompress_struct info{};

  private:
    static Decoder& Of(j_common_ptr info) { return *static_cast<Decoder*>(info->client_data); }
    static void OnError(j_common_ptr info);
    static void OnMessage(j_common_ptr info, int level);
    static void OnProgress(j_common_ptr info);

    std::string openWhy_;
    PictureFile file_;
    JpegSource source_;
    jpeg_error_mgr errors_{};
    jpeg_progress_mgr progress_{};
    bool exhausted_ = false;
};

Decoder::Decoder(const std::string& path)
    : file_(OpenPictureFile(path, openWhy_))
    , source_(file_.get()) {
    info.err = jpeg_std_error(&errors_);
    info.client_data = this;
    errors_.error_exit = OnError;
    errors_.emit_message = OnMessage;
    errors_.output_message = [](j_common_ptr) {};
    progress_.progress_monitor = OnProgress;
}

Decoder::~Decoder() {
    if (info.mem) jpeg_destroy_decompress(&info);
}

void Decoder::OnError(j_common_ptr info) {
    Of(info).GiveUp();
}

void Decoder::OnMessage(j_common_ptr info, int level) {
    if (level >= 0) return;
    Decoder& decoder = Of(info);
    ++info->err->num_warnings;
    if (info->err->msg_code == JWRN_HIT_MARKER && decoder.info.unread_marker == JPEG_EOI)
        decoder.exhausted_ = true;
}

void Decoder::OnProgress(j_common_ptr info) {
    if (info->is_decompressor && Of(info).info.input_scan_number > MostScans) OnError(info);
}

bool Decoder::ReadHeader() {
    if (!file_) return false;
    return Guarded([this] {
        jpeg_create_decompress(&info);
        info.client_data = this;
        info.progress = &progress_;
        info.mem->max_memory_to_use = MostMemory;
        info.src = &source_;
        jpeg_save_markers(&info, JPEG_APP0 + 1, 0xFFFF);
        jpeg_read_header(&info, TRUE);
    });
}

int Decoder::ExifNumber() const {
    constexpr std::string_view Start("Exif\0\0", 6);
    for (const jpeg_marker_struct* marker = info.marker_list; marker; marker = marker->next) {
        const std::string_view data(reinterpret_cast<const char*>(marker->data), marker->data_length);
        if (marker->marker == JPEG_APP0 + 1 && data.starts_with(Start))
            return ExifOrientation(data.substr(Start.size()));
    }
    return 1;
}

std::string Decoder::Reason() {
    if (!file_) return openWhy_;
    if (errors_.msg_code == 0 || !info.mem) return "the picture is damaged";
    char words[JMSG_LENGTH_MAX];
    errors_.format_message(reinterpret_cast<j_common_ptr>(&info), words);
    return std::string("the picture is damaged: ") + words;
}

// The inks of a printer's picture as the colours of a screen, from the first byte pixels of `in` on.
void ConvertInks(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, bool inverted) {
    for (; pixels > 0; --pixels, in += 4, out += 4) {
        const int flip = inverted ? 0 : 255;
        const int black = in[3] ^ flip;
        const int red = (in[0] ^ flip) * black / 255, green = (in[1] ^ flip) * black / 255,
                  blue = (in[2] ^ flip) * black / 255;
        out[0] = static_cast<std::uint8_t>(blue);
        out[1] = static_cast<std::uint8_t>(green);
        out[2] = static_cast<std::uint8_t>(red);
        out[3] = 255;
    }
}

class JpegPicture final : public LinuxPicture {
  public:
    JpegPicture(std::string path, PixelSize size, Orientation orientation)
        : LinuxPicture(size, orientation, RowPainter::Mode::Copy)
        , path_(std::move(path)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override;

  private:
    std::string path_;
};

// Only the transforms at 1, 1/2, 1/4 and 1/8 are quick ones; the others cost more than a full decode.
void ChooseScale(jpeg_decompress_struct& info, PixelSize wanted) {
    info.scale_denom = 1;
    for (unsigned int denominator = 8; denominator > 1; denominator /= 2) {
        const auto reduced = [denominator](JDIMENSION full) {
            return static_cast<int>((full + denominator - 1) / denominator);
        };
        if (reduced(info.image_width) >= wanted.width && reduced(info.image_height) >= wanted.height) {
            info.scale_denom = denominator;
            break;
        }
    }
    info.scale_num = 1;
    // Smooth colour between the colour samples is lost again where two of them become one pixel.
    const double reduction = static_cast<double>(info.image_width) / info.scale_denom / wanted.width;
    info.do_fancy_upsampling = reduction < 1.5;
}

void Feed(Decoder& decoder, Resampler& resampler, std::uint8_t* inks) {
    jpeg_decompress_struct& info = decoder.info;
    const auto skipped = static_cast<JDIMENSION>(resampler.FirstRow());
    if (skipped > 0) jpeg_skip_scanlines(&info, skipped);
    const auto blockRow = static_cast<JDIMENSION>(info.max_v_samp_factor * info.min_DCT_scaled_size);
    while (!resampler.Done() && info.output_scanline < info.output_height) {
        std::uint8_t* row = inks ? inks : resampler.InputRow();
        if (jpeg_read_scanlines(&info, &row, 1) != 1) break;
        if (inks) ConvertInks(inks, resampler.InputRow(), info.output_width, info.saw_Adobe_marker != FALSE);
        resampler.Push();
        // A progressive picture is whole, only coarser; the rows of any other end with the data.
        if (decoder.Exhausted() && !jpeg_has_multiple_scans(&info) && info.output_scanline % blockRow == 0)
            break;
    }
}

bool JpegPicture::Render(RowPainter& painter, std::string& why) const {
    Decoder decoder(path_);
    jpeg_decompress_struct& info = decoder.info;
    bool ready = decoder.ReadHeader() && PixelSize{static_cast<int>(info.image_width),
                                                   static_cast<int>(info.image_height)} == StoredSize();
    ready = ready && decoder.Guarded([&] {
        const bool inks = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
        info.out_color_space = inks ? JCS_CMYK : JCS_EXT_BGRX;
        ChooseScale(info, painter.StoredSize());
        jpeg_start_decompress(&info);
    });
    if (!ready) {
        why = decoder.Reason();
        return false;
    }
    const PixelSize decoded{static_cast<int>(info.output_width), static_cast<int>(info.output_height)};
    Resampler resampler(decoded, painter.StoredSize(), painter.StoredPart(),
                        [&painter](int row, const std::uint8_t* pixels) { painter.Put(row, pixels); });
    std::vector<std::uint8_t> inks(info.out_color_space == JCS_CMYK ? std::size_t{4} * info.output_width : 0);
    std::uint8_t* const inkRow = inks.empty() ? nullptr : inks.data();
    const bool whole = decoder.Guarded([&] { Feed(decoder, resampler, inkRow); });
    if (!whole) why = decoder.Reason();
    return whole || info.output_scanline > 0;
}

} // namespace

std::unique_ptr<LinuxPicture> OpenJpeg(const std::string& path, std::string& why) {
    Decoder decoder(path);
    if (!decoder.ReadHeader()) {
        why = decoder.Reason();
        return nullptr;
    }
    const PixelSize size{static_cast<int>(decoder.info.image_width),
                         static_cast<int>(decoder.info.image_height)};
    if (!SensibleSize(size, why)) return nullptr;
    return std::make_unique<JpegPicture>(path, size, OrientationOf(decoder.ExifNumber()));
}

} // namespace quorvane
