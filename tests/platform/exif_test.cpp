#include "platform/exif.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

// A picture's beginning: a comment, and notes of one entry in either byte order.
std::string Beginning(const std::string& notes) {
    const std::string content = std::string("Exif\0\0", 6) + notes;
    std::string bytes("\xFF\xD8\xFF\xFE\0\5abc\xFF\xE1\0", 12);
    bytes += static_cast<char>(content.size() + 2);
    return bytes + content + std::string("\xFF\xDA\0\2", 4);
}

const std::string lowFirst("II*\0\x08\0\0\0\x02\0\x0F\x01\x02\0\x01\0\0\0x\0\0\0"
                           "\x12\x01\x03\0\x01\0\0\0\x06\0\0\0",
                           34);
const std::string highFirst("MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x08\0\0", 22);

TEST(Exif, FindsTheOrientationInEitherByteOrder) {
    EXPECT_EQ(ExifOrientation(Beginning(lowFirst)), 6);
    EXPECT_EQ(ExifOrientation(Beginning(highFirst)), 8);
}

TEST(Exif, WhatDoesNotSayIsUpright) {
    std::string strange = highFirst;
    strange[19] = 9;
    EXPECT_EQ(ExifOrientation(Beginning(strange)), 1) << "there are eight";
    EXPECT_EQ(ExifOrientation(""), 1);
    EXPECT_EQ(ExifOrientation("\x89PNG\r\n\x1A\n"), 1);
    EXPECT_EQ(ExifOrientation(Beginning("MM\0*\xFF\xFF\xFF\xFF")), 1);
    const std::string whole = Beginning(lowFirst);
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        const int seen = ExifOrientation(whole.substr(0, cut));
        EXPECT_TRUE(seen == 1 || seen == 6) << cut;
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string bent = whole;
        bent[at] = static_cast<char>(bent[at] ^ 0xFF);
        const int seen = ExifOrientation(bent);
        EXPECT_TRUE(seen >= 1 && seen <= 8) << at;
    }
}

} // namespace
} // namespace quorvane
