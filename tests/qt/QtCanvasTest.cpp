// The pixel rules of the Qt canvas and of the command line's raster canvas: each case runs on both,
// so the two paint the same frame pixel for pixel.
#include <gtest/gtest.h>

#include <memory>
#include <random>

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

// ---- fills and copies of only the tiles that may differ

// Pixels where a Qt canvas and a raster canvas of the same size differ.
int Differ(const QtCanvas& a, const RasterCanvas& b)
{
    const QImage& image = a.Image();
    const std::vector<std::uint32_t>& pixels = b.Pixels();
    int n = 0;
    for (int y = 0; y < a.Height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < a.Width(); ++x)
            n += (row[x] & 0xFFFFFFu) != pixels[static_cast<std::size_t>(y) * b.Width() + x];
    }
    return n;
}

// One random drawing call on both canvases: lines with every pen, rectangles, polygons, blits
// and white fills, reaching beyond the surface.
void RandomCall(std::mt19937& rng, Canvas& q, Canvas& r)
{
    std::uniform_int_distribution<int> coord(-30, 130);
    std::uniform_int_distribution<int> pick(0, 9);
    const int colors[] = {RGB(0, 0, 0), RGB(255, 0, 0), RGB(0, 200, 0), RGB(0, 0, 255)};
    auto both = [&](auto&& call) {
        call(q);
        call(r);
    };
    switch (pick(rng)) {
    case 0: {
        const Pen pen{pick(rng) < 3 ? PenStyle::Dot : PenStyle::Solid, pick(rng) < 3 ? 2 : 1, colors[pick(rng) % 4]};
        const RasterOp rop = pick(rng) < 2 ? RasterOp::MaskPen : RasterOp::CopyPen;
        both([&](Canvas& c) {
            c.SelectPen(pen);
            c.SetROP2(rop);
        });
        break;
    }
    case 1: {
        const Brush brush{pick(rng) < 5 ? Brush::Kind::Solid : Brush::Kind::HatchForwardDiagonal, colors[pick(rng) % 4]};
        both([&](Canvas& c) { c.SelectBrush(brush); });
        break;
    }
    case 2: {
        const int l = coord(rng), t = coord(rng), w = pick(rng) * 15, h = pick(rng) * 12;
        both([&](Canvas& c) { c.FillWhite(l, t, w, h); });
        break;
    }
    case 3: {
        const int l = coord(rng), t = coord(rng), rr = coord(rng), b = coord(rng);
        both([&](Canvas& c) { c.Rectangle(l, t, rr, b); });
        break;
    }
    case 4: {
        std::vector<PixelPoint> pts(3 + pick(rng) % 4);
        for (auto& p : pts)
            p = {coord(rng), coord(rng)};
        both([&](Canvas& c) { c.Polygon(pts); });
        break;
    }
    case 5: {
        const int x = coord(rng), y = coord(rng);
        const std::vector<std::uint32_t> px(12, 0x123456u + static_cast<std::uint32_t>(pick(rng)));
        both([&](Canvas& c) { c.BlitPixels(x, y, 4, 3, px); });
        break;
    }
    default: {
        // Long slants as well as short strokes.
        const int x0 = coord(rng), y0 = coord(rng);
        const int x1 = pick(rng) < 5 ? x0 + pick(rng) - 4 : coord(rng) * 4 - 150;
        const int y1 = pick(rng) < 5 ? y0 + pick(rng) - 4 : coord(rng) * 4 - 150;
        both([&](Canvas& c) {
            c.MoveToEx(x0, y0);
            c.LineTo(x1, y1);
        });
        break;
    }
    }
}

TEST(QtCanvasTiles, FillsAndCopiesLeaveWhatWholeOnesWould)
{
    // The raster canvas fills and copies whole: the Qt canvases must agree with it after each
    // step, however the writes, fills and copies between back, window and a third canvas fall.
    std::mt19937 rng(5);
    std::uniform_int_distribution<int> step(0, 19);
    QtCanvas qBack(101, 67), qWindow(101, 67), qOther(101, 67);
    RasterCanvas rBack(101, 67), rWindow(101, 67), rOther(101, 67);
    QtCanvas* q[] = {&qBack, &qWindow, &qOther};
    RasterCanvas* r[] = {&rBack, &rWindow, &rOther};
    for (int n = 0; n < 6000; ++n) {
        const int k = step(rng);
        if (k == 0) {
            qBack.FillWhite(0, 0, 101, 67);
            rBack.FillWhite(0, 0, 101, 67);
        } else if (k <= 5) {
            // A copy between two of the three, mostly back to window.
            const int from = k <= 3 ? 0 : step(rng) % 3;
            const int to = k <= 3 ? 1 : (from + 1 + step(rng) % 2) % 3;
            q[to]->CopyFrom(*q[from]);
            r[to]->CopyFrom(*r[from]);
        } else {
            const int on = step(rng) < 12 ? 1 : step(rng) % 3;
            RandomCall(rng, *q[on], *r[on]);
        }
        for (int i = 0; i < 3; ++i)
            ASSERT_EQ(Differ(*q[i], *r[i]), 0) << "step " << n << ", canvas " << i;
    }
}

TEST(QtCanvasTiles, TheDragOverlayEqualsAFullRepaintAsTheGhostMoves)
{
    Session s = test::MakeSession(300, 200);
    test::AddShape(s, kPoly, test::Pts({{-100, -60}, {120, -60}, {0, 0}, {120, 60}, {-100, 60}}));
    test::AddShape(s, kWideLine, test::Pts({{-140, 90}, {150, -95}}));
    test::AddShape(s, kPoly, test::Pts({{-20, -20}, {20, -20}, {20, 20}, {-20, 20}}));
    test::AddShape(s, kForest, test::Pts({{-100, -60}, {120, -60}, {0, 0}, {120, 60}, {-100, 60}}));
    test::AddObject(s, kVor, 40, -30);
    s.editor.selection.addEntry(2, 0, -20, 20, -20, 20);
    QtCanvas qBack(300, 200), qWindow(300, 200);
    RasterCanvas rBack(300, 200), rWindow(300, 200);
    // Each frame equals the raster canvas's, which fills and copies whole, and every pixel it
    // changed lies in the tiles the widget is told to show anew.
    auto frame = [&](const char* what) {
        const QImage before = qWindow.Image().copy();
        PaintFrame(s, qWindow, qBack);
        PaintFrame(s, rWindow, rBack);
        ASSERT_EQ(Differ(qWindow, rWindow), 0) << what;
        ASSERT_EQ(Differ(qBack, rBack), 0) << what;
        const QRegion changed = qWindow.TakeChanged();
        for (int y = 0; y < 200; ++y)
            for (int x = 0; x < 300; ++x)
                if (before.pixel(x, y) != qWindow.Image().pixel(x, y)) {
                    ASSERT_TRUE(changed.contains(QPoint(x, y))) << what << " at " << x << "," << y;
                }
    };
    frame("the first frame");
    WorkingCopy& w = s.editor.work;
    auto drag = [&](int dx, int dy, std::uint8_t state) {
        w = WorkingCopy{};
        for (int i = 0; i < 2; ++i) {
            PointList moved = s.stores.PointStore[i];
            for (Point& p : moved)
                p = {p.X + dx, p.Y + dy};
            w.WorkPoints.push_back(moved);
            w.WorkShapes.push_back(s.stores.ShapeStore[i]);
        }
        ObjectRecord o = s.stores.ObjectStore[0];
        o.PosX += dx;
        o.PosY += dy;
        w.WorkObjects.push_back(o);
        w.WorkShapeLast = 1;
        w.WorkObjectLast = 0;
        w.WorkLimits = {-140 + dx, 150 + dx, -95 + dy, 90 + dy};
        s.editor.EditState = state;
    };
    // The ghost moves about, partly and wholly off the surface, with and without its box.
    for (int i = 0; i < 12; ++i) {
        drag(i * 23 - 130, i * 17 - 90, i % 3 == 0 ? 10 : 9);
        frame("a drag");
    }
    drag(4000, 4000, 10);
    frame("a drag off the surface");
    // The project changes and the view moves: the full frame, then the overlay over it.
    s.editor.work = WorkingCopy{};
    s.editor.EditState = 0;
    s.stores.PointStore[2][0] = {-60, -45};
    s.view.setOffX(25);
    frame("a full frame after the change");
    drag(10, 10, 9);
    frame("the overlay over the new frame");
    s.editor.work = WorkingCopy{};
    s.editor.EditState = 0;
    frame("the frame after the drag");
}

TEST(QtCanvasTiles, AHandedOverFrameOutlivesEitherCanvas)
{
    // A whole frame moves to the window by exchanging buffers; whichever canvas goes first, the
    // other still holds the picture.
    auto paint = [](QtCanvas& back, int y) {
        back.FillWhite(0, 0, 40, 30);
        back.MoveToEx(2, y);
        back.LineTo(30, y);
    };
    auto back = std::make_unique<QtCanvas>(40, 30);
    {
        QtCanvas window(40, 30);
        paint(*back, 5);
        window.CopyFrom(*back);
        EXPECT_EQ(Row(window, 5, 1, 3), ".##");
    }
    EXPECT_EQ(Row(*back, 5, 1, 3), ".##");
    QtCanvas window(40, 30);
    paint(*back, 9);
    window.CopyFrom(*back);
    back.reset();
    EXPECT_EQ(Row(window, 9, 1, 3), ".##");
    window.MoveToEx(0, 20);
    window.LineTo(2, 20);
    EXPECT_EQ(Row(window, 20, 0, 2), "##.");
}

} // namespace
} // namespace fw::qt
