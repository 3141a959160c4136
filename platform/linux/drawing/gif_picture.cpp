#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_rows.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <gif_lib.h>

namespace quorvane {
namespace {

constexpr int NoIndex = -1;

// The first frame of a file, its lines in the order in which the file holds them.
class Decoder {
  public:
    Decoder(const std::string& path, std::string& why)
        : file_(OpenPictureFile(path, why)) {
        if (!file_) return;
        int error = 0;
        gif_ = DGifOpen(file_.get(), Read, &error);
        if (!gif_) {
            why = Damaged(error);
        } else if (!FindFrame()) {
            why = Damaged(gif_->Error);
        } else {
            found_ = true;
        }
    }
    ~Decoder() {
        if (gif_) DGifCloseFile(gif_, nullptr);
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    bool Found() const { return found_; }
    PixelSize Screen() const { return {gif_->SWidth, gif_->SHeight}; }
    const GifImageDesc& Frame() const { return gif_->Image; }
    bool HasTransparency() const { return transparent_ != NoIndex; }

    bool ReadLine(std::vector<GifPixelType>& line) {
        line.resize(static_cast<std::size_t>(Frame().Width));
        return DGifGetLine(gif_, line.data(), Frame().Width) == GIF_OK;
    }

    // A row of the screen with a line of the frame on it.
    void PutLine(const std::vector<GifPixelType>& line, std::uint8_t* pixels) const {
        PutFree(pixels);
        const ColorMapObject* colors = Frame().ColorMap ? Frame().ColorMap : gif_->SColorMap;
        const int end = std::min(Frame().Width, gif_->SWidth - Frame().Left);
        for (int x = 0; x < end; ++x)
            PutPixel(colors, line[static_cast<std::size_t>(x)],
                     pixels + std::ptrdiff_t{4} * (Frame().Left + x));
    }

    // What the frame leaves free is clear where anything in it is, and of the screen's own colour otherwise.
    void PutFree(std::uint8_t* pixels) const {
        const int index = HasTransparency() ? transparent_ : gif_->SBackGroundColor;
        for (int x = 0; x < gif_->SWidth; ++x, pixels += 4)
            PutPixel(gif_->SColorMap, index, pixels);
    }

  private:
    static int Read(GifFileType* gif, GifByteType* bytes, int count) {
        auto* file = static_cast<std::FILE*>(gif->UserData);
        return static_cast<int>(std::fread(bytes, 1, static_cast<std::size_t>(count), file));
    }

    void PutPixel(const ColorMapObject* colors, int index, std::uint8_t* pixel) const {
        std::memset(pixel, 0, 4);
        if (index == transparent_) return;
        pixel[3] = 255;
        if (!colors || index >= colors->ColorCount) return;
        const GifColorType& color = colors->Colors[index];
        pixel[0] = color.Blue;
        pixel[1] = color.Green;
        pixel[2] = color.Red;
    }

    static std::string Damaged(int error) {
        const char* words = GifErrorString(error);
        return std::string("the picture is damaged: ") + (words ? words : "it holds no image");
    }

    bool FindFrame() {
        GifRecordType record = UNDEFINED_RECORD_TYPE;
        while (DGifGetRecordType(gif_, &record) == GIF_OK && record != TERMINATE_RECORD_TYPE) {
            if (record == IMAGE_DESC_RECORD_TYPE) return DGifGetImageDesc(gif_) == GIF_OK;
            if (record == EXTENSION_RECORD_TYPE && !ReadExtension()) return false;
        }
        return false;
    }

    // Of all extensions the one matters that names a transparent colour.
    bool ReadExtension() {
        int code = 0;
        GifByteType* block = nullptr;
        if (DGifGetExtension(gif_, &code, &block) != GIF_OK) return false;
        while (block) {
            if (code == GRAPHICS_EXT_FUNC_CODE && block[0] >= 4)
                transparent_ = (block[1] & 1) != 0 ? block[4] : NoIndex;
            if (DGifGetExtensionNext(gif_, &block) != GIF_OK) return false;
        }
        return true;
    }

    PictureFile file_;
    GifFileType* gif_ = nullptr;
    int transparent_ = NoIndex;
    bool found_ = false;
};

class GifPicture final : public LinuxPicture {
  public:
    GifPicture(std::string path, const Decoder& decoder)
        : LinuxPicture(decoder.Screen(), {},
                       decoder.HasTransparency() ? RowPainter::Mode::Blend : RowPainter::Mode::Copy)
        , path_(std::move(path))
        , interlaced_(decoder.Frame().Interlace) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        const bool whole = interlaced_ ? RenderInterlaced(painter, why) : RenderLines(painter, why);
        if (!whole && why.empty()) why = "the picture is damaged: it ends early";
        return whole;
    }

  private:
    bool RenderLines(RowPainter& painter, std::string& why) const {
        Decoder decoder(path_, why);
        if (!decoder.Found() || decoder.Screen() != StoredSize()) return false;
        const GifImageDesc& frame = decoder.Frame();
        std::vector<GifPixelType> line;
        int next = frame.Top;
        return PaintRows(StoredSize(), painter, [&](int y, std::uint8_t* pixels) {
            if (y < frame.Top || y >= frame.Top + frame.Height) {
                decoder.PutFree(pixels);
                return true;
            }
            for (; next <= y; ++next)
                if (!decoder.ReadLine(line)) return false;
            decoder.PutLine(line, pixels);
            return true;
        });
    }

    bool RenderInterlaced(RowPainter& painter, std::string& why) const {
        const PixelSize size = StoredSize();
        return PaintBands(size, painter, [&](int from, int count, std::uint8_t* band) {
            Decoder decoder(path_, why);
            if (!decoder.Found() || decoder.Screen() != size) return false;
            const auto rowOf = [&](int y) { return band + std::ptrdiff_t{4} * size.width * (y - from); };
            for (int y = from; y < from + count; ++y)
                decoder.PutFree(rowOf(y));
            std::vector<GifPixelType> line;
            constexpr int Starts[] = {0, 4, 2, 1}, Steps[] = {8, 8, 4, 2};
            for (int pass = 0; pass < 4; ++pass) {
                for (int row = Starts[pass]; row < decoder.Frame().Height; row += Steps[pass]) {
                    if (!decoder.ReadLine(line)) return false;
                    const int y = decoder.Frame().Top + row;
                    if (y >= from && y < from + count) decoder.PutLine(line, rowOf(y));
                }
            }
            return true;
        });
    }

    std::string path_;
    bool interlaced_;
};

} // namespace

std::unique_ptr<LinuxPicture> OpenGif(const std::string& path, std::string& why) {
    const Decoder decoder(path, why);
    if (!decoder.Found() || !SensibleSize(decoder.Screen(), why)) return nullptr;
    return std::make_unique<GifPicture>(path, decoder);
}

} // namespace quorvane
