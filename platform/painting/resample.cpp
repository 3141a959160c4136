#include "platform/painting/resample.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#if defined(__x86_64__) && defined(__ELF__) // the loader chooses among clones, and only this one can
#define QUORVANE_WIDE_VECTORS
#endif

namespace quorvane {
namespace {

// Sums of a column lie between 0 and 255 * DownTotal and fit 16 bits. A product with a weight of the row is
// cut to its high 16 bits, which a vector unit does in one step; the half that rounds makes up for what is
// cut.
constexpr int DownTotal = 256;
constexpr int AcrossTotal = 65535;
constexpr std::uint16_t Half = DownTotal / 2;
constexpr std::size_t Pixels = 4; // of input that are summed at a time
constexpr std::size_t Group = 4 * Pixels;
using Words = std::uint16_t __attribute__((vector_size(16)));
using WideWords = std::uint16_t __attribute__((vector_size(32)));
using Bytes = std::uint8_t __attribute__((vector_size(8)));

// The loops that the time goes into, once for every processor and once for those with wide vectors, which the
// compiler makes of the same lines where it finds the steps.
#ifdef QUORVANE_WIDE_VECTORS
#define QUORVANE_VECTOR_LOOP __attribute__((target_clones("avx2", "default")))
#else
#define QUORVANE_VECTOR_LOOP
#endif

QUORVANE_VECTOR_LOOP
void AddWeighted(std::uint16_t* __restrict sums, const std::uint8_t* __restrict row, std::uint16_t weight,
                 std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        sums[i] = static_cast<std::uint16_t>(sums[i] + row[i] * weight);
}

// The sums of two rows, where there is none yet.
QUORVANE_VECTOR_LOOP
void SetWeighted(std::uint16_t* __restrict sums, const std::uint8_t* __restrict one, std::uint16_t weight,
                 const std::uint8_t* __restrict other, std::uint16_t otherWeight, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        sums[i] = static_cast<std::uint16_t>(one[i] * weight + other[i] * otherWeight);
}

// Output pixels, each from `groups` groups of input pixels that begin at its place in `first`. Their number
// is even.
void SumAcross(std::uint8_t* __restrict out, const std::uint16_t* __restrict sums,
               const std::uint16_t* __restrict weights, const std::uint32_t* __restrict first,
               std::size_t groups, std::size_t width) {
    for (std::size_t o = 0; o < width; ++o, out += 4) {
        const std::uint16_t* __restrict in = sums + first[o];
        std::uint16_t sum[Group] = {Half, Half, Half, Half};
        for (std::size_t group = groups; group > 0; --group, in += Group, weights += Group)
            for (std::size_t i = 0; i < Group; ++i)
                sum[i] = static_cast<std::uint16_t>(sum[i] + (std::uint32_t{in[i]} * weights[i] >> 16));
        // The four pixels together; said as a shuffle, or the compiler takes them apart one by one.
        Words left, right;
        std::memcpy(&left, sum, sizeof left);
        std::memcpy(&right, sum + Group / 2, sizeof right);
        left += right;
        left += __builtin_shufflevector(left, left, 4, 5, 6, 7, 4, 5, 6, 7);
        const Bytes pixel = __builtin_convertvector(left >> 8, Bytes);
        std::memcpy(out, &pixel, 4);
    }
}

#ifdef QUORVANE_WIDE_VECTORS
// The high halves of the products of a group.
__attribute__((target("avx2"))) inline WideWords Products(const std::uint16_t* sums,
                                                          const std::uint16_t* weights) {
    std::uint16_t products[Group];
    for (std::size_t i = 0; i < Group; ++i)
        products[i] = static_cast<std::uint16_t>(std::uint32_t{sums[i]} * weights[i] >> 16);
    WideWords words;
    std::memcpy(&words, products, sizeof words);
    return words;
}

// The same two pixels at a time, in steps that a compiler does not find by itself.
__attribute__((target("avx2"))) void SumAcrossWide(std::uint8_t* __restrict out,
                                                   const std::uint16_t* __restrict sums,
                                                   const std::uint16_t* __restrict weights,
                                                   const std::uint32_t* __restrict first, std::size_t groups,
                                                   std::size_t width) {
    const std::size_t step = groups * Group; // from one pixel's weights to the next one's
    for (std::size_t o = 0; o < width; o += 2, out += 8, weights += 2 * step) {
        const std::uint16_t *left = sums + first[o], *right = sums + first[o + 1];
        WideWords leftSum = Products(left, weights), rightSum = Products(right, weights + step);
        for (std::size_t i = Group; i < step; i += Group) {
            leftSum += Products(left + i, weights + i);
            rightSum += Products(right + i, weights + step + i);
        }
        // The four input pixels of each together, by halves.
        const WideWords pairs = __builtin_shufflevector(leftSum, rightSum, 0, 1, 2, 3, 16, 17, 18, 19, 8, 9,
                                                        10, 11, 24, 25, 26, 27) +
                                __builtin_shufflevector(leftSum, rightSum, 4, 5, 6, 7, 20, 21, 22, 23, 12, 13,
                                                        14, 15, 28, 29, 30, 31);
        const Words both = __builtin_shufflevector(pairs, pairs, 0, 1, 2, 3, 4, 5, 6, 7) +
                           __builtin_shufflevector(pairs, pairs, 8, 9, 10, 11, 12, 13, 14, 15) + Half;
        const Bytes pixels = __builtin_convertvector(both >> 8, Bytes);
        std::memcpy(out, &pixels, sizeof pixels);
    }
}
#endif

// The weights of one output place as whole numbers that add up to `total`: each is the difference of two
// rounded running sums, so that no rounding error grows.
void AppendWeights(AxisWeights& axis, int first, const std::vector<double>& shares, int total) {
    double sum = 0, running = 0;
    for (const double share : shares)
        sum += share;
    int before = 0;
    axis.first.push_back(first);
    for (const double share : shares) {
        running += share;
        const int after = static_cast<int>(std::lround(running / sum * total));
        axis.weights.push_back(static_cast<std::uint16_t>(after - before));
        before = after;
    }
    axis.start.push_back(static_cast<std::uint32_t>(axis.weights.size()));
}

} // namespace

AxisWeights MakeAxis(int input, int output, int from, int count, int total) {
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
            AppendWeights(axis, first, shares, total);
        } else {
            const double centre = std::clamp<double>((o + 0.5) * step - 0.5, 0, input - 1);
            const int first = static_cast<int>(centre);
            shares.push_back(1 - (centre - first));
            if (centre > first) shares.push_back(centre - first);
            AppendWeights(axis, first, shares, total);
        }
    }
    return axis;
}

Resampler::Resampler(PixelSize input, PixelSize output, const PixelRect& part, Sink sink)
    : part_(part)
    , sink_(std::move(sink))
    , down_(MakeAxis(input.height, output.height, part.y, part.height, DownTotal)) {
    firstRow_ = inputRow_ = down_.first.front();
    endRow_ = down_.Last(static_cast<std::size_t>(part.height) - 1) + 1;
    for (auto& row : rows_)
        row.resize((RowStart + static_cast<std::size_t>(input.width) * 4) / sizeof(CacheLine) + 1);
    PrepareAcross(MakeAxis(input.width, output.width, part.x, part.width, AcrossTotal));
}

void Resampler::PrepareAcross(const AxisWeights& across) {
    const std::size_t width = across.first.size();
    std::size_t taps = 0;
    for (std::size_t o = 0; o < width; ++o)
        taps = std::max<std::size_t>(taps, across.start[o + 1] - across.start[o]);
    groups_ = (taps + Pixels - 1) / Pixels;
    firstPixel_ = across.first.front();
    needed_ = static_cast<std::size_t>(across.Last(width - 1) + 1 - firstPixel_) * 4;
    sums_.resize(needed_ + groups_ * Group);
    const std::size_t even = width + width % 2; // what is too much weighs nothing
    out_.resize(even * 4);
    acrossFirst_.resize(even);
    acrossWeights_.resize(even * groups_ * Group);
    for (std::size_t o = 0; o < width; ++o) {
        acrossFirst_[o] = static_cast<std::uint32_t>(across.first[o] - firstPixel_) * 4;
        std::uint16_t* weights = &acrossWeights_[o * groups_ * Group];
        for (std::uint32_t i = across.start[o]; i < across.start[o + 1]; ++i, weights += 4)
            std::fill_n(weights, 4, across.weights[i]);
    }
}

void Resampler::Push() {
    const std::uint8_t* row = RowBytes(current_);
    const std::uint8_t* previous = RowBytes(1 - current_);
    while (nextOut_ < part_.height) {
        const std::size_t o = static_cast<std::size_t>(nextOut_);
        const int first = down_.first[o], last = down_.Last(o);
        if (first > inputRow_) break;
        // Only enlargement comes back to a row that has gone by, and only to the last one.
        if (!begun_ && first < inputRow_) Add(previous, down_.weights[down_.start[o]]);
        if (last >= inputRow_)
            Add(row, down_.weights[down_.start[o] + static_cast<std::uint32_t>(inputRow_ - first)]);
        if (last > inputRow_) break;
        Emit();
        ++nextOut_;
        begun_ = false;
    }
    ++inputRow_;
    current_ = 1 - current_;
}

void Resampler::Add(const std::uint8_t* row, std::uint16_t weight) {
    row += static_cast<std::size_t>(firstPixel_) * 4;
    if (waiting_) {
        SetWeighted(sums_.data(), waiting_, waitingWeight_, row, weight, needed_);
        waiting_ = nullptr;
    } else if (begun_) {
        AddWeighted(sums_.data(), row, weight, needed_);
    } else {
        waiting_ = row;
        waitingWeight_ = weight;
    }
    begun_ = true;
}

void Resampler::Emit() {
    if (waiting_) SetWeighted(sums_.data(), waiting_, waitingWeight_, waiting_, 0, needed_);
    waiting_ = nullptr;
    auto* sum = SumAcross;
#ifdef QUORVANE_WIDE_VECTORS
    if (__builtin_cpu_supports("avx2")) sum = SumAcrossWide;
#endif
    sum(out_.data(), sums_.data(), acrossWeights_.data(), acrossFirst_.data(), groups_, acrossFirst_.size());
    sink_(nextOut_, out_.data());
}

} // namespace quorvane
