#include "platform/painting/exif.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

const std::string kLittle("II*\0\x8\0\0\0\2\0\x0F\1\2\0\4\0\0\0Ann\0\x12\1\3\0\1\0\0\0\6\0\0\0\0\0\0\0", 38);
const std::string kBig("MM\0*\0\0\0\x8\0\1\1\x12\0\3\0\0\0\1\0\x8\0\0\0\0\0\0", 26);

TEST(Exif, FindsTheOrientationInBothByteOrders) {
    EXPECT_EQ(ExifOrientation(kLittle), 6);
    EXPECT_EQ(ExifOrientation(kBig), 8);
}

TEST(Exif, TakesDamageForUpright) {
    EXPECT_EQ(ExifOrientation(""), 1);
    EXPECT_EQ(ExifOrientation("a note"), 1);
    for (std::size_t length = 0; length < 28; ++length)
        EXPECT_EQ(ExifOrientation(kLittle.substr(0, length)), 1) << length;
    std::string far = kLittle;
    far.replace(4, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(ExifOrientation(far), 1);
    std::string nine = kBig;
    nine[19] = 9;
    EXPECT_EQ(ExifOrientation(nine), 1);
}

TEST(Exif, LiesInABlockOfJpegWebpAndPng) {
    const std::string jpeg = std::string("\xFF\xD8\xFF\xFE\0\5abc\xFF\xE1\0\6http\xFF\xE1\0\x22"
                                         "Exif\0\0",
                                         27) +
                             kBig + "\xFF\xDA";
    EXPECT_EQ(FindExif(jpeg), kBig);
    const std::string webp =
        std::string("RIFF\0\0\0\0WEBPVP8 \3\0\0\0abc\0EXIF\x26\0\0\0", 32) + kLittle + "rest";
    EXPECT_EQ(FindExif(webp), kLittle);
    const std::string old = std::string("RIFF\0\0\0\0WEBPEXIF\x20\0\0\0Exif\0\0", 26) + kBig;
    EXPECT_EQ(FindExif(old), kBig);
    const std::string png = std::string("\x89PNG\r\n\x1A\n\0\0\0\2IHDRxy????\0\0\0\x1A"
                                        "eXIf",
                                        30) +
                            kBig + "????";
    EXPECT_EQ(FindExif(png), kBig);
    for (const std::string& whole : {jpeg, webp, old, png})
        for (std::size_t length = 0; length < whole.size(); ++length)
            ExifOrientation(FindExif(std::string_view(whole).substr(0, length)));
    EXPECT_EQ(FindExif(kBig), "");
    EXPECT_EQ(FindExif(std::string("RIFF\0\0\0\0WEBPVP8 \xFF\xFF\xFF\xFF", 20)), "");
}

} // namespace
} // namespace quorvane
