#include "engine/placing.h"

#include "core/run_time_error.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace quorvane {

void PrintTo(const PixelRect& rect, std::ostream* out) {
    *out << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height;
}

namespace {

std::vector<PixelRect> Places(int position, PixelSize target, PixelSize picture) {
    std::vector<PixelRect> places;
    PlacePicture(position, target, picture, [&](const PixelRect& place) { places.push_back(place); });
    return places;
}

using Rects = std::vector<PixelRect>;

// Worked out by hand; at 1920 by 1080 the factor is 1084 / 1080 = 1.0037037...
TEST(Placing, TableOfPositions) {
    const PixelSize screen{1920, 1080};
    // 500 * s = 501.85, 400 * s = 401.48; (1920 - 500) * s / 2 = 712.63, (1080 - 400) * s / 2 = 341.26.
    const Rects centred{{713, 341, 502, 401}};
    EXPECT_EQ(Places(0, screen, {500, 400}), centred);
    EXPECT_EQ(Places(3, screen, {500, 400}), centred);
    // 4000 * s = 4014.81, 3000 * s = 3011.11; -1040 * s = -1043.85, -960 * s = -963.56.
    EXPECT_EQ(Places(0, screen, {4000, 3000}), (Rects{{-1044, -964, 4015, 3011}})) << "cut, not reduced";
    EXPECT_EQ(Places(2, screen, {500, 400}), (Rects{{0, 0, 1924, 1084}}));
    // The same aspect: the height covers the canvas, the width is 1920 * s = 1927.11.
    EXPECT_EQ(Places(4, screen, {16, 9}), (Rects{{0, 0, 1927, 1084}}));
    // Narrower: 1080 / 400 * 500 = 1350 wide, 1354.99 scaled; bars of 285, 286.06 scaled.
    EXPECT_EQ(Places(4, screen, {500, 400}), (Rects{{286, 0, 1355, 1084}}));
    // Wider: 1920 / 3000 * 1000 = 640 high, 642.37 scaled; bars of 220, 220.81 scaled.
    EXPECT_EQ(Places(4, screen, {3000, 1000}), (Rects{{0, 221, 1927, 642}}));
    EXPECT_EQ(Places(5, screen, {500, 400}), Rects{});
    EXPECT_EQ(Places(-1, screen, {500, 400}), Rects{});
}

TEST(Placing, HalvesGoToTheEvenPixel) {
    // Th = 4: the factor is 2, so that every half comes out exactly.
    EXPECT_EQ(Places(0, {8, 4}, {3, 1}), (Rects{{5, 3, 6, 2}}));
    // Th = 8: the factor is 1.5; (8 - 5) * 1.5 / 2 = 2.25, 5 * 1.5 = 7.5; (8 - 3) * 0.75 = 3.75, 4.5.
    EXPECT_EQ(Places(0, {8, 8}, {5, 3}), (Rects{{2, 4, 8, 4}}));
}

TEST(Placing, TilesGoColumnByColumnAndBeyondTheCanvas) {
    // Th = 400: the factor is 1.01. A picture of the target's size.
    const Rects tiles = Places(1, {800, 400}, {800, 400});
    EXPECT_EQ(tiles, (Rects{{0, 0, 808, 404},
                            {0, 404, 808, 404},
                            {0, 808, 808, 404},
                            {808, 0, 808, 404},
                            {808, 404, 808, 404},
                            {808, 808, 808, 404},
                            {1616, 0, 808, 404},
                            {1616, 404, 808, 404},
                            {1616, 808, 808, 404}}));
    // Upright, where the width's margin is wider than the factor: the last column is needed to cover it.
    EXPECT_EQ(Places(1, {500, 1000}, {501, 1000}).back().x, 503) << "the canvas is 504 wide";
}

TEST(Placing, NothingWithoutExtentAndNothingBeyond32Bits) {
    EXPECT_THROW(Places(4, {1920, 1080}, {0, 10}), RunTimeError);
    EXPECT_THROW(Places(1, {1920, 1080}, {10, 0}), RunTimeError);
    EXPECT_THROW(Places(4, {0, 0}, {10, 10}), RunTimeError);
    EXPECT_THROW(Places(0, {1920, 1080}, {2147483647, 1}), RunTimeError);
}

} // namespace
} // namespace quorvane
