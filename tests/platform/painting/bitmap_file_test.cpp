#include "platform/painting/bitmap_file.h"

#include "tests/support/string_writer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

using test::StringWriter;

TEST(BitmapFile, RowsStandBottomUpAndPadded) {
    const std::vector<std::uint8_t> pixels{1, 2, 3, 4, 5, 6, 99, 7, 8, 9, 10, 11, 12, 99};
    StringWriter sink;
    ASSERT_TRUE(WriteBitmap({pixels.data(), 7, {2, 2}}, sink));
    ASSERT_EQ(sink.bytes.size(), 54u + 2 * 8);
    EXPECT_EQ(sink.bytes.substr(0, 2), "BM");
    EXPECT_EQ(sink.bytes.substr(54), std::string("\7\x8\x9\xA\xB\xC\0\0\1\2\3\4\5\6\0\0", 16));
    // The same picture with its rows bottom up in memory.
    StringWriter upsideDown;
    ASSERT_TRUE(WriteBitmap({pixels.data() + 7, -7, {2, 2}}, upsideDown));
    EXPECT_EQ(upsideDown.bytes.substr(54), std::string("\1\2\3\4\5\6\0\0\7\x8\x9\xA\xB\xC\0\0", 16));
}

TEST(BitmapFile, GoesOutInStripesAndTellsOfAFullDisk) {
    const std::vector<std::uint8_t> row(3 * 1001, 77);
    StringWriter sink; // every row the same one
    ASSERT_TRUE(WriteBitmap({row.data(), 0, {1001, 500}}, sink));
    EXPECT_EQ(sink.bytes.size(), 54u + 500u * 3004u);
    EXPECT_LE(sink.largest, 128u * 1024);
    EXPECT_GT(sink.largest, 100u * 1024);
    StringWriter full;
    full.room = 300'000;
    EXPECT_FALSE(WriteBitmap({row.data(), 0, {1001, 500}}, full));
    EXPECT_FALSE(WriteBitmap({row.data(), 0, {0, 500}}, full));
}

} // namespace
} // namespace quorvane
