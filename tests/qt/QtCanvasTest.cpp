// The pixel rules of the Qt canvas and of the command line's raster canvas: each case runs on both,
// so the two paint the same frame pixel for pixel.
#include <gtest/gtest.h>

#include "qt/QtCanvas.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"
#include "render/RenderTestSupport.h"

namespace fw::qt {
namespace {

constexpr std::uint32_t kW = 0xFFFFFF;
constexpr std::uint32_t kK = 0x000000;

// The pixels of a row from x0 to x1 inclusive, as a string of '#' (colour c) and '.' (white).
template <typename C>
std::string Row(const C& c, int y, int x0, int x1, std::uint32_t color = kK)
{
    std::string s;
    for (int x = x0; x <= x1; ++x)
        s += c.Pixel(x, y) == color ? '#' : (c.Pixel(x, y) == kW ? '.' : '?');
    return s;
}

template <typename C>
struct CanvasRules : ::testing::Test {};
using Canvases = ::testing::Types<QtCanvas, RasterCanvas>;
TYPED_TEST_SUITE(CanvasRules, Canvases);

TYPED_TEST(CanvasRules, LinesLeaveOutTheirLastPixelAndHugeOnesOnlyWalkTheSurface)
{
    TypeParam c(20, 20);
    c.MoveToEx(2, 2);
    c.LineTo(7, 2);
    EXPECT_EQ(Row(c, 2, 0, 9), "..#####...");
    c.MoveToEx(10, 10);
    c.LineTo(14, 14); // a diagonal: 10,10 to 13,13
    for (int i = 10; i <= 13; ++i)
        EXPECT_EQ(c.Pixel(i, i), kK) << i;
    EXPECT_EQ(c.Pixel(14, 14), kW);
    c.MoveToEx(0, 10);
    c.LineTo(10, 15); // slope one half: the half-way rows round away from the start
    EXPECT_EQ(c.Pixel(1, 11), kK);
    EXPECT_EQ(c.Pixel(9, 15), kK);
    EXPECT_EQ(c.Pixel(10, 15), kW);
    // A closed polyline has all its corners: each segment paints the start of the next.
    c.MoveToEx(15, 1);
    c.LineTo(18, 1);
    c.LineTo(18, 4);
    EXPECT_EQ(c.Pixel(18, 1), kK);
    EXPECT_EQ(c.Pixel(18, 4), kW);

    TypeParam far(20, 20);
    far.MoveToEx(INT32_MIN, 5);
    far.LineTo(INT32_MAX, 5);
    far.MoveToEx(-2000000000, -1999999990);
    far.LineTo(2000000000, 2000000010); // 45 degrees through (0, 10) and (9, 19)
    far.MoveToEx(5, -2000000000);
    far.LineTo(7, 2000000000);
    EXPECT_EQ(Row(far, 5, 0, 19), "####################");
    EXPECT_EQ(far.Pixel(0, 10), kK);
    EXPECT_EQ(far.Pixel(9, 19), kK);
}

TYPED_TEST(CanvasRules, HandleRectangleIsFiveByFiveWhicheverWayRoundTheCornersCome)
{
    TypeParam c(20, 20);
    c.SelectBrush(Brush{Brush::Kind::Solid, RGB(0, 0, 255)});
    c.Rectangle(8, 8, 3, 3); // the drag ghost's corner squares come this way
    c.SelectBrush(Brush{Brush::Kind::Solid, 0xFFFFFF});
    c.Rectangle(10, 10, 15, 15);
    EXPECT_EQ(Row(c, 10, 9, 15), ".#####.");
    EXPECT_EQ(Row(c, 12, 9, 15), ".#...#.");
    EXPECT_EQ(Row(c, 14, 9, 15), ".#####.");
    EXPECT_EQ(Row(c, 15, 9, 15), ".......");
    EXPECT_EQ(c.Pixel(5, 5), 0x0000FFu);
    EXPECT_EQ(Row(c, 3, 2, 8), ".#####.");
}

TYPED_TEST(CanvasRules, PensColoursDotsWidthAndTheMask)
{
    TypeParam c(30, 10);
    c.SelectPen(Pen{PenStyle::Dot, 1, RGB(0, 0, 0)});
    c.MoveToEx(0, 5);
    c.LineTo(8, 5);
    c.LineTo(16, 5); // the pattern runs on
    EXPECT_EQ(Row(c, 5, 0, 16), "###...###...###..");
    // Opaque background fills the gaps with white; transparent leaves them.
    c.SelectPen(Pen{PenStyle::Solid, 1, RGB(0, 255, 0)});
    c.MoveToEx(0, 7);
    c.LineTo(12, 7);
    c.SelectPen(Pen{PenStyle::Dot, 1, RGB(0, 0, 0)});
    c.SetBkMode(BkMode::Transparent);
    c.MoveToEx(0, 7);
    c.LineTo(12, 7);
    EXPECT_EQ(c.Pixel(3, 7), 0x00FF00u);
    EXPECT_EQ(c.Pixel(2, 7), kK);
    // The wide pen covers the pixel below as well, on a slant too.
    c.SelectPen(Pen{PenStyle::Solid, 2, RGB(255, 0, 0)});
    c.MoveToEx(20, 0);
    c.LineTo(26, 2);
    EXPECT_EQ(c.Pixel(20, 0), 0xFF0000u);
    EXPECT_EQ(c.Pixel(20, 1), 0xFF0000u);
    EXPECT_EQ(c.Pixel(20, 2), kW);
    // The mask only darkens: green AND cyan is green, grey AND cyan is dark cyan.
    c.BlitPixels(10, 7, 1, 1, {0x808080});
    c.SelectPen(Pen{PenStyle::Solid, 1, RGB(0, 255, 255)});
    c.SetROP2(RasterOp::MaskPen);
    c.MoveToEx(0, 7);
    c.LineTo(11, 7);
    EXPECT_EQ(c.Pixel(3, 7), 0x00FF00u);
    EXPECT_EQ(c.Pixel(2, 7), kK);
    EXPECT_EQ(c.Pixel(10, 7), 0x008080u);
}

TYPED_TEST(CanvasRules, HatchRunsDownToTheRightFromTheSurfaceCorner)
{
    TypeParam c(40, 40);
    c.SelectBrush(Brush{Brush::Kind::HatchForwardDiagonal, RGB(255, 128, 0)});
    c.SetBkMode(BkMode::Transparent);
    c.SelectPen(Pen{PenStyle::Null, 1, 0});
    c.Polygon({{3, 3}, {40, 3}, {40, 40}, {3, 40}}); // not at the corner: the pattern still is
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(c.Pixel(x, y), x >= 3 && y >= 3 && (x - y) % 8 == 0 ? 0xFF8000u : kW) << x << "," << y;
}

TYPED_TEST(CanvasRules, PolygonFillsByTheAlternateRuleAndStrokesItsOutline)
{
    TypeParam c(30, 30);
    c.SelectBrush(Brush{Brush::Kind::Solid, RGB(0, 0, 255)});
    // A five-pointed star drawn in one stroke: its centre is outside under the alternate rule.
    c.Polygon({{15, 2}, {24, 27}, {2, 11}, {28, 11}, {6, 27}});
    EXPECT_EQ(c.Pixel(15, 16), kW);
    EXPECT_EQ(c.Pixel(15, 8), 0x0000FFu);
    EXPECT_EQ(c.Pixel(15, 2), kK);
    EXPECT_EQ(c.Pixel(6, 27), kK);
}

TYPED_TEST(CanvasRules, StretchCopyAndWhiteFillStayInsideTheSurface)
{
    TypeParam back(20, 20);
    TypeParam window(20, 20);
    back.StretchPixels(2, 2, 8, 8, {0xFF0000, 0x00FF00, 0x0000FF, 0x000000}, 2, 2);
    back.StretchPixels(-4, 12, 8, 8, {0x123456}, 1, 1);
    back.StretchPixels(18, 18, 1000, 1000, {0x111111}, 1, 1);
    window.CopyFrom(back);
    EXPECT_EQ(window.Pixel(2, 2), 0xFF0000u);
    EXPECT_EQ(window.Pixel(9, 2), 0x00FF00u);
    EXPECT_EQ(window.Pixel(5, 9), 0x0000FFu);
    EXPECT_EQ(window.Pixel(10, 10), kW);
    EXPECT_EQ(window.Pixel(0, 12), 0x123456u);
    EXPECT_EQ(window.Pixel(19, 19), 0x111111u);
    back.FillWhite(-5, -5, 100, 100);
    EXPECT_EQ(back.Pixel(2, 2), kW);
    EXPECT_EQ(back.Pixel(19, 19), kW);
    EXPECT_EQ(window.Pixel(2, 2), 0xFF0000u);
}

// The Qt canvas and the raster canvas of the command line agree on a whole frame.
TEST(QtCanvas, FrameMatchesTheRasterCanvas)
{
    Session s = test::MakeSession(300, 200);
    test::AddShape(s, kForest, test::Pts({{-100, -60}, {120, -60}, {0, 0}, {120, 60}, {-100, 60}}));
    test::AddShape(s, kPoly, test::Pts({{-20, -20}, {20, -20}, {20, 20}, {-20, 20}}));
    s.editor.selection.addEntry(1, 0, -20, 20, -20, 20);
    QtCanvas qtBack(300, 200), qtWindow(300, 200);
    RasterCanvas rBack(300, 200), rWindow(300, 200);
    PaintFrame(s, qtWindow, qtBack);
    PaintFrame(s, rWindow, rBack);
    int differ = 0;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 300; ++x)
            differ += qtWindow.Pixel(x, y) != rWindow.Pixel(x, y);
    EXPECT_EQ(differ, 0);
}

} // namespace
} // namespace fw::qt
