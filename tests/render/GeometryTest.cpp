#include <gtest/gtest.h>

#include <algorithm>

#include "files/MacroFile.h"
#include "render/Geometry.h"
#include "render/Paint.h"
#include "render/RenderTestSupport.h"

namespace fw {
namespace {

ObjectRecord Object(int type, int x = 0, int y = 0, double rotation = 0)
{
    ObjectRecord o;
    ResetObject(o, type, "/opt/fw/");
    o.PosX = x;
    o.PosY = y;
    o.Rotation = rotation;
    return o;
}

struct Extent {
    int minX = INT32_MAX, maxX = INT32_MIN, minY = INT32_MAX, maxY = INT32_MIN;
};

Extent ExtentOf(const LineSet& lines)
{
    Extent e;
    for (const auto& l : lines)
        for (const auto& p : l) {
            e.minX = std::min(e.minX, p.X);
            e.maxX = std::max(e.maxX, p.X);
            e.minY = std::min(e.minY, p.Y);
            e.maxY = std::max(e.maxY, p.Y);
        }
    return e;
}

ObjectRecord Api(std::initializer_list<Point> outline, double scale = 1.0)
{
    ObjectRecord o = Object(kApi);
    int i = 0;
    for (const Point& p : outline)
        o.DesignPoints[i++] = p;
    o.DesignLast = static_cast<std::uint8_t>(i - 1);
    o.Scale() = scale;
    return o;
}

// Outlines from a macro's ;designshape or size parameters near 2^31 are held in range, with no
// undefined behaviour (the test build stops at any signed overflow).
TEST(HugeOutline, DoublingAnOutlineNearTwoToTheThirtyOneIsHeldAtTheWorldsEdge)
{
    LineSet lines;
    BuildApiGeometry(lines, Api({{INT32_MAX, INT32_MIN}, {INT32_MIN, INT32_MAX}, {1 << 30, -(1 << 30)}, {3, -4}}, 32));
    EXPECT_EQ(lines, (LineSet{{{INT32_MAX, INT32_MAX}, {INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}, {192, 256},
                               {INT32_MAX, INT32_MAX}}}));
    // Ordinary outlines are what they were: twice the stored numbers, Y turned.
    BuildApiGeometry(lines, Api({{10, 20}, {-30, 5}, {0, 0}}));
    EXPECT_EQ(lines[0], (PointList{{20, -40}, {-60, -10}, {0, 0}, {20, -40}}));
}

TEST(HugeOutline, MacroSizesPastThirtyTwoBitsAreRefusedAndTheRestPaint)
{
    MacroHeader h;
    ResetMacroHeader(h);
    ParseMacroDescriptions(";designshape 2147483647,-2147483648,2147483647,2147483647,-2147483648,2147483647,"
                           "-2147483648,-2147483648\r\n", '.', h);
    Session s = test::MakeSession(320, 240, 0.0625);
    test::AddObject(s, kApi, 0, 0);
    test::AddObject(s, kApi, 0, 0);
    ObjectRecord& shape = s.stores.ObjectStore[0];
    SetOutlineFromHeader(shape, h, '.');
    EXPECT_EQ(shape.DesignLast, 3);
    EXPECT_EQ(shape.DesignPoints[0], (Point{INT32_MAX, INT32_MIN}));

    ResetMacroHeader(h);
    h.adjustable = 1;
    ObjectRecord& square = s.stores.ObjectStore[1];
    const auto outline = square.DesignPoints;
    square.Param6() = "2147483647"; // halved, rounded and doubled: 2^31
    SetOutlineFromHeader(square, h, '.');
    EXPECT_EQ(square.DesignPoints, outline);
    square.Param6() = "2147483646";
    square.Scale() = 32;
    SetOutlineFromHeader(square, h, '.');
    EXPECT_EQ(square.DesignLast, 3);
    EXPECT_EQ(square.DesignPoints[0], (Point{-2147483646, 2147483646}));
    LineSet lines;
    BuildApiGeometry(lines, square);
    EXPECT_EQ(lines[0][0], (Point{INT32_MIN, INT32_MIN}));
    RecordingCanvas canvas(320, 240);
    PaintObjects(s, SetClipWindow(s.view), canvas);
    EXPECT_FALSE(canvas.calls.empty());
}

TEST(ObjectGeometry, VorKeepsItsPixelSizeAtEveryZoom)
{
    for (double zoom : {0.0625, 0.125, 0.25, 0.5, 1.0, 2.0, 3.0, 4.0}) {
        LineSet l;
        BuildVorGeometry(l, Object(kVor, 1000, -500), zoom);
        ASSERT_EQ(l.size(), 1u);
        ASSERT_EQ(l[0].size(), 6u);
        EXPECT_EQ(l[0][0], l[0][5]);
        const Extent e = ExtentOf(l);
        // Whole world units: the corners may snap by half a unit each.
        EXPECT_NEAR((e.maxX - e.minX) * zoom, 200, zoom) << zoom;
        EXPECT_NEAR((e.maxY - e.minY) * zoom, 160, zoom) << zoom;
    }
}

TEST(ObjectGeometry, NdbAndInitialLocationAreScreenSized)
{
    LineSet l;
    BuildNdbGeometry(l, Object(kNdb, 0, 0), 0.25);
    EXPECT_EQ(l[0], (PointList{{-400, -200}, {0, 200}, {400, -200}, {-400, -200}}));
    // At rotation 0 the arrow points up the canvas; at 90 it points east: positive angles turn clockwise.
    BuildInitGeometry(l, Object(kInit, 0, 0, 0), 1.0);
    EXPECT_EQ(l[0], (PointList{{-10, -10}, {0, -20}, {0, 20}, {0, -20}, {10, -10}}));
    BuildInitGeometry(l, Object(kInit, 0, 0, 90), 1.0);
    EXPECT_EQ(l[0][1], (Point{20, 0}));
}

TEST(ObjectGeometry, ExcludeAreaDrawsBothDiagonalsAndTheMarker)
{
    LineSet l{{{1, 1}}, {{2, 2}}, {{3, 3}}}; // a previous object's lines must not survive
    ObjectRecord o = Object(kExclude, 100, 100);
    BuildObjectGeometry(l, o, 1.0);
    ASSERT_EQ(l.size(), 2u);
    const Point p0{-900, 1100}, p1{1100, 1100}, p2{1100, -900}, p3{-900, -900};
    EXPECT_EQ(l[0], (PointList{p0, p1, p3, p2, p1, p0, p2, p3, p0}));
    EXPECT_EQ(l[1], (PointList{{90, 110}, {110, 110}, {110, 90}, {90, 90}, {90, 110}}));
    o.ExclWidth() = 0;
    BuildObjectGeometry(l, o, 2.0);
    EXPECT_EQ(l[0][0].X, l[0][1].X); // flat
    EXPECT_EQ(l[1][0], (Point{95, 105}));
}

TEST(ObjectGeometry, SignIsAFixedTWhateverItsCaption)
{
    ObjectRecord o = Object(kSign, 10, 10);
    o.Caption() = "L_A_B";
    LineSet l;
    BuildObjectGeometry(l, o, 4.0);
    EXPECT_EQ(l, (LineSet{{{6, 10}, {14, 10}}, {{10, 10}, {10, 12}}}));
}

TEST(ObjectGeometry, ApiOutlineIsClosedInMetresWithYNorth)
{
    ObjectRecord o = Object(kApi, 0, 0);
    LineSet l;
    BuildObjectGeometry(l, o, 1.0);
    ASSERT_EQ(l[0].size(), 14u); // DesignLast 12, plus the first point again
    EXPECT_EQ(l[0][0], (Point{-100, -100}));
    EXPECT_EQ(l[0][13], l[0][0]);
    o.Rotation = -30; // taken as 0
    LineSet r;
    BuildObjectGeometry(r, o, 1.0);
    EXPECT_EQ(r, l);
    o.DesignLast = 200; // a damaged record reads no further than the array
    BuildObjectGeometry(r, o, 1.0);
    EXPECT_EQ(r[0].size(), 18u);
}

TEST(RunwayGeometry, HeadingZeroRunsDownTheCanvasWithTheLightsBeyondEachEnd)
{
    LineSet l;
    BuildRunwayGeometry(l, 100, 2000, 0, 0, 0, 1, 0, 0);
    ASSERT_EQ(l.size(), 11u);
    // Local +X (the near end) at the bottom.
    EXPECT_EQ(l[0], (PointList{{-50, -1000}, {-50, 1000}, {50, 1000}, {50, -1000}, {-50, -1000}}));
    EXPECT_EQ(l[1][0], (Point{-48, -998}));
    EXPECT_EQ(l[2], (PointList{{0, -50}, {0, 50}}));
    EXPECT_EQ(l[10], (PointList{{0, 1055}, {0, 1155}}));
    EXPECT_EQ(l[6], (PointList{{0, -1055}, {0, -1155}}));
    EXPECT_EQ(l[3], (PointList{{-60, -1005}, {60, -1005}}));
}

TEST(RunwayGeometry, HeadingOf270AndAboveTurnsHalfRoundLessToTheSamePicture)
{
    for (double h : {270.0, 300.0, 359.0}) {
        LineSet high;
        LineSet low;
        BuildRunwayGeometry(high, 90, 3000, h, 10, 20, 1, 30, 40);
        BuildRunwayGeometry(low, 90, 3000, h - 180, 10, 20, 1, 30, 40);
        EXPECT_EQ(high, low) << h;
    }
}

TEST(RunwayGeometry, ThresholdAndExtensionAddPolylinesAtBothEnds)
{
    ObjectRecord o = Object(kRunway);
    o.Rotation = 90; // along the X axis
    o.ThrOffN() = 1;  // under one world unit, rounds to 1
    LineSet l;
    BuildObjectGeometry(l, o, 1.0);
    ASSERT_EQ(l.size(), 13u);
    o.ExtN() = 100;
    o.ThrOffN() = 0;
    BuildObjectGeometry(l, o, 1.0);
    ASSERT_EQ(l.size(), 13u);
    EXPECT_EQ(l[11].size(), 4u);
    EXPECT_EQ(l[12].size(), 4u);
}

TEST(RunwayGeometry, LightsOffNarrowAndZeroWidthRunwaysAreNotCorrected)
{
    LineSet l;
    BuildRunwayGeometry(l, 100, 2000, 45, 300, -300, 0, 0, 0);
    ASSERT_EQ(l.size(), 11u); // lights off: still eleven polylines, the light bars collapsed
    for (int i = 3; i <= 10; ++i)
        EXPECT_EQ(l[i], (PointList{{300, -300}, {300, -300}})) << i;
    BuildRunwayGeometry(l, 10, 60, 90, 0, 0, 1, 0, 0);
    // At heading 90 the local frame is turned by 180: x and y change sign.
    EXPECT_GT(l[4][0].Y, l[4][1].Y); // W/2 - 10 is negative: the bar runs the other way
    BuildRunwayGeometry(l, 0, 60, 90, 0, 0, 0, 0, 0);
    EXPECT_EQ(l[1][0], (Point{28, 2})); // inner outline crosses the axis
}

} // namespace
} // namespace fw
