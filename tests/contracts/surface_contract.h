#pragma once

// What every platform's surfaces have to keep to. A platform's test includes this header once and names its
// Drawing: INSTANTIATE_TEST_SUITE_P(Linux, SurfaceContract, testing::Values(&MakeLinuxDrawing)).

#include "platform/drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

class SurfaceContract : public testing::TestWithParam<std::unique_ptr<Drawing> (*)()> {
  protected:
    std::unique_ptr<Surface> Make(int width, int height) { return drawing->CreateSurface({width, height}); }

    static Color At(const PixelView& pixels, int x, int y) {
        const std::uint8_t* pixel = pixels.Row(y) + 3 * x;
        return Rgb(pixel[2], pixel[1], pixel[0]);
    }

    static GradientVertex Vertex(int x, int y, Color color) {
        const auto channel = [](int value) { return static_cast<std::int16_t>(value * 256); };
        return {x, y, channel(Red(color)), channel(Green(color)), channel(Blue(color)), 255};
    }

    static void ExpectNear(Color actual, double red, double green, double blue, const std::string& where) {
        EXPECT_NEAR(Red(actual), red, 1.01) << where;
        EXPECT_NEAR(Green(actual), green, 1.01) << where;
        EXPECT_NEAR(Blue(actual), blue, 1.01) << where;
    }

    // The smallest rectangle round all pixels of another colour than `ground`.
    static PixelRect Painted(const PixelView& pixels, Color ground) {
        int left = pixels.size.width, top = pixels.size.height, right = 0, bottom = 0;
        for (int y = 0; y < pixels.size.height; ++y) {
            for (int x = 0; x < pixels.size.width; ++x) {
                if (At(pixels, x, y) == ground) continue;
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x + 1);
                bottom = std::max(bottom, y + 1);
            }
        }
        if (right == 0) return {};
        return {left, top, right - left, bottom - top};
    }

    std::unique_ptr<Drawing> drawing = GetParam()();
};

TEST_P(SurfaceContract, BeginsBlackAndFillsWhatLiesInside) {
    const auto surface = Make(21, 13); // no multiple of four bytes a row
    EXPECT_EQ(surface->Size(), (PixelSize{21, 13}));
    EXPECT_EQ(Painted(surface->Pixels(), Rgb(0, 0, 0)), PixelRect{});
    surface->Fill({5, 6, 4, 3}, Rgb(10, 200, 30));
    EXPECT_EQ(Painted(surface->Pixels(), Rgb(0, 0, 0)), (PixelRect{5, 6, 4, 3}));
    EXPECT_EQ(At(surface->Pixels(), 5, 6), Rgb(10, 200, 30));
    surface->Fill({-5, 10, 8, 100}, Rgb(1, 2, 3));
    surface->Fill({21, 0, 5, 5}, Rgb(255, 255, 255));
    surface->Fill({0, -9, 5, 9}, Rgb(255, 255, 255));
    EXPECT_EQ(Painted(surface->Pixels(), Rgb(0, 0, 0)), (PixelRect{0, 6, 9, 7}));
    EXPECT_EQ(At(surface->Pixels(), 2, 12), Rgb(1, 2, 3));
    EXPECT_EQ(At(surface->Pixels(), 3, 12), Rgb(0, 0, 0));
}

TEST_P(SurfaceContract, RectangleGradientsRunFromCornerToCorner) {
    const int width = 200, height = 150;
    const auto surface = Make(width, height);
    const GradientVertex first = Vertex(0, 0, Rgb(255, 0, 40)),
                         second = Vertex(width, height, Rgb(0, 128, 240));
    for (const bool down : {true, false}) {
        surface->GradientRectangle(first, second,
                                   down ? GradientDirection::TopToBottom : GradientDirection::LeftToRight);
        const int length = down ? height : width;
        for (int at = 0; at < length; at += 7) {
            const double part = static_cast<double>(at) / length;
            const std::string where = (down ? "row " : "column ") + std::to_string(at);
            const Color edge = At(surface->Pixels(), down ? 0 : at, down ? at : 0);
            ExpectNear(edge, 255 - 255 * part, 128 * part, 40 + 200 * part, where);
            EXPECT_EQ(At(surface->Pixels(), down ? width - 1 : at, down ? at : height - 1), edge) << where;
        }
        EXPECT_EQ(At(surface->Pixels(), 0, 0), Rgb(255, 0, 40));
    }
}

TEST_P(SurfaceContract, RectangleGradientIsCutAtTheSurface) {
    const auto surface = Make(50, 40);
    surface->GradientRectangle(Vertex(-10, 10, Rgb(0, 0, 0)), Vertex(90, 20, Rgb(200, 200, 200)),
                               GradientDirection::LeftToRight);
    ExpectNear(At(surface->Pixels(), 0, 10), 20, 20, 20, "left edge");
    ExpectNear(At(surface->Pixels(), 49, 19), 118, 118, 118, "right edge");
    EXPECT_EQ(At(surface->Pixels(), 49, 9), Rgb(0, 0, 0));
    EXPECT_EQ(At(surface->Pixels(), 49, 20), Rgb(0, 0, 0));
}

TEST_P(SurfaceContract, TriangleTakesItsCornersColours) {
    const int width = 240, height = 160;
    const auto surface = Make(width, height);
    surface->GradientTriangle(Vertex(0, 0, Rgb(255, 0, 0)), Vertex(width, 0, Rgb(0, 255, 0)),
                              Vertex(0, height, Rgb(0, 0, 255)));
    EXPECT_EQ(At(surface->Pixels(), 0, 0), Rgb(255, 0, 0));
    for (int y = 0; y < height; y += 13) {
        for (int x = 0; x * height + y * width < width * height; x += 11) {
            const double toGreen = static_cast<double>(x) / width, toBlue = static_cast<double>(y) / height;
            ExpectNear(At(surface->Pixels(), x, y), 255 * (1 - toGreen - toBlue), 255 * toGreen, 255 * toBlue,
                       std::to_string(x) + "," + std::to_string(y));
        }
    }
    EXPECT_EQ(At(surface->Pixels(), width - 1, height - 1), Rgb(0, 0, 0));
}

TEST_P(SurfaceContract, TwoTrianglesShareEachPixelOfTheirEdge) {
    for (const PixelSize size : {PixelSize{64, 64}, {97, 31}, {31, 97}, {1, 9}, {644, 484}}) {
        const Color ground = Rgb(0, 0, 0), one = Rgb(255, 255, 255);
        const auto first = Make(size.width, size.height), second = Make(size.width, size.height);
        first->GradientTriangle(Vertex(0, 0, one), Vertex(size.width, 0, one), Vertex(0, size.height, one));
        second->GradientTriangle(Vertex(size.width, 0, one), Vertex(0, size.height, one),
                                 Vertex(size.width, size.height, one));
        const PixelView a = first->Pixels(), b = second->Pixels();
        int gaps = 0, doubled = 0;
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                const bool inFirst = At(a, x, y) != ground, inSecond = At(b, x, y) != ground;
                gaps += !inFirst && !inSecond;
                doubled += inFirst && inSecond;
            }
        }
        EXPECT_EQ(gaps, 0) << size.width << "x" << size.height;
        EXPECT_EQ(doubled, 0) << size.width << "x" << size.height;
    }
}

TEST_P(SurfaceContract, FourColoursJoinWithoutAStep) {
    const int width = 321, height = 203;
    const auto surface = Make(width, height);
    const GradientVertex right = Vertex(width, 0, Rgb(250, 40, 90)),
                         left = Vertex(0, height, Rgb(30, 220, 120));
    surface->GradientTriangle(Vertex(0, 0, Rgb(255, 255, 0)), right, left);
    surface->GradientTriangle(right, left, Vertex(width, height, Rgb(0, 0, 255)));
    const PixelView pixels = surface->Pixels();
    int widest = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 1; x < width; ++x) {
            const Color before = At(pixels, x - 1, y), here = At(pixels, x, y);
            widest = std::max({widest, std::abs(Red(before) - Red(here)),
                               std::abs(Green(before) - Green(here)), std::abs(Blue(before) - Blue(here))});
        }
    }
    EXPECT_LE(widest, 2);
}

TEST_P(SurfaceContract, LinesCoverWhatLiesWithinHalfTheirWidth) {
    const auto surface = Make(40, 30);
    const Color white = Rgb(255, 255, 255);
    surface->Line(5, 10, 15, 10, 2, white); // rows 9 and 10 whole
    EXPECT_EQ(At(surface->Pixels(), 10, 9), white);
    EXPECT_EQ(At(surface->Pixels(), 10, 10), white);
    EXPECT_EQ(At(surface->Pixels(), 10, 8), Rgb(0, 0, 0));
    EXPECT_EQ(At(surface->Pixels(), 10, 11), Rgb(0, 0, 0));
    surface->Line(30.5, 2, 30.5, 28, 1.5, white);
    EXPECT_EQ(At(surface->Pixels(), 30, 15), white);
    ExpectNear(At(surface->Pixels(), 29, 15), 64, 64, 64, "a quarter of a pixel beside");
    ExpectNear(At(surface->Pixels(), 31, 15), 64, 64, 64, "a quarter of a pixel beside");
    surface->Fill({0, 0, 40, 30}, 0);
    surface->Line(-100, -100, 200, 200, 3, Rgb(200, 100, 0)); // along the diagonal, cut at the surface
    for (int i = 0; i < 30; ++i) {
        const std::string where = "diagonal at " + std::to_string(i);
        EXPECT_EQ(At(surface->Pixels(), i, i), Rgb(200, 100, 0)) << where;
        if (i < 27) {
            ExpectNear(At(surface->Pixels(), i + 2, i), 200 * 0.586, 100 * 0.586, 0, where);
            EXPECT_EQ(At(surface->Pixels(), i + 3, i), Rgb(0, 0, 0)) << where;
        }
    }
}

TEST_P(SurfaceContract, ALineWithoutLengthIsADotAndOneWithoutAPlaceIsNothing) {
    const auto surface = Make(20, 20);
    surface->Line(10, 10, 10, 10, 4, Rgb(255, 255, 255));
    EXPECT_EQ(Painted(surface->Pixels(), Rgb(0, 0, 0)), (PixelRect{8, 8, 4, 4}));
    surface->Fill({0, 0, 20, 20}, 0);
    surface->Line(1e300, 0, std::nan(""), 20, 3, Rgb(255, 255, 255));
    surface->Line(0, 0, 20, 20, -1, Rgb(255, 255, 255));
    surface->Line(0, 0, 20, 20, std::nan(""), Rgb(255, 255, 255));
    EXPECT_EQ(Painted(surface->Pixels(), Rgb(0, 0, 0)), PixelRect{});
}

TEST_P(SurfaceContract, TextTakesTheRoomThatWasMeasured) {
    const auto surface = Make(400, 80);
    const FontSpec font{"Liberation Sans", 12, false, false, false, false};
    const double width = surface->TextWidth(font, "Maximum"), height = surface->TextHeight(font);
    EXPECT_GT(width, 20);
    EXPECT_GT(height, 8);
    surface->PrintText(30, 20, font, Rgb(255, 255, 255), "Maximum");
    const PixelRect painted = Painted(surface->Pixels(), Rgb(0, 0, 0));
    EXPECT_NEAR(painted.x, 30, 3);
    EXPECT_NEAR(painted.x + painted.width, 30 + width, 3);
    EXPECT_GE(painted.y, 19);
    EXPECT_LE(painted.y + painted.height, 21 + height);
    EXPECT_GT(painted.height, height / 3);
}

TEST_P(SurfaceContract, TextWidthsAddUp) {
    const auto surface = Make(10, 10);
    const FontSpec font{"Liberation Sans", 10, false, false, false, false};
    EXPECT_EQ(surface->TextWidth(font, ""), 0);
    const double one = surface->TextWidth(font, "12");
    EXPECT_NEAR(surface->TextWidth(font, "12121212"), 4 * one, 2);
    EXPECT_NEAR(surface->TextWidth(font, "12  12"), 2 * one + surface->TextWidth(font, "  "), 2);
    EXPECT_GT(surface->TextWidth(font, "  "), 0);
    FontSpec larger = font;
    larger.size = 20;
    EXPECT_NEAR(surface->TextWidth(larger, "1212"), 2 * surface->TextWidth(font, "1212"), 4);
    EXPECT_GT(surface->TextHeight(larger), 1.5 * surface->TextHeight(font));
}

TEST_P(SurfaceContract, TextIsCutAtTheSurface) {
    const auto surface = Make(30, 12);
    const FontSpec font{"Liberation Sans", 12, true, true, true, true};
    surface->PrintText(-20, -6, font, Rgb(255, 255, 255), "A long line of text that runs off the surface");
    surface->PrintText(1e9, -1e9, font, Rgb(255, 255, 255), "nowhere");
    EXPECT_FALSE(Painted(surface->Pixels(), Rgb(0, 0, 0)) == PixelRect{});
}

TEST_P(SurfaceContract, TwipsComeFromTheResolutionAndSurfacesHavePixels) {
    EXPECT_EQ(drawing->CreateSurface({0, 5}), nullptr);
    EXPECT_EQ(drawing->CreateSurface({5, -1}), nullptr);
    EXPECT_GT(drawing->TwipsPerPixelX(), 1);
    EXPECT_LE(drawing->TwipsPerPixelX(), 20);
    EXPECT_GT(drawing->TwipsPerPixelY(), 1);
}

} // namespace quorvane
