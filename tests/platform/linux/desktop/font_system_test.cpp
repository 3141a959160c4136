#include "platform/linux/desktop/font_system.h"

#include <gtest/gtest.h>

namespace quorvane {

TEST(GuiFontSystemTest, KnowsTheFontsAndWhatStandsForMissingOnes) {
    GuiFontSystem system;
    EXPECT_FALSE(system.FontNames().empty());
    EXPECT_TRUE(system.SubstitutesFont("A family that nobody has"));
    EXPECT_EQ(system.AddFontFile("/nowhere/font.ttf"), 0);
}

} // namespace quorvane
