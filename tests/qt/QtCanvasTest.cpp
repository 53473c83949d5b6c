#include <gtest/gtest.h>

#include "platform/qt/QtCanvas.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"

namespace fw::qt {
namespace {

constexpr std::uint32_t kW = 0xFFFFFF;
constexpr std::uint32_t kK = 0x000000;

// The pixels of a row from x0 to x1 inclusive, as a string of '#' (colour c) and '.' (white).
std::string Row(const QtCanvas& c, int y, int x0, int x1, std::uint32_t color = kK)
{
    std::string s;
    for (int x = x0; x <= x1; ++x)
        s += c.Pixel(x, y) == color ? '#' : (c.Pixel(x, y) == kW ? '.' : '?');
    return s;
}

TEST(QtCanvas, LinesLeaveOutTheirLastPixel)
{
    QtCanvas c(20, 20);
    c.MoveToEx(2, 2);
    c.LineTo(7, 2);
    EXPECT_EQ(Row(c, 2, 0, 9), "..#####...");
    c.MoveToEx(2, 5);
    c.LineTo(2, 9);
    EXPECT_EQ(c.Pixel(2, 8), kK);
    EXPECT_EQ(c.Pixel(2, 9), kW);
    c.MoveToEx(10, 10);
    c.LineTo(14, 14); // a diagonal: 10,10 to 13,13
    for (int i = 10; i <= 13; ++i)
        EXPECT_EQ(c.Pixel(i, i), kK) << i;
    EXPECT_EQ(c.Pixel(14, 14), kW);
    // A closed polyline has all its corners: each segment paints the start of the next.
    c.MoveToEx(15, 1);
    c.LineTo(18, 1);
    c.LineTo(18, 4);
    EXPECT_EQ(c.Pixel(18, 1), kK);
    EXPECT_EQ(c.Pixel(18, 4), kW);
}

TEST(QtCanvas, HandleRectangleIsFiveByFiveWithAWhiteInside)
{
    QtCanvas c(20, 20);
    c.FillWhite(0, 0, 20, 20);
    c.SelectBrush(Brush{Brush::Kind::Solid, RGB(0, 0, 255)});
    c.Rectangle(8, 8, 3, 3); // corners given the other way round
    c.SelectBrush(Brush{Brush::Kind::Solid, 0xFFFFFF});
    const int x = 12, y = 12;
    c.Rectangle(x - 2, y - 2, x + 3, y + 3);
    EXPECT_EQ(Row(c, 10, 9, 15), ".#####.");
    EXPECT_EQ(Row(c, 12, 9, 15), ".#...#.");
    EXPECT_EQ(Row(c, 14, 9, 15), ".#####.");
    EXPECT_EQ(Row(c, 15, 9, 15), ".......");
    EXPECT_EQ(c.Pixel(5, 5), 0x0000FFu); // the blue brush inside the first one
    EXPECT_EQ(Row(c, 3, 2, 8), ".#####.");
}

TEST(QtCanvas, PensColoursDotsWidthAndTheMask)
{
    QtCanvas c(30, 10);
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
    // The mask mixes the pen into what is there: green AND cyan is green.
    c.SelectPen(Pen{PenStyle::Solid, 1, RGB(0, 255, 255)});
    c.SetROP2(RasterOp::MaskPen);
    c.MoveToEx(0, 7);
    c.LineTo(5, 7);
    EXPECT_EQ(c.Pixel(3, 7), 0x00FF00u);
    EXPECT_EQ(c.Pixel(2, 7), kK);
}

TEST(QtCanvas, LinesFarOffTheImageDrawOnlyTheirVisiblePart)
{
    QtCanvas c(20, 20);
    c.MoveToEx(-2000000000, 5);
    c.LineTo(2000000000, 5);
    c.MoveToEx(-2000000000, -1999999990);
    c.LineTo(2000000000, 2000000010); // 45 degrees through (10, 20)... and (0, 10)
    c.MoveToEx(5, -2000000000);
    c.LineTo(7, 2000000000);
    EXPECT_EQ(Row(c, 5, 0, 19), "####################");
    EXPECT_EQ(c.Pixel(0, 10), kK);
    EXPECT_EQ(c.Pixel(9, 19), kK);
}

TEST(QtCanvas, HatchRunsDownToTheRightFromTheSurfaceCorner)
{
    QtCanvas c(40, 40);
    c.SelectBrush(Brush{Brush::Kind::HatchForwardDiagonal, RGB(255, 128, 0)});
    c.SetBkMode(BkMode::Transparent);
    c.SelectPen(Pen{PenStyle::Null, 1, 0});
    c.Polygon({{0, 0}, {40, 0}, {40, 40}, {0, 40}});
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(c.Pixel(x, y), (x - y) % 8 == 0 ? 0xFF8000u : kW) << x << "," << y;
}

TEST(QtCanvas, PolygonFillsByTheAlternateRuleAndStrokesItsOutline)
{
    QtCanvas c(30, 30);
    c.SelectBrush(Brush{Brush::Kind::Solid, RGB(0, 0, 255)});
    // A five-pointed star drawn in one stroke: its centre is outside under the alternate rule.
    c.Polygon({{15, 2}, {24, 27}, {2, 11}, {28, 11}, {6, 27}});
    EXPECT_EQ(c.Pixel(15, 16), kW);
    EXPECT_EQ(c.Pixel(15, 8), 0x0000FFu);
    EXPECT_EQ(c.Pixel(15, 2), kK);
    EXPECT_EQ(c.Pixel(6, 27), kK);
}

TEST(QtCanvas, BackBufferCopyAndStretchedTiles)
{
    QtCanvas back(20, 20);
    QtCanvas window(20, 20);
    back.StretchPixels(2, 2, 8, 8, {0xFF0000, 0x00FF00, 0x0000FF, 0x000000}, 2, 2);
    window.CopyFrom(back);
    EXPECT_EQ(window.Pixel(2, 2), 0xFF0000u);
    EXPECT_EQ(window.Pixel(9, 2), 0x00FF00u);
    EXPECT_EQ(window.Pixel(5, 9), 0x0000FFu);
    EXPECT_EQ(window.Pixel(10, 10), kW);
    back.FillWhite(0, 0, 20, 20);
    EXPECT_EQ(back.Pixel(2, 2), kW);
    EXPECT_EQ(window.Pixel(2, 2), 0xFF0000u);
}

// The Qt canvas and the raster canvas of the command line agree on a whole frame.
TEST(QtCanvas, FrameMatchesTheRasterCanvas)
{
    Session s;
    s.programFolder = "/opt/fw/";
    ResetConfig(s.config, s.programFolder);
    ResetAtStart(s);
    s.view.setSWidth(300);
    s.view.setSHeight(200);
    s.view.reset();
    s.view.setZoom(1.0);
    ShapeRecord forest;
    ResetShape(forest, kForest);
    AppendShape(s.stores, forest, {{-100, -60}, {120, -60}, {0, 0}, {120, 60}, {-100, 60}});
    ShapeRecord poly;
    ResetShape(poly, kPoly);
    AppendShape(s.stores, poly, {{-20, -20}, {20, -20}, {20, 20}, {-20, 20}});
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
