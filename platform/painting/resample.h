#pragma once

#include "platform/drawing.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace quorvane {

// One axis of a change of size. Output place `o` is the weighted sum of the input places from `first[o]` on;
// its weights stand in `weights` from `start[o]` to `start[o + 1]`, and add up to the total asked for.
// Reduction takes the mean of the area that a pixel covers, enlargement runs linearly between the centres of
// two neighbours.
struct AxisWeights {
    std::vector<int> first;
    std::vector<std::uint32_t> start;
    std::vector<std::uint16_t> weights;

    int Last(std::size_t o) const { return first[o] + static_cast<int>(start[o + 1] - start[o]) - 1; }
};

// The weights of the output places `from` to `from + count` alone, of `output` that `input` places become.
AxisWeights MakeAxis(int input, int output, int from, int count, int total);

// Changes the size of a picture whose rows come one after the other from the top, without ever holding more
// than two of them. A pixel is four bytes, colour premultiplied by the fourth where there is transparency.
class Resampler {
  public:
    // Gets the rows of `part`, which lies within `output`, from the top: `row` counts from 0, `pixels` holds
    // part.width pixels and is valid during the call.
    using Sink = std::function<void(int row, const std::uint8_t* pixels)>;

    Resampler(PixelSize input, PixelSize output, const PixelRect& part, Sink sink);

    // The input rows that `part` needs; those outside need not be pushed.
    int FirstRow() const { return firstRow_; }
    int EndRow() const { return endRow_; }
    bool Done() const { return nextOut_ == part_.height; }

    // Room for one input row, to be filled before Push.
    std::uint8_t* InputRow() { return RowBytes(current_); }
    // Takes the row in, which is FirstRow() at the first call and one farther at each that follows.
    void Push();

  private:
    struct alignas(64) CacheLine {
        std::uint8_t bytes[64];
    };
    // A decoder writes past the cache where a row begins on one of the widest vectors: it does not know that
    // the row is read at once.
    static constexpr std::size_t RowStart = 16;

    std::uint8_t* RowBytes(std::size_t row) { return rows_[row].data()->bytes + RowStart; }
    void Add(const std::uint8_t* row, std::uint16_t weight);
    void Emit();
    void PrepareAcross(const AxisWeights& across);

    PixelRect part_;
    Sink sink_;
    AxisWeights down_;
    int firstRow_ = 0;
    int endRow_ = 0;
    int inputRow_ = 0; // of the row that Push takes in next
    int nextOut_ = 0;
    int firstPixel_ = 0;     // of the input pixels that `part` needs
    std::size_t needed_ = 0; // channels of them
    bool begun_ = false;     // a row belongs to the output row under way
    // The first row of the output row under way, until a second comes: both are summed in one go.
    const std::uint8_t* waiting_ = nullptr;
    std::uint16_t waitingWeight_ = 0;
    std::size_t current_ = 0;
    std::vector<CacheLine> rows_[2];
    std::vector<std::uint16_t> sums_; // of one output row, before its width is changed
    std::size_t groups_ = 0;          // of input pixels that each output pixel is summed from
    std::vector<std::uint16_t> acrossWeights_;
    std::vector<std::uint32_t> acrossFirst_; // where in sums_ each output pixel's first group begins
    std::vector<std::uint8_t> out_;          // of an even number of pixels, as what stands across is
};

} // namespace quorvane
