#include "platform/shared/seeded_random.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

namespace quorvane {
namespace {

TEST(SeededRandom, FillsItsRangeEvenly) {
    SeededRandom random;
    random.Seed(1);
    std::array<int, 100> buckets{};
    constexpr int Draws = 100000;
    for (int i = 0; i < Draws; ++i) {
        const float number = random.Next();
        ASSERT_GE(number, 0.0F);
        ASSERT_LT(number, 1.0F);
        ++buckets[static_cast<std::size_t>(number * 100)];
    }
    double chiSquare = 0;
    for (const int count : buckets)
        chiSquare += std::pow(count - Draws / 100, 2) / (Draws / 100);
    EXPECT_LT(chiSquare, 160) << "99 degrees of freedom: one in ten thousand lies above";
}

TEST(SeededRandom, FirstNumbersOfNeighbouringSeedsAreUnrelated) {
    std::set<int> tenths;
    double sum = 0;
    for (int second = 0; second < 1000; ++second) {
        SeededRandom random;
        random.Seed(43200 + second * 0.015625);
        const float number = random.Next();
        tenths.insert(static_cast<int>(number * 10));
        sum += static_cast<double>(number);
    }
    EXPECT_EQ(tenths.size(), 10U);
    EXPECT_NEAR(sum / 1000, 0.5, 0.04);
}

TEST(SeededRandom, SameSeedSameNumbersAndOnceSeededKeepsTheFirst) {
    SeededRandom a;
    OnceSeededRandom b;
    a.Seed(7);
    b.Seed(7);
    for (int i = 0; i < 20; ++i) {
        b.Seed(i);
        EXPECT_EQ(a.Next(), b.Next());
    }
    a.Seed(0.0);
    const float zero = a.Next();
    a.Seed(-0.0);
    EXPECT_EQ(a.Next(), zero);
}

} // namespace
} // namespace quorvane
