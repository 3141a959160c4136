#include "config/color_channel.h"

#include "core/run_time_error.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(ColorChannel16, TakesTheChannelIntoTheHighByte) {
    EXPECT_EQ(ColorChannel16(Rgb(255, 0, 0), "red"), -256);
    EXPECT_EQ(ColorChannel16(Rgb(255, 0, 0), "green"), 0);
    EXPECT_EQ(ColorChannel16(Rgb(1, 127, 128), " R "), 256);
    EXPECT_EQ(ColorChannel16(Rgb(1, 127, 128), "2"), 127 * 256);
    EXPECT_EQ(ColorChannel16(Rgb(1, 127, 128), "Blue"), -128 * 256);
    EXPECT_EQ(ColorChannel16(Rgb(1, 127, 128), "alpha"), 0);
    EXPECT_EQ(ColorChannel16(-1, "b"), -256);
    EXPECT_EQ(ColorChannel16(0x12345678, "b"), 0x1200) << "the first two of eight digits";
}

TEST(ColorChannel16, ValuesBeyondAByteWrapOnceAndThenOverflow) {
    EXPECT_EQ(ChannelValue16(300), 300 * 256 - 65536);
    EXPECT_EQ(ChannelValue16(-128), -32768);
    EXPECT_THROW(ChannelValue16(-129), RunTimeError);
    EXPECT_THROW(ChannelValue16(384), RunTimeError);
}

} // namespace
} // namespace quorvane
