#include "platform/linux/drawing/resample.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace quorvane {
namespace {

// Four channels of a pixel in one register.
using Lanes = float __attribute__((vector_size(16)));
using WholeLanes = std::int32_t __attribute__((vector_size(16)));

// The weights of one output place as whole numbers that add up to AxisWeights::total: each is the difference
// of two rounded running sums, so that no rounding error grows.
void AppendWeights(AxisWeights& axis, int first, const std::vector<double>& shares) {
    double sum = 0, running = 0;
    for (const double share : shares)
        sum += share;
    int before = 0;
    axis.first.push_back(first);
    for (const double share : shares) {
        running += share;
        const int after = static_cast<int>(std::lround(running / sum * AxisWeights::total));
        axis.weights.push_back(static_cast<std::uint16_t>(after - before));
        before = after;
    }
    axis.start.push_back(static_cast<std::uint32_t>(axis.weights.size()));
}

} // namespace

AxisWeights MakeAxis(int input, int output, int from, int count) {
    AxisWeights axis;
    axis.start.push_back(0);
    const double step = static_cast<double>(input) / output;
    std::vector<double> shares;
    for (int o = from; o < from + count; ++o) {
        shares.clear();
        if (input > output) {
            const double begin = o * step, end = std::min<double>(begin + step, input);
            const int first = std::min(static_cast<int>(begin), input - 1);
            for (int i = first; i < input && i < end; ++i)
                shares.push_back(std::min<double>(end, i + 1) - std::max<double>(begin, i));
            AppendWeights(axis, first, shares);
        } else {
            const double centre = std::clamp<double>((o + 0.5) * step - 0.5, 0, input - 1);
            const int first = static_cast<int>(centre);
            shares.push_back(1 - (centre - first));
            if (centre > first) shares.push_back(centre - first);
            AppendWeights(axis, first, shares);
        }
    }
    return axis;
}

Resampler::Resampler(PixelSize input, PixelSize output, const PixelRect& part, Sink sink)
    : input_(input)
    , part_(part)
    , sink_(std::move(sink))
    , across_(MakeAxis(input.width, output.width, part.x, part.width))
    , down_(MakeAxis(input.height, output.height, part.y, part.height)) {
    const std::size_t lastColumn = static_cast<std::size_t>(part.width) - 1;
    firstRow_ = inputRow_ = down_.first.front();
    endRow_ = down_.Last(static_cast<std::size_t>(part.height) - 1) + 1;
    firstPixel_ = across_.first.front();
    endPixel_ = across_.Last(lastColumn) + 1;
    for (auto& row : rows_)
        row.resize(static_cast<std::size_t>(input.width) * 4);
    const std::size_t needed = static_cast<std::size_t>(endPixel_ - firstPixel_) * 4;
    sums_.resize(needed);
    wide_.resize(needed);
    out_.resize(static_cast<std::size_t>(part.width) * 4);
    acrossWeights_.reserve(across_.weights.size());
    for (const std::uint16_t weight : across_.weights)
        acrossWeights_.push_back(static_cast<float>(weight) / (AxisWeights::total * AxisWeights::total));
}

void Resampler::Push() {
    const std::uint8_t* row = rows_[current_].data();
    const std::uint8_t* previous = rows_[1 - current_].data();
    while (nextOut_ < part_.height) {
        const std::size_t o = static_cast<std::size_t>(nextOut_);
        const int first = down_.first[o], last = down_.Last(o);
        if (first > inputRow_) break;
        // Only enlargement comes back to a row that has gone by, and only to the last one.
        if (fresh_ && first < inputRow_) Add(previous, down_.weights[down_.start[o]]);
        if (last >= inputRow_)
            Add(row, down_.weights[down_.start[o] + static_cast<std::uint32_t>(inputRow_ - first)]);
        if (last > inputRow_) break;
        Emit();
        ++nextOut_;
        fresh_ = true;
    }
    ++inputRow_;
    current_ = 1 - current_;
}

void Resampler::Add(const std::uint8_t* row, std::uint32_t weight) {
    const std::uint8_t* __restrict in = row + static_cast<std::size_t>(firstPixel_) * 4;
    std::uint16_t* __restrict sums = sums_.data();
    const auto factor = static_cast<std::uint16_t>(weight);
    const std::size_t count = sums_.size();
    if (fresh_) {
        for (std::size_t i = 0; i < count; ++i)
            sums[i] = static_cast<std::uint16_t>(in[i] * factor);
    } else {
        for (std::size_t i = 0; i < count; ++i)
            sums[i] = static_cast<std::uint16_t>(sums[i] + in[i] * factor);
    }
    fresh_ = false;
}

void Resampler::Emit() {
    const std::size_t count = sums_.size();
    const std::uint16_t* __restrict sums = sums_.data();
    float* __restrict wide = wide_.data();
    for (std::size_t i = 0; i < count; ++i)
        wide[i] = static_cast<float>(sums[i]);

    std::uint8_t* out = out_.data();
    const float* weights = acrossWeights_.data();
    for (std::size_t o = 0; o < static_cast<std::size_t>(part_.width); ++o) {
        const float* in = wide + static_cast<std::size_t>(across_.first[o] - firstPixel_) * 4;
        Lanes sum = {0.5F, 0.5F, 0.5F, 0.5F};
        for (std::uint32_t taps = across_.start[o + 1] - across_.start[o]; taps > 0; --taps, in += 4) {
            Lanes pixel;
            std::memcpy(&pixel, in, sizeof pixel);
            sum += pixel * *weights++;
        }
        const WholeLanes whole = __builtin_convertvector(sum, WholeLanes);
        for (std::size_t channel = 0; channel < 4; ++channel)
            *out++ = static_cast<std::uint8_t>(whole[channel]);
    }
    sink_(nextOut_, out_.data());
}

} // namespace quorvane
