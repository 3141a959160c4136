#include "platform/linux/drawing/mapped_buffer.h"
#include "platform/linux/drawing/picture.h"
#include "platform/linux/drawing/picture_file.h"
#include "platform/linux/drawing/picture_rows.h"
#include "platform/painting/exif.h"

#include <algorithm>
#include <cstring>

#include <sys/mman.h>

#include <webp/decode.h>
#include <webp/demux.h>

namespace quorvane {
namespace {

constexpr const char* Damaged = "the picture is damaged";

// The file in memory, since the library takes it so, and its first frame.
class Container {
  public:
    Container(const std::string& path, std::string& why) {
        const PictureFile file = OpenPictureFile(path, why);
        if (!file) return;
        bytes_ = static_cast<std::size_t>(FileBytes(file));
        content_ = MappedBuffer(bytes_);
        if (!content_.Data() || std::fread(content_.Data(), 1, bytes_, file.get()) != bytes_) {
            why = content_.Data() ? Damaged : "the file is too large";
            return;
        }
        const WebPData data{content_.Data(), bytes_};
        WebPDemuxState state = WEBP_DEMUX_PARSE_ERROR;
        demuxer_ = WebPDemuxPartial(&data, &state);
        found_ = demuxer_ && WebPDemuxGetFrame(demuxer_, 1, &frame_);
        if (!found_) why = Damaged;
    }
    ~Container() {
        if (found_) WebPDemuxReleaseIterator(&frame_);
        WebPDemuxDelete(demuxer_);
    }
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    bool Found() const { return found_; }
    const WebPIterator& Frame() const { return frame_; }
    PixelSize Size() const {
        return {static_cast<int>(WebPDemuxGetI(demuxer_, WEBP_FF_CANVAS_WIDTH)),
                static_cast<int>(WebPDemuxGetI(demuxer_, WEBP_FF_CANVAS_HEIGHT))};
    }
    // The frame need not cover the whole picture.
    bool HasAlpha() const {
        return frame_.has_alpha || frame_.width < Size().width || frame_.height < Size().height;
    }
    Orientation Turn() const {
        return OrientationOf(
            ExifOrientation(FindExif({reinterpret_cast<const char*>(content_.Data()), bytes_})));
    }

  private:
    MappedBuffer content_;
    std::size_t bytes_ = 0;
    WebPDemuxer* demuxer_ = nullptr;
    WebPIterator frame_{};
    bool found_ = false;
};

// The rows of a frame as its data is taken in. The library wants room for all of them; those that have been
// read are given back.
class FrameRows {
  public:
    explicit FrameRows(const WebPIterator& frame)
        : frame_(frame)
        , stride_(static_cast<std::size_t>(frame.width) * 4)
        , room_(stride_ * static_cast<std::size_t>(frame.height)) {
        if (!room_.Data()) return;
        // Large pages would not be given back row by row.
        madvise(room_.Data(), room_.Bytes(), MADV_NOHUGEPAGE);
        decoder_ = WebPINewRGB(MODE_BGRA, room_.Data(), room_.Bytes(), static_cast<int>(stride_));
    }
    ~FrameRows() { WebPIDelete(decoder_); }
    FrameRows(const FrameRows&) = delete;
    FrameRows& operator=(const FrameRows&) = delete;

    bool Read(int y, std::uint8_t* pixels) {
        constexpr std::size_t Piece = std::size_t{32} << 10;
        while (decoder_ && y >= ready_) {
            if (taken_ == frame_.fragment.size) return false;
            taken_ = std::min(taken_ + Piece, frame_.fragment.size);
            const VP8StatusCode status = WebPIUpdate(decoder_, frame_.fragment.bytes, taken_);
            if (status != VP8_STATUS_OK && status != VP8_STATUS_SUSPENDED) return false;
            WebPIDecGetRGB(decoder_, &ready_, nullptr, nullptr, nullptr);
        }
        if (!decoder_) return false;
        std::memcpy(pixels, room_.Data() + stride_ * static_cast<std::size_t>(y), stride_);
        if (frame_.has_alpha) Premultiply(pixels, frame_.width);
        GiveBack(y);
        return true;
    }

  private:
    // In large steps, and a little behind: the library may still look at the row above the next one.
    void GiveBack(int y) {
        constexpr std::size_t Step = std::size_t{1} << 20;
        const std::size_t read = stride_ * static_cast<std::size_t>(std::max(y - 1, 0)) / Step * Step;
        if (read <= given_) return;
        madvise(room_.Data() + given_, read - given_, MADV_DONTNEED);
        given_ = read;
    }

    const WebPIterator& frame_;
    std::size_t stride_;
    MappedBuffer room_;
    WebPIDecoder* decoder_ = nullptr;
    std::size_t taken_ = 0; // of the frame's bytes
    std::size_t given_ = 0; // bytes of the room, back to the system
    int ready_ = 0;         // rows
};

class WebpPicture final : public LinuxPicture {
  public:
    WebpPicture(std::string path, const Container& container)
        : LinuxPicture(container.Size(), container.Turn(),
                       container.HasAlpha() ? RowPainter::Mode::Blend : RowPainter::Mode::Copy)
        , path_(std::move(path)) {}

  protected:
    bool Render(RowPainter& painter, std::string& why) const override {
        const Container container(path_, why);
        if (!container.Found() || container.Size() != StoredSize()) return false;
        const WebPIterator& frame = container.Frame();
        FrameRows rows(frame);
        const bool whole = PaintRows(StoredSize(), painter, [&](int y, std::uint8_t* pixels) {
            const bool inside = y >= frame.y_offset && y < frame.y_offset + frame.height;
            if (!inside || frame.width < StoredSize().width)
                std::memset(pixels, 0, static_cast<std::size_t>(StoredSize().width) * 4);
            return !inside || rows.Read(y - frame.y_offset, pixels + std::ptrdiff_t{4} * frame.x_offset);
        });
        if (!whole) why = Damaged;
        return whole;
    }

  private:
    std::string path_;
};

} // namespace

std::unique_ptr<LinuxPicture> OpenWebp(const std::string& path, std::string& why) {
    const Container container(path, why);
    if (!container.Found() || !SensibleSize(container.Size(), why)) return nullptr;
    return std::make_unique<WebpPicture>(path, container);
}

} // namespace quorvane
