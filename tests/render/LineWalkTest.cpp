// The solid pen's cut-and-run line against the step-by-step walk every other pen takes: the same
// pixels, and none beyond the surface's rows.
#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

#include "render/GdiCanvas.h"

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
        int x0 = nearX(rng);
        int y0 = nearY(rng);
        int x1 = nearX(rng);
        int y1 = nearY(rng);
        switch (kind(rng)) {
        case 0: y1 = y0; break; // level
        case 1: x1 = x0; break; // upright
        case 2: y1 = y0 + (x1 - x0) * (n % 2 == 0 ? 1 : -1); break; // 45 degrees
        case 3:
            x1 = x0 + farOff(rng);
            y1 = y0 + farOff(rng);
            break;
        case 4:
            x0 = farOff(rng);
            y0 = farOff(rng);
            break;
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

} // namespace
} // namespace fw
