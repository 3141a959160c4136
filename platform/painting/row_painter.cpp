#include "platform/painting/row_painter.h"

#include <cstring>
#include <utility>

namespace quorvane {
namespace {

constexpr int KGather = 16;

#if defined(__x86_64__) && defined(__ELF__) // the loader chooses, and only this one can
#define QUORVANE_SHUFFLE_LOOP __attribute__((target_clones("avx2", "ssse3", "default")))
#else
#define QUORVANE_SHUFFLE_LOOP
#endif

using Bytes = std::uint8_t __attribute__((vector_size(16)));

// Four pixels at a time while what is stored too much is overwritten by the next ones, then one by one.
QUORVANE_SHUFFLE_LOOP
void CopyPixels(std::uint8_t* out, const std::uint8_t* in, int count) {
    for (; count >= 6; count -= 4, out += 12, in += 16) {
        Bytes pixels;
        std::memcpy(&pixels, in, sizeof pixels);
        pixels =
            __builtin_shufflevector(pixels, pixels, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15);
        std::memcpy(out, &pixels, sizeof pixels);
    }
    for (; count > 0; --count, out += 3, in += 4)
        std::memcpy(out, in, 3);
}

void BlendPixels(std::uint8_t* out, const std::uint8_t* in, int count) {
    for (int i = 0; i < count; ++i, out += 3, in += 4) {
        const int shine = 255 - in[3];
        for (int channel = 0; channel < 3; ++channel) {
            const int level = in[channel] + (out[channel] * shine + 127) / 255;
            out[channel] = static_cast<std::uint8_t>(level > 255 ? 255 : level);
        }
    }
}

// Onto the bytes of pixels in a row of a canvas.
void PutRun(std::uint8_t* row, int x, const std::uint8_t* pixels, int count, RowPainter::Mode mode) {
    switch (mode) {
    case RowPainter::Mode::Copy:
        CopyPixels(row + std::ptrdiff_t{3} * x, pixels, count);
        break;
    case RowPainter::Mode::Blend:
        BlendPixels(row + std::ptrdiff_t{3} * x, pixels, count);
        break;
    case RowPainter::Mode::Keep:
        std::memcpy(row + std::ptrdiff_t{4} * x, pixels, static_cast<std::size_t>(count) * 4);
        break;
    }
}

} // namespace

RowPainter::RowPainter(const Canvas& canvas, const PixelRect& target, Orientation orientation, Mode mode)
    : RowPainter(
          canvas.size, [canvas](int y) { return canvas.Row(y); }, target, orientation, mode) {}

RowPainter::RowPainter(PixelSize canvas, Rows rows, const PixelRect& target, Orientation orientation,
                       Mode mode)
    : rows_(std::move(rows))
    , visible_(Clip(target, canvas))
    , orientation_(orientation)
    , mode_(mode) {
    const int left = visible_.x - target.x, top = visible_.y - target.y;
    const int x = orientation.mirrorX ? target.width - left - visible_.width : left;
    const int y = orientation.mirrorY ? target.height - top - visible_.height : top;
    storedSize_ = orientation.Upright({target.width, target.height});
    if (orientation.transposed) {
        storedPart_ = {y, x, visible_.height, visible_.width};
        gathered_.resize(static_cast<std::size_t>(visible_.height) * KGather * 4);
    } else {
        storedPart_ = {x, y, visible_.width, visible_.height};
        if (orientation.mirrorX) reversed_.resize(static_cast<std::size_t>(visible_.width) * 4);
    }
}

void RowPainter::PutPixels(int x, int y, const std::uint8_t* pixels, int count) {
    PutRun(rows_(visible_.y + y), visible_.x + x, pixels, count, mode_);
}

void RowPainter::Put(int row, const std::uint8_t* pixels) {
    if (!orientation_.transposed) {
        const int y = orientation_.mirrorY ? visible_.height - 1 - row : row;
        if (orientation_.mirrorX) {
            const std::size_t count = static_cast<std::size_t>(visible_.width);
            for (std::size_t i = 0; i < count; ++i)
                std::memcpy(&reversed_[4 * (count - 1 - i)], pixels + 4 * i, 4);
            pixels = reversed_.data();
        }
        PutPixels(0, y, pixels, visible_.width);
        return;
    }
    if (gatheredCount_ == 0) gatheredFrom_ = row;
    const std::size_t place =
        static_cast<std::size_t>(orientation_.mirrorX ? KGather - 1 - gatheredCount_ : gatheredCount_);
    for (std::size_t i = 0; i < static_cast<std::size_t>(visible_.height); ++i)
        std::memcpy(&gathered_[4 * (KGather * i + place)], pixels + 4 * i, 4);
    if (++gatheredCount_ == KGather) Finish();
}

void RowPainter::Finish() {
    if (gatheredCount_ == 0) return;
    const int last = gatheredFrom_ + gatheredCount_ - 1;
    const int x = orientation_.mirrorX ? visible_.width - 1 - last : gatheredFrom_;
    const std::size_t skipped = static_cast<std::size_t>(orientation_.mirrorX ? KGather - gatheredCount_ : 0);
    for (int i = 0; i < visible_.height; ++i) {
        const int y = orientation_.mirrorY ? visible_.height - 1 - i : i;
        PutPixels(x, y, &gathered_[4 * (KGather * static_cast<std::size_t>(i) + skipped)], gatheredCount_);
    }
    gatheredCount_ = 0;
}

void LayDown(const std::uint8_t* pixels, const Canvas& canvas, const PixelRect& target,
             RowPainter::Mode mode) {
    const PixelRect part = Clip(target, canvas.Area());
    for (int y = part.y; y < part.y + part.height; ++y) {
        const std::ptrdiff_t from =
            static_cast<std::ptrdiff_t>(y - target.y) * target.width + (part.x - target.x);
        PutRun(canvas.Row(y), part.x, pixels + 4 * from, part.width, mode);
    }
}

} // namespace quorvane
