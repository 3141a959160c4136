#include "platform/painting/raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace quorvane {
namespace {

constexpr std::size_t KPixelBytes = 3;

// Corners farther out than this are none that a screen has; within it no product below overflows.
constexpr std::int32_t KFarthest = 1 << 27;

bool Reachable(const GradientVertex& vertex) {
    return std::abs(static_cast<std::int64_t>(vertex.x)) < KFarthest &&
           std::abs(static_cast<std::int64_t>(vertex.y)) < KFarthest;
}

void FillRow(std::uint8_t* row, int pixels, Color color) {
    const std::size_t bytes = static_cast<std::size_t>(pixels) * KPixelBytes;
    row[0] = static_cast<std::uint8_t>(Blue(color));
    row[1] = static_cast<std::uint8_t>(Green(color));
    row[2] = static_cast<std::uint8_t>(Red(color));
    for (std::size_t done = KPixelBytes; done < bytes; done *= 2)
        std::memcpy(row + done, row, std::min(done, bytes - done));
}

Color Blend(const GradientVertex& first, const GradientVertex& second, std::int64_t position,
            std::int64_t length) {
    const auto channel = [&](std::int16_t from, std::int16_t to) {
        const std::int64_t sum = ChannelLevel(from) * (length - position) + ChannelLevel(to) * position;
        return static_cast<int>(sum / length / 256);
    };
    return Rgb(channel(first.red, second.red), channel(first.green, second.green),
               channel(first.blue, second.blue));
}

// A colour that changes linearly along x and y, in levels of 0 to 65535, blue first.
struct Plane {
    std::array<double, 3> origin{}; // at (0, 0)
    std::array<double, 3> alongX{};
    std::array<double, 3> alongY{};
};

Plane PlaneThrough(const GradientVertex& a, const GradientVertex& b, const GradientVertex& c) {
    const double abX = b.x - a.x, abY = b.y - a.y, acX = c.x - a.x, acY = c.y - a.y;
    const double area = abX * acY - acX * abY;
    Plane plane;
    const auto set = [&](std::size_t lane, std::int16_t atA, std::int16_t atB, std::int16_t atC) {
        const double level = ChannelLevel(atA);
        const double toB = ChannelLevel(atB) - level, toC = ChannelLevel(atC) - level;
        plane.alongX[lane] = (toB * acY - toC * abY) / area;
        plane.alongY[lane] = (toC * abX - toB * acX) / area;
        plane.origin[lane] = level - plane.alongX[lane] * a.x - plane.alongY[lane] * a.y;
    };
    set(0, a.blue, b.blue, c.blue);
    set(1, a.green, b.green, c.green);
    set(2, a.red, b.red, c.red);
    return plane;
}

// Paints `pixels` pixels of the plane's row `y` from `x` on. It works on blocks of 16 pixels, each byte of a
// block in a lane of its own, so that the compiler makes vector code of it.
void PaintRow(std::uint8_t* row, const Plane& plane, int x, int y, int pixels) {
    constexpr std::size_t KBlock = 16, kLanes = KBlock * KPixelBytes;
    constexpr int KFraction = 22;
    constexpr double KScale = (1 << KFraction) / 256.0;
    // Keeps rounding from pushing a level below the whole number it stands for.
    constexpr double KGuard = (1 << KFraction) / 1024.0;

    std::array<std::uint32_t, kLanes> level, step;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        const std::size_t channel = lane % KPixelBytes;
        const double along = static_cast<double>(lane / KPixelBytes) + x;
        const double value =
            plane.origin[channel] + plane.alongX[channel] * along + plane.alongY[channel] * y;
        level[lane] = static_cast<std::uint32_t>(std::llround(value * KScale + KGuard));
        step[lane] = static_cast<std::uint32_t>(
            std::llround(plane.alongX[channel] * static_cast<double>(KBlock) * KScale));
    }
    std::size_t left = static_cast<std::size_t>(pixels) * KPixelBytes;
    for (; left >= kLanes; left -= kLanes, row += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            row[lane] = static_cast<std::uint8_t>(level[lane] >> KFraction);
            level[lane] += step[lane];
        }
    }
    for (std::size_t lane = 0; lane < left; ++lane)
        row[lane] = static_cast<std::uint8_t>(level[lane] >> KFraction);
}

// Where the edge meets row `y`, to the right if between two pixels. Both triangles of an edge ask for it with
// the same two corners, in whichever order, and get the same answer.
std::int64_t EdgeAt(const GradientVertex& one, const GradientVertex& other, int y) {
    const bool ordered = one.y < other.y;
    const GradientVertex& upper = ordered ? one : other;
    const GradientVertex& lower = ordered ? other : one;
    const std::int64_t height = static_cast<std::int64_t>(lower.y) - upper.y;
    const std::int64_t run =
        (static_cast<std::int64_t>(lower.x) - upper.x) * (static_cast<std::int64_t>(y) - upper.y);
    return upper.x + (run > 0 ? (run + height - 1) / height : run / height);
}

} // namespace

PixelRect Clip(const PixelRect& area, const PixelRect& bounds) {
    const auto end = [](int start, int length) { return std::int64_t{start} + length; };
    const std::int64_t left = std::max(area.x, bounds.x), top = std::max(area.y, bounds.y);
    const std::int64_t right = std::min(end(area.x, area.width), end(bounds.x, bounds.width));
    const std::int64_t bottom = std::min(end(area.y, area.height), end(bounds.y, bounds.height));
    if (left >= right || top >= bottom) return {};
    return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right - left),
            static_cast<int>(bottom - top)};
}

PixelRect Clip(const PixelRect& area, PixelSize size) {
    return Clip(area, PixelRect{0, 0, size.width, size.height});
}

void FillArea(const Canvas& canvas, const PixelRect& area, Color color) {
    const PixelRect part = Clip(area, canvas.Area());
    if (part.width == 0) return;
    const std::ptrdiff_t offset = part.x * static_cast<std::ptrdiff_t>(KPixelBytes);
    const std::uint8_t* first = canvas.Row(part.y) + offset;
    FillRow(canvas.Row(part.y) + offset, part.width, color);
    for (int y = part.y + 1; y < part.y + part.height; ++y)
        std::memcpy(canvas.Row(y) + offset, first, static_cast<std::size_t>(part.width) * KPixelBytes);
}

void FillGradientRectangle(const Canvas& canvas, const GradientVertex& upperLeft,
                           const GradientVertex& lowerRight, GradientDirection direction) {
    if (!Reachable(upperLeft) || !Reachable(lowerRight)) return;
    const bool across = direction == GradientDirection::LeftToRight;
    GradientVertex first = upperLeft, second = lowerRight;
    if (across ? first.x > second.x : first.y > second.y) std::swap(first, second);
    const PixelRect whole{std::min(first.x, second.x), std::min(first.y, second.y),
                          std::abs(second.x - first.x), std::abs(second.y - first.y)};
    const PixelRect part = Clip(whole, canvas.Area());
    if (part.width == 0) return;

    const std::ptrdiff_t offset = part.x * static_cast<std::ptrdiff_t>(KPixelBytes);
    if (!across) {
        for (int y = part.y; y < part.y + part.height; ++y)
            FillRow(canvas.Row(y) + offset, part.width, Blend(first, second, y - whole.y, whole.height));
        return;
    }
    for (int x = part.x; x < part.x + part.width; ++x)
        FillRow(canvas.Row(part.y) + static_cast<std::ptrdiff_t>(KPixelBytes) * x, 1,
                Blend(first, second, x - whole.x, whole.width));
    for (int y = part.y + 1; y < part.y + part.height; ++y)
        std::memcpy(canvas.Row(y) + offset, canvas.Row(part.y) + offset,
                    static_cast<std::size_t>(part.width) * KPixelBytes);
}

void FillGradientTriangle(const Canvas& canvas, const GradientVertex& a, const GradientVertex& b,
                          const GradientVertex& c) {
    if (!Reachable(a) || !Reachable(b) || !Reachable(c)) return;
    std::array<const GradientVertex*, 3> corners{&a, &b, &c};
    std::sort(corners.begin(), corners.end(),
              [](const GradientVertex* one, const GradientVertex* other) { return one->y < other->y; });
    const auto [upper, middle, lower] = corners;
    const Plane plane = PlaneThrough(a, b, c);
    for (int y = std::max(upper->y, canvas.from); y < std::min(lower->y, canvas.end); ++y) {
        const std::int64_t longEdge = EdgeAt(*upper, *lower, y);
        const std::int64_t shortEdge =
            y < middle->y ? EdgeAt(*upper, *middle, y) : EdgeAt(*middle, *lower, y);
        const std::int64_t left =
            std::clamp<std::int64_t>(std::min(longEdge, shortEdge), 0, canvas.size.width);
        const std::int64_t right =
            std::clamp<std::int64_t>(std::max(longEdge, shortEdge), 0, canvas.size.width);
        if (left < right)
            PaintRow(canvas.Row(y) + left * static_cast<std::ptrdiff_t>(KPixelBytes), plane,
                     static_cast<int>(left), y, static_cast<int>(right - left));
    }
}

namespace {

void BlendPixel(std::uint8_t* pixel, Color color, double share) {
    const std::array<int, 3> wanted{Blue(color), Green(color), Red(color)};
    for (std::size_t lane = 0; lane < wanted.size(); ++lane)
        pixel[lane] =
            static_cast<std::uint8_t>(std::lround(pixel[lane] + (wanted[lane] - pixel[lane]) * share));
}

// The whole numbers from `first` up to but not `last` that lie on a side of pixels from `from` up to `end`.
std::pair<int, int> OnSide(double first, double last, double from, double end) {
    return {static_cast<int>(std::clamp(std::floor(first), from, end)),
            static_cast<int>(std::clamp(std::ceil(last), from, end))};
}

} // namespace

// A pixel takes the colour by how far its middle lies inside the edge, which is half a width away from the
// nearest point of the line.
void FillLine(const Canvas& canvas, double x1, double y1, double x2, double y2, double width, Color color) {
    constexpr double Farthest = 1e7;
    for (const double place : {x1, y1, x2, y2}) {
        if (!(std::abs(place) < Farthest)) return;
    }
    if (!(width > 0) || width > Farthest) return;
    const double reach = std::max(width, 1.0) / 2 + 0.5;
    const double most = std::min(width, 1.0);
    const double runX = x2 - x1, runY = y2 - y1;
    const double square = runX * runX + runY * runY;
    const auto [top, bottom] =
        OnSide(std::min(y1, y2) - reach, std::max(y1, y2) + reach, canvas.from, canvas.end);
    for (int y = top; y < bottom; ++y) {
        const double middleY = y + 0.5;
        // The part of the line that is near enough to this row.
        double from = 0, to = 1;
        if (runY != 0) {
            const double one = (middleY - reach - y1) / runY, other = (middleY + reach - y1) / runY;
            from = std::clamp(std::min(one, other), 0.0, 1.0);
            to = std::clamp(std::max(one, other), 0.0, 1.0);
        }
        const double endA = x1 + from * runX, endB = x1 + to * runX;
        const auto [left, right] =
            OnSide(std::min(endA, endB) - reach, std::max(endA, endB) + reach, 0, canvas.size.width);
        std::uint8_t* row = canvas.Row(y);
        for (int x = left; x < right; ++x) {
            const double toX = x + 0.5 - x1, toY = middleY - y1;
            const double along = square > 0 ? std::clamp((toX * runX + toY * runY) / square, 0.0, 1.0) : 0.0;
            const double distance = std::hypot(toX - along * runX, toY - along * runY);
            const double share = std::clamp(reach - distance, 0.0, 1.0) * most;
            if (share > 0) BlendPixel(row + std::ptrdiff_t{3} * x, color, share);
        }
    }
}

} // namespace quorvane
