#pragma once

// What every platform makes of the pictures in files: those of tests/contracts/pictures, a format each, in a
// folder that QUORVANE_PICTURES names. The quarters are red and green above, blue and white below. A
// platform's test includes this header once and names its Drawing: INSTANTIATE_TEST_SUITE_P(Linux,
// PictureContract, testing::Values(&MakeLinuxDrawing)).

#include "platform/drawing.h"
#include "platform/painting/bitmap_file.h"
#include "tests/support/string_writer.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

namespace pictures {

constexpr Color Red255 = Rgb(255, 0, 0), Green255 = Rgb(0, 255, 0), Blue255 = Rgb(0, 0, 255),
                White = Rgb(255, 255, 255);
// Upper left, upper right, lower left, lower right.
using Quarters = std::array<Color, 4>;
constexpr Quarters Upright{Red255, Green255, Blue255, White};

// `tolerance` is what the format's coder may lose of a channel.
struct Sample {
    std::string name;
    PixelSize size;
    int tolerance;
};

inline std::string Content(const std::string& name) {
    std::ifstream file(std::filesystem::path(QUORVANE_PICTURES) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline Color At(const PixelView& pixels, int x, int y) {
    const std::uint8_t* pixel = pixels.Row(y) + 3 * x;
    return Rgb(pixel[2], pixel[1], pixel[0]);
}

inline testing::AssertionResult Near(Color seen, Color wanted, int most) {
    if (std::abs(Red(seen) - Red(wanted)) <= most && std::abs(Green(seen) - Green(wanted)) <= most &&
        std::abs(Blue(seen) - Blue(wanted)) <= most)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << std::hex << seen << " and not " << wanted;
}

// Any colours, but always the same ones.
inline Color Speckles(int x, int y) {
    const unsigned int h = static_cast<unsigned int>(x * 7919 + y * 104729) * 2654435761U;
    return Rgb(static_cast<int>(h >> 8 & 255), static_cast<int>(h >> 16 & 255), static_cast<int>(h >> 24));
}

inline std::unique_ptr<Surface> SpeckledSurface(Drawing& drawing, PixelSize size) {
    auto surface = drawing.CreateSurface(size);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            surface->Fill({x, y, 1, 1}, Speckles(x, y));
    return surface;
}

// The photograph with notes in which nothing stands but its orientation.
inline std::string WithOrientation(const std::string& jpeg, char orientation) {
    std::string notes("\xFF\xE1\x00\x22"
                      "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0?\0\0\0\0\0\0\0",
                      36);
    notes[notes.find('?')] = orientation;
    return jpeg.substr(0, 2) + notes + jpeg.substr(2);
}

} // namespace pictures

// Pictures of one platform, in files of the test's own.
class PictureBench {
  public:
    explicit PictureBench(std::unique_ptr<Drawing> platform)
        : drawing(std::move(platform)) {}

    std::string Path(const std::string& name) const { return (folder.Path() / name).string(); }
    std::string Save(const std::string& content) {
        const std::string path = Path(std::to_string(++files));
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    std::unique_ptr<Picture> Load(const std::string& content) {
        return drawing->LoadPicture(Save(content), why);
    }
    // The picture over the whole of a new surface.
    std::unique_ptr<Surface> Drawn(const Picture& picture, PixelSize size) {
        auto surface = drawing->CreateSurface(size);
        EXPECT_TRUE(surface->StretchPicture(picture, {0, 0, size.width, size.height}, why)) << why;
        return surface;
    }

    // The quarters at the picture's own size, reduced and enlarged; and cut at the surface's edges the
    // picture shows the same pixels as the whole one does there.
    void ExpectShows(const Picture& picture, const pictures::Quarters& quarters, int tolerance) {
        for (const PixelSize size : {PixelSize{20, 12}, picture.Size(), {200, 120}}) {
            const auto surface = Drawn(picture, size);
            for (int i = 0; i < 4; ++i) {
                const int x = size.width * (1 + i % 2 * 2) / 4, y = size.height * (1 + i / 2 * 2) / 4;
                EXPECT_TRUE(pictures::Near(pictures::At(surface->Pixels(), x, y),
                                           quarters[static_cast<std::size_t>(i)], tolerance))
                    << size.width << " wide, at " << x << "," << y;
            }
        }
        for (const PixelSize size : {PixelSize{120, 90}, {50, 40}}) {
            const auto whole = Drawn(picture, size), part = drawing->CreateSurface({31, 23});
            const int left = size.width / 3, top = size.height / 3;
            EXPECT_TRUE(part->StretchPicture(picture, {-left, -top, size.width, size.height}, why)) << why;
            for (int y = 0; y < std::min(23, size.height - top); ++y)
                for (int x = 0; x < std::min(31, size.width - left); ++x)
                    ASSERT_TRUE(pictures::Near(pictures::At(part->Pixels(), x, y),
                                               pictures::At(whole->Pixels(), x + left, y + top), 1))
                        << "cut of " << size.width << ", at " << x << "," << y;
        }
    }

    void ExpectReads(const std::vector<pictures::Sample>& samples) {
        for (const pictures::Sample& sample : samples) {
            SCOPED_TRACE(sample.name);
            const auto picture = Load(pictures::Content(sample.name));
            ASSERT_NE(picture, nullptr) << why;
            EXPECT_EQ(picture->Size(), sample.size);
            ExpectShows(*picture, pictures::Upright, sample.tolerance);
        }
    }

    test::TemporaryFolder folder;
    std::unique_ptr<Drawing> drawing;
    std::string why;
    int files = 0;
};

class PictureContract : public testing::TestWithParam<std::unique_ptr<Drawing> (*)()>,
                        protected PictureBench {
  protected:
    PictureContract()
        : PictureBench(GetParam()()) {}
};

TEST_P(PictureContract, ReadsTheFormatsReducedEnlargedAndCut) {
    const PixelSize size{64, 48}, small{16, 12};
    ExpectReads({{"quarters.jpg", size, 12},
                 {"progressive.jpg", size, 12},
                 {"quarters.png", size, 0},
                 {"interlaced.png", size, 0},
                 {"one_strip.tiff", size, 0},
                 {"quarters.tiff", small, 0},
                 {"quarters.bmp", small, 0},
                 {"top_down.bmp", small, 0},
                 {"run_length.bmp", small, 0},
                 {"quarters.gif", small, 0},
                 {"interlaced.gif", small, 0}});
    EXPECT_TRUE(
        pictures::Near(pictures::At(Drawn(*Load(pictures::Content("grey.jpg")), {32, 32})->Pixels(), 20, 9),
                       Rgb(160, 160, 160), 4));
}

TEST_P(PictureContract, PhotographsAreTurnedUpright) {
    using namespace pictures;
    const Quarters turned[] = {{Red255, Green255, Blue255, White}, {Green255, Red255, White, Blue255},
                               {White, Blue255, Green255, Red255}, {Blue255, White, Red255, Green255},
                               {Red255, Blue255, Green255, White}, {Blue255, Red255, White, Green255},
                               {White, Green255, Blue255, Red255}, {Green255, White, Red255, Blue255}};
    for (int number = 1; number <= 8; ++number) {
        SCOPED_TRACE(number);
        const auto picture = Load(WithOrientation(Content("quarters.jpg"), static_cast<char>(number)));
        ASSERT_NE(picture, nullptr) << why;
        EXPECT_EQ(picture->Size(), number < 5 ? (PixelSize{64, 48}) : (PixelSize{48, 64}));
        ExpectShows(*picture, turned[number - 1], 12);
    }
}

// Two inches by one, the left half red, the right half blue.
TEST_P(PictureContract, MetafilesPlayAtTheirSize) {
    using namespace pictures;
    const int dots = static_cast<int>(std::lround(1440 / drawing->TwipsPerPixelX()));
    for (const char* name : {"halves.wmf", "halves.emf"}) {
        SCOPED_TRACE(name);
        const auto picture = Load(Content(name));
        ASSERT_NE(picture, nullptr) << why;
        EXPECT_NEAR(picture->Size().width, 2 * dots, 2);
        EXPECT_NEAR(picture->Size().height, dots, 2);
        const auto surface = Drawn(*picture, {120, 60});
        EXPECT_TRUE(Near(At(surface->Pixels(), 30, 20), Red255, 2));
        EXPECT_TRUE(Near(At(surface->Pixels(), 90, 40), Blue255, 2));
    }
}

TEST_P(PictureContract, WhatIsSavedComesBackPixelForPixel) {
    const PixelSize size{61, 37};
    const auto original = pictures::SpeckledSurface(*drawing, size);
    test::StringWriter png, bitmap, full;
    ASSERT_TRUE(drawing->WritePng(original->Pixels(), png));
    ASSERT_TRUE(WriteBitmap(original->Pixels(), bitmap));
    full.room = 100;
    EXPECT_FALSE(drawing->WritePng(original->Pixels(), full));
    for (const std::string& content : {png.bytes, bitmap.bytes}) {
        const auto picture = Load(content);
        ASSERT_NE(picture, nullptr) << why;
        for (int round = 0; round < 3; ++round) { // the later ones from what was kept
            const auto again = drawing->CreateSurface({70, 40});
            ASSERT_TRUE(again->StretchPicture(*picture, {5, 2, size.width, size.height}, why)) << why;
            for (int y = 0; y < 40; ++y)
                for (int x = 0; x < 70; ++x) {
                    const bool inside = x >= 5 && x < 5 + size.width && y >= 2 && y < 2 + size.height;
                    ASSERT_EQ(pictures::At(again->Pixels(), x, y),
                              inside ? pictures::Speckles(x - 5, y - 2) : Rgb(0, 0, 0))
                        << x << "," << y;
                }
        }
    }
}

// The left half is clear, the right half red at half strength.
TEST_P(PictureContract, TheGroundShinesThroughWhereThePictureIsClear) {
    const auto picture = Load(pictures::Content("half_clear.png"));
    ASSERT_NE(picture, nullptr) << why;
    for (int round = 0; round < 3; ++round) { // the later ones from what was kept
        const auto surface = drawing->CreateSurface({50, 30});
        surface->Fill({0, 0, 50, 30}, Rgb(0, 200, 100));
        ASSERT_TRUE(surface->StretchPicture(*picture, {7, 3, 40, 20}, why)) << why;
        EXPECT_EQ(pictures::At(surface->Pixels(), 12, 13), Rgb(0, 200, 100));
        EXPECT_TRUE(pictures::Near(pictures::At(surface->Pixels(), 42, 13), Rgb(128, 100, 50), 2));
    }
}

TEST_P(PictureContract, SaysWhyAFileIsNoPicture) {
    for (const std::string& content :
         {std::string(), std::string("Dear Ann,\n"), std::string("\0\0\0\0", 4), std::string("<html>"),
          std::string("\xD7\xCD\xC6\x9A"), std::string(500, '\x7F')}) {
        why.clear();
        EXPECT_EQ(Load(content), nullptr) << content;
        EXPECT_NE(why, "") << content;
    }
    for (const std::string& path : {Path("gone.png"), Path("gone.emf"), std::string()}) {
        why.clear();
        EXPECT_EQ(drawing->LoadPicture(path, why), nullptr) << path;
        EXPECT_NE(why, "") << path;
    }
    why.clear();
    const auto torn = Load(pictures::Content("quarters.png").substr(0, 80));
    const bool shown = torn && drawing->CreateSurface({64, 48})->StretchPicture(*torn, {0, 0, 64, 48}, why);
    EXPECT_TRUE(shown || !why.empty()) << "a decoder may show what is there";
}

} // namespace quorvane
