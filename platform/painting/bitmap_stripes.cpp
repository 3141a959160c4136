#include "platform/painting/bitmap_stripes.h"

#include "platform/files.h"
#include "platform/painting/bitmap_file.h"

#include <algorithm>
#include <utility>

namespace quorvane {

BitmapStripes::BitmapStripes(PixelSize size, FileWriter& out, Plan plan)
    : size_(size)
    , out_(out)
    , plan_(std::move(plan)) {
    const auto header = BitmapHeader(size);
    whole_ = out_.Write(header.data(), header.size());
    Begin(0);
}

void BitmapStripes::Begin(int from) {
    const std::size_t rowBytes = BitmapRowBytes(size_.width);
    const int end = std::clamp(plan_.end(from), from + 1, size_.height);
    bytes_.assign(rowBytes * static_cast<std::size_t>(end - from), 0);
    // In the order of the file, in which the last row is the first.
    stripe_ = {bytes_.data() + bytes_.size() - rowBytes, -static_cast<std::ptrdiff_t>(rowBytes), size_, from,
               end};
    plan_.paintUnder(stripe_);
}

void BitmapStripes::Complete() {
    plan_.paintOver(stripe_);
    const auto below = static_cast<std::uint64_t>(size_.height - stripe_.end);
    const std::uint64_t place = BitmapHeaderBytes + BitmapRowBytes(size_.width) * below;
    whole_ = whole_ && out_.WriteAt(place, bytes_.data(), bytes_.size());
}

std::uint8_t* BitmapStripes::Row(int y) {
    while (y >= stripe_.end) {
        Complete();
        Begin(stripe_.end);
    }
    return stripe_.Row(y);
}

bool BitmapStripes::Finish() {
    Row(size_.height - 1);
    Complete();
    return whole_;
}

Canvas TurnOver(const Canvas& canvas) {
    for (int upper = canvas.from, lower = canvas.end - 1; upper < lower; ++upper, --lower)
        std::swap_ranges(canvas.Row(upper),
                         canvas.Row(upper) + std::size_t{3} * static_cast<std::size_t>(canvas.size.width),
                         canvas.Row(lower));
    return {canvas.Row(canvas.end - 1), -canvas.stride, canvas.size, canvas.from, canvas.end};
}

} // namespace quorvane
