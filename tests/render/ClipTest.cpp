#include <gtest/gtest.h>

#include "render/Clip.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

using test::MakeSession;
using test::Segments;

// 200 by 100 at 100%: world x is pixel x - 100, world y is pixel y - 50.
struct ClipFixture : ::testing::Test {
    Session s = MakeSession(200, 100);
    ClipWindow w = SetClipWindow(s.view);
    PixelMap map = PixelMap::Of(s.view);
    RecordingCanvas c{200, 100};
};

TEST_F(ClipFixture, OutCodesAndBoxesCountABoundAsInside)
{
    const struct { int x, y, code; } points[] = {{90, 40, 0}, {-90, -40, 0}, {0, 41, 1},  {0, -41, 2},
                                                 {-91, 0, 4}, {91, 0, 8},    {91, 41, 9}, {-91, -41, 6}};
    for (const auto& p : points)
        EXPECT_EQ(OutCode(w, p.x, p.y), p.code) << p.x << "," << p.y;
    // A box is outside when both its values lie beyond one side.
    const std::pair<Limits, int> boxes[] = {{{91, 200, 0, 0}, 1},   {{-200, -91, 0, 0}, 1}, {{0, 0, 41, 50}, 1},
                                            {{0, 0, -50, -41}, 1},  {{-200, 200, -50, 50}, 0}, {{90, 200, 0, 0}, 0}};
    for (const auto& [box, outside] : boxes)
        EXPECT_EQ(BoxOutside(w, box), outside) << box[0] << " " << box[1] << " " << box[2] << " " << box[3];
}

// The window is the canvas inset by ten pixels: a segment that leaves it stops short of the edge.
TEST_F(ClipFixture, SegmentsAreCutAtTheWindowOrLeftOut)
{
    const struct {
        int x0, y0, x1, y1;
        std::vector<std::vector<int>> drawn;
    } cases[] = {
        {90, -20, 90, 20, {{190, 30, 190, 70}}}, // along the right bound
        {0, 0, 500, 0, {{100, 50, 190, 50}}},
        {0, 0, 0, -500, {{100, 50, 100, 10}}},
        // Crosses two bounds on its way in: y = 40 at x = -200 (left of the window), then x = -90 at y = 18.
        {-500, 100, 0, 0, {{10, 68, 100, 50}}},
        // Passes outside the top right corner (90, -40): above it at x = 90, right of it at y = -40.
        {80, -60, 120, -20, {}},
        {100, 0, 200, 0, {}}, // wholly right
    };
    for (const auto& k : cases) {
        c.calls.clear();
        ClipAndDrawLine(w, k.x0, k.y0, k.x1, k.y1, c, map);
        EXPECT_EQ(Segments(c), k.drawn) << k.x0 << "," << k.y0 << " to " << k.x1 << "," << k.y1;
        EXPECT_EQ(c.calls.empty(), k.drawn.empty());
    }
}

TEST_F(ClipFixture, PolygonsCloseLinesStayOpenAndAStaleBoxHidesOnlyTheOpenSegments)
{
    ShapeRecord poly;
    ResetShape(poly, kPoly);
    ShapeRecord tree;
    ResetShape(tree, kTreeLine);
    const PointList p = test::Pts({{0, 0}, {20, 0}, {20, 20}});
    poly.gLimits = tree.gLimits = ComputeLimits(p);
    ShapeOutline(w, p, poly, c, map);
    EXPECT_EQ(Segments(c).size(), 3u);
    EXPECT_EQ(Segments(c)[2], (std::vector<int>{120, 70, 100, 50}));
    c.calls.clear();
    ShapeOutline(w, p, tree, c, map);
    EXPECT_EQ(Segments(c).size(), 2u);
    c.calls.clear();
    poly.gLimits = {500, 600, 500, 600};
    ShapeOutline(w, p, poly, c, map);
    EXPECT_EQ(Segments(c), (std::vector<std::vector<int>>{{120, 70, 100, 50}}));
}

TEST_F(ClipFixture, FillCutsAtTheWindowAndKeepsTheRepeatedVertex)
{
    // A square whose right half lies beyond xMax.
    const PointList p = test::Pts({{50, -20}, {150, -20}, {150, 20}, {50, 20}});
    ASSERT_TRUE(FillClippedPolygon(w, p, c, map));
    const auto polys = test::Only(c, "polygon");
    ASSERT_EQ(polys.size(), 1u);
    const auto& a = polys[0].args;
    ASSERT_EQ(a.size() % 2, 0u);
    for (std::size_t i = 0; i < a.size(); i += 2) {
        EXPECT_GE(a[i], 150);
        EXPECT_LE(a[i], 190);
        EXPECT_GE(a[i + 1], 30);
        EXPECT_LE(a[i + 1], 70);
    }
    // The walk goes once past the last vertex in each of the four passes.
    EXPECT_GT(a.size() / 2, 4u);
    EXPECT_EQ(a[0], a[a.size() - 2]);
    EXPECT_EQ(a[1], a[a.size() - 1]);
    // Wholly outside: an empty polygon.
    c.calls.clear();
    ASSERT_TRUE(FillClippedPolygon(w, test::Pts({{200, 0}, {300, 0}, {300, 30}}), c, map));
    ASSERT_EQ(test::Only(c, "polygon").size(), 1u);
    EXPECT_TRUE(test::Only(c, "polygon")[0].args.empty());
}

TEST_F(ClipFixture, PolygonOrClipResultTooLongForTheBuffersIsOutlinedWithoutAFill)
{
    PointList big;
    for (int i = 0; i < 250; ++i)
        big.push_back({i % 50, i / 10});
    EXPECT_FALSE(FillClippedPolygon(w, big, c, map));
    EXPECT_TRUE(test::Only(c, "polygon").empty());
    EXPECT_EQ(Segments(c).size(), 250u);
    // 150 points in a zigzag across xMax: the crossings make the first pass's output pass 200.
    PointList zigzag;
    for (int i = 0; i < 150; ++i)
        zigzag.push_back({i % 2 == 0 ? 0 : 200, -40 + i / 2});
    c.calls.clear();
    EXPECT_FALSE(FillClippedPolygon(w, zigzag, c, map));
    EXPECT_TRUE(test::Only(c, "polygon").empty());
    EXPECT_FALSE(Segments(c).empty());
    // Each pass adds the repeated vertex: 196 points fit all four passes, 197 do not.
    PointList fits;
    for (int i = 0; i < 197; ++i)
        fits.push_back({i % 2 == 0 ? -10 : 10, -40 + i / 5});
    c.calls.clear();
    EXPECT_FALSE(FillClippedPolygon(w, fits, c, map));
    fits.pop_back();
    c.calls.clear();
    EXPECT_TRUE(FillClippedPolygon(w, fits, c, map));
    ASSERT_EQ(test::Only(c, "polygon").size(), 1u);
    EXPECT_EQ(test::Only(c, "polygon")[0].args.size(), 2u * 200);
}

TEST(ClipExtremes, FarPointsAtHighZoomNeverReachAPixelConversion)
{
    Session s = MakeSession(800, 600, 4.0);
    const ClipWindow w = SetClipWindow(s.view);
    RecordingCanvas c(800, 600);
    ClipAndDrawLine(w, INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX, c, PixelMap::Of(s.view));
    const auto seg = Segments(c);
    ASSERT_EQ(seg.size(), 1u);
    for (int v : seg[0]) {
        EXPECT_GE(v, 0);
        EXPECT_LE(v, 800);
    }
}

} // namespace
} // namespace fw
