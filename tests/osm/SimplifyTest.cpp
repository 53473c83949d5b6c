#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "osm/Simplify.h"

namespace fw {
namespace {

TEST(Simplify, ThinsToTheBudgetWithTheSmallestToleranceAndKeepsTheEnds)
{
    std::vector<PlanePoint> curve;
    for (int i = 0; i < 120; ++i)
        curve.push_back({i * 3.0, 40 * std::sin(i / 7.0) + 0.01 * i * i});
    const Simplified s = SimplifyToFit(curve, 80);
    ASSERT_GE(s.kept.size(), 79u);
    ASSERT_LE(s.kept.size(), 80u);
    EXPECT_EQ(s.kept.front(), 0u);
    EXPECT_EQ(s.kept.back(), 119u);
    EXPECT_TRUE(std::is_sorted(s.kept.begin(), s.kept.end()));
    EXPECT_GT(s.tolerance, 0);
    EXPECT_LE(s.deviation, s.tolerance);
    // Any smaller tolerance keeps too many: with a budget one larger the tolerance drops.
    EXPECT_LT(SimplifyToFit(curve, 81).tolerance, s.tolerance);

    const std::vector<PlanePoint> three{{0, 0}, {1, 5}, {2, 0}};
    EXPECT_EQ(SimplifyToFit(three, 80).kept.size(), 3u);
    EXPECT_EQ(SimplifyToFit(three, 2).kept, (std::vector<std::size_t>{0, 2}));
    // A closed ring keeps both its ends.
    std::vector<PlanePoint> ring;
    for (int i = 0; i <= 100; ++i)
        ring.push_back({100 * std::cos(i * 0.0628318), 100 * std::sin(i * 0.0628318)});
    ring.back() = ring.front();
    const Simplified r = SimplifyToFit(ring, 10);
    ASSERT_LE(r.kept.size(), 10u);
    EXPECT_GT(r.kept.size(), 4u);
    EXPECT_EQ(r.kept.front(), 0u);
    EXPECT_EQ(r.kept.back(), 100u);
}

} // namespace
} // namespace fw
