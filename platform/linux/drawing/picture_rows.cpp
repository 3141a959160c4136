#include "platform/linux/drawing/picture_rows.h"

#include "platform/painting/resample.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace quorvane {
namespace {

constexpr std::size_t BandBytes = std::size_t{12} << 20;
constexpr int MostSweeps = 8; // a file of few bytes can stand for a picture that would take hours

Resampler MakeResampler(PixelSize size, RowPainter& painter) {
    return {size, painter.StoredSize(), painter.StoredPart(),
            [&painter](int row, const std::uint8_t* pixels) { painter.Put(row, pixels); }};
}

} // namespace

bool PaintRows(PixelSize size, RowPainter& painter, const RowReader& read) {
    Resampler resampler = MakeResampler(size, painter);
    for (int y = resampler.FirstRow(); !resampler.Done() && y < resampler.EndRow(); ++y) {
        if (!read(y, resampler.InputRow())) return false;
        resampler.Push();
    }
    return true;
}

bool PaintBands(PixelSize size, RowPainter& painter, const BandReader& sweep) {
    const std::size_t rowBytes = static_cast<std::size_t>(size.width) * 4;
    const int most = std::max(static_cast<int>(BandBytes / rowBytes), size.height / MostSweeps + 1);
    std::vector<std::uint8_t> band;
    int from = 0, end = 0;
    return PaintRows(size, painter, [&](int y, std::uint8_t* pixels) {
        if (y >= end) {
            from = y;
            end = std::min(y + most, size.height);
            band.assign(rowBytes * static_cast<std::size_t>(end - from), 0);
            if (!sweep(from, end - from, band.data())) return false;
        }
        std::memcpy(pixels, &band[rowBytes * static_cast<std::size_t>(y - from)], rowBytes);
        return true;
    });
}

void Premultiply(std::uint8_t* pixels, int count) {
    for (; count > 0; --count, pixels += 4) {
        const unsigned int opacity = pixels[3];
        for (int channel = 0; channel < 3; ++channel) {
            const unsigned int product = pixels[channel] * opacity;
            pixels[channel] = static_cast<std::uint8_t>((product + (product >> 8) + 0x80) >> 8);
        }
    }
}

} // namespace quorvane
