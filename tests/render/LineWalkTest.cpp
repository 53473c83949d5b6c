// The solid pen's cut-and-run line against the step-by-step walk every other pen takes: the same
// pixels, and none beyond the surface's rows. The polygon fill against the alternate rule counted
// out pixel by pixel.
#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

#include "render/GdiCanvas.h"
#include "render/RasterCanvas.h"

namespace fw {
namespace {

// A surface whose rows are longer than its width, so that a pixel written past a row's end shows.
struct Surface {
    static constexpr int kWidth = 31;
    static constexpr int kHeight = 17;
    static constexpr std::size_t kStride = 40;
    std::vector<std::uint32_t> bits = std::vector<std::uint32_t>(kStride * kHeight, 0xFFFFFFFFu);
    PixelRows Rows() { return {bits.data(), kStride, kWidth, kHeight, 0xFF000000u}; }
};

// The segment drawn both ways on fresh surfaces; the whole rows compared, padding too.
void ExpectSame(int x0, int y0, int x1, int y1)
{
    Surface solid;
    Surface walked;
    SolidLine(solid.Rows(), x0, y0, x1, y1, 0xFF102030u);
    LineInk ink;
    ink.color = 0xFF102030u;
    WalkLine(walked.Rows(), x0, y0, x1, y1, ink);
    ASSERT_EQ(solid.bits, walked.bits) << "(" << x0 << ", " << y0 << ") to (" << x1 << ", " << y1 << ")";
}

TEST(SolidLine, SetsTheWalksPixelsForRandomSegmentsInAndAroundTheSurface)
{
    std::mt19937 rng(11);
    // Ends on the surface, just beyond it and far beyond it.
    std::uniform_int_distribution<int> nearX(-12, Surface::kWidth + 12);
    std::uniform_int_distribution<int> nearY(-12, Surface::kHeight + 12);
    std::uniform_int_distribution<int> farOff(-400, 400);
    std::uniform_int_distribution<int> kind(0, 5);
    for (int n = 0; n < 20000; ++n) {
        int x0 = nearX(rng), y0 = nearY(rng), x1 = nearX(rng), y1 = nearY(rng);
        switch (kind(rng)) {
        case 0: y1 = y0; break;                                     // level
        case 1: x1 = x0; break;                                     // upright
        case 2: y1 = y0 + (x1 - x0) * (n % 2 == 0 ? 1 : -1); break; // 45 degrees
        case 3: x1 = x0 + farOff(rng), y1 = y0 + farOff(rng); break;
        case 4: x0 = farOff(rng), y0 = farOff(rng); break;
        default: break;
        }
        ExpectSame(x0, y0, x1, y1);
        if (HasFatalFailure())
            return;
    }
}

TEST(SolidLine, SetsTheWalksPixelsForHugeAndDegenerateSegments)
{
    const int big[] = {INT_MIN, INT_MIN + 1, -2000000000, -1073741824, -1, 0, 5, 30, 31, 1073741824,
                       2000000000, INT_MAX};
    for (int x0 : big)
        for (int y0 : big)
            for (int x1 : big)
                for (int y1 : {INT_MIN, -3, 8, 16, 17, INT_MAX}) {
                    ExpectSame(x0, y0, x1, y1);
                    if (HasFatalFailure())
                        return;
                }
    // Long slopes through the surface whose half-way steps fall just on and off its edges.
    for (int k = -40; k <= 40; ++k) {
        ExpectSame(-1000000, k, 1000000, -k + 3);
        ExpectSame(k, -999999, -k + 7, 1000001);
        ExpectSame(-2000000000, -1999999990 + k, 2000000000, 2000000010 - k);
    }
    ExpectSame(4, 4, 4, 4);
}

TEST(SolidLine, UprightRunsSetLaterRowByRowLeaveWhatTheyWouldAtOnce)
{
    // One canvas is read after every call, so each run is set at once; the other only at the
    // end. Upright runs of two inks come in rows, between slants, fills and other pens.
    std::mt19937 rng(9);
    std::uniform_int_distribution<int> coord(-10, 50);
    std::uniform_int_distribution<int> pick(0, 9);
    RasterCanvas eager(41, 37);
    RasterCanvas lazy(41, 37);
    for (int n = 0; n < 4000; ++n) {
        const int k = pick(rng);
        const int a = coord(rng), b = coord(rng), c = coord(rng), d = coord(rng);
        for (RasterCanvas* canvas : {&eager, &lazy}) {
            RasterCanvas& cv = *canvas;
            if (k <= 5) {
                cv.MoveToEx(a, b);
                cv.LineTo(a, c);
            } else if (k == 6) {
                cv.SelectPen(Pen{d % 3 == 0 ? PenStyle::Dot : PenStyle::Solid, 1, d % 2 == 0 ? 0x0000FF : 0});
            } else if (k == 7) {
                cv.MoveToEx(a, b);
                cv.LineTo(c, d);
            } else if (k == 8) {
                cv.Rectangle(a, b, c, d);
            } else if (n % 5 == 0) {
                cv.FillWhite(a, b, 20, 20);
            } else {
                cv.Polygon({{a, b}, {c, d}, {b, c}});
            }
        }
        eager.Pixel(0, 0);
    }
    EXPECT_EQ(eager.Pixels(), lazy.Pixels());
}

// A pixel is inside when an odd number of edges cross its row's centre line at or left of its
// centre, each crossing found as the fill finds it.
bool InsideByCount(const std::vector<PixelPoint>& pts, int x, int y)
{
    const double xc = x + 0.5;
    const double yc = y + 0.5;
    int crossings = 0;
    for (std::size_t i = 0; i < pts.size(); ++i) {
        const PixelPoint& a = pts[i];
        const PixelPoint& b = pts[(i + 1) % pts.size()];
        if (a.y == b.y)
            continue;
        const PixelPoint& t = a.y < b.y ? a : b;
        const PixelPoint& u = a.y < b.y ? b : a;
        if (t.y > yc || u.y <= yc)
            continue;
        const double slope = (static_cast<double>(u.x) - t.x) / (static_cast<double>(u.y) - t.y);
        crossings += t.x + (yc - t.y) * slope <= xc;
    }
    return crossings % 2 == 1;
}

TEST(PolygonFill, FollowsTheAlternateRuleForRandomTangledPolygons)
{
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> coord(-20, 60);
    std::uniform_int_distribution<int> count(3, 40);
    for (int n = 0; n < 300; ++n) {
        std::vector<PixelPoint> pts(static_cast<std::size_t>(count(rng)));
        for (auto& p : pts)
            p = {coord(rng), coord(rng)};
        RasterCanvas c(41, 37);
        c.SelectPen(Pen{PenStyle::Null, 1, 0});
        c.SelectBrush(Brush{Brush::Kind::Solid, 0});
        c.Polygon(pts);
        for (int y = 0; y < 37; ++y)
            for (int x = 0; x < 41; ++x)
                ASSERT_EQ(c.Pixel(x, y) == 0, InsideByCount(pts, x, y)) << "polygon " << n << " at " << x << "," << y;
    }
}

} // namespace
} // namespace fw
