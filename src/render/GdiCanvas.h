// What the pixel surfaces share: the selected pen, brush, mix mode and background mode, the
// current position, and the walk of a one-pixel line as the GDI steps it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

#include "ports/Canvas.h"

namespace fw {

// 0x00BBGGRR to 0x00RRGGBB.
constexpr std::uint32_t ToRgb(std::int32_t colorRef)
{
    const auto c = static_cast<std::uint32_t>(colorRef);
    return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
}

// The dotted pen: three pixels on, three off, the pattern running on along a polyline.
constexpr int kDotOn = 3;
constexpr int kDotPeriod = 6;

// The rows of pixels a surface paints into; `opaque` the bits above a 0x00RRGGBB colour.
struct PixelRows {
    std::uint32_t* bits;
    std::size_t stride;
    int width;
    int height;
    std::uint32_t opaque;
};

// The pixels from (left, top) to (right, bottom) inclusive; it may reach beyond the surface.
struct PixelBox {
    std::int64_t left;
    std::int64_t top;
    std::int64_t right;
    std::int64_t bottom;
};

// How a line sets its pixels: the ink, the dotted pattern from `start` (its gaps white when
// `paintGaps`), ANDed into the pixels with `mask`, a 2 by 2 block per pixel when `wide`.
struct LineInk {
    std::uint32_t color = 0;
    bool dotted = false;
    bool paintGaps = false;
    bool mask = false;
    bool wide = false;
    int start = 0;
};

// The pixels of a line from (x0, y0) that leaves out (x1, y1), walked step by step with a test of
// each pixel against the surface: every pen.
void WalkLine(const PixelRows& rows, int x0, int y0, int x1, int y1, const LineInk& ink);
// The same pixels for a solid one-pixel pen copied in: the line is cut to the steps that fall on
// the surface before it is walked, and level and upright lines are filled as runs.
void SolidLine(const PixelRows& rows, int x0, int y0, int x1, int y1, std::uint32_t color);

class GdiCanvas : public Canvas {
public:
    Pen SelectPen(const Pen& pen) override { return std::exchange(pen_, pen); }
    Brush SelectBrush(const Brush& brush) override { return std::exchange(brush_, brush); }
    RasterOp SetROP2(RasterOp op) override { return std::exchange(rop_, op); }
    BkMode SetBkMode(BkMode mode) override { return std::exchange(bkMode_, mode); }
    void MoveToEx(int x, int y) override
    {
        curX_ = x;
        curY_ = y;
        styleStep_ = 0;
    }
    void LineTo(int x, int y) override
    {
        Line(curX_, curY_, x, y);
        curX_ = x;
        curY_ = y;
    }
    void Polygon(const std::vector<PixelPoint>& points) override;
    void Rectangle(int left, int top, int right, int bottom) override;

protected:
    bool Dotted() const { return pen_.style == PenStyle::Dot && pen_.width <= 1; }
    // The closed outline of a polygon with the pen; the current position stays where it was.
    void Outline(const std::vector<PixelPoint>& points)
    {
        const int keepX = curX_;
        const int keepY = curY_;
        MoveToEx(points[0].x, points[0].y);
        for (std::size_t i = 1; i < points.size(); ++i)
            LineTo(points[i].x, points[i].y);
        LineTo(points[0].x, points[0].y);
        curX_ = keepX;
        curY_ = keepY;
    }
    // A rectangle's corners in order and held well inside 32 bits (nothing beyond can show, and
    // its edges subtract one); false when it has no inside.
    static bool OrderRectangle(int& left, int& top, int& right, int& bottom)
    {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
        constexpr int kLimit = 1 << 30;
        left = std::clamp(left, -kLimit, kLimit);
        right = std::clamp(right, -kLimit, kLimit);
        top = std::clamp(top, -kLimit, kLimit);
        bottom = std::clamp(bottom, -kLimit, kLimit);
        return right - left >= 1 && bottom - top >= 1;
    }

    using Rows = PixelRows;
    // Where lines and fills go, for writes that stay inside `touched`; anything drawn otherwise
    // before must be in the rows by then.
    virtual Rows Surface(const PixelBox& touched) = 0;
    // The same for a line from (x0, y0) to (x1, y1) with the pen selected: it writes within a pixel
    // right of and below its walk.
    virtual Rows LineSurface(int x0, int y0, int x1, int y1)
    {
        return Surface({std::min(x0, x1), std::min(y0, y1), std::max<std::int64_t>(x0, x1) + 1,
                        std::max<std::int64_t>(y0, y1) + 1});
    }

    // Upright runs of the solid pen wait so that a row of them, the grid's, is set row by row
    // rather than column by column. Anything that reads the pixels, or sets them otherwise, sets
    // the waiting runs first: they all have one ink and nothing came between them.
    void SetWaitingRuns() const
    {
        if (!runs_.empty())
            SetRuns();
    }

    Pen pen_;
    Brush brush_{Brush::Kind::Solid, 0xFFFFFF}; // a fresh surface's brush is white
    RasterOp rop_ = RasterOp::CopyPen;
    BkMode bkMode_ = BkMode::Opaque;
    int curX_ = 0;
    int curY_ = 0;
    int styleStep_ = 0; // position in the dotted pen's pattern

private:
    // One line from (x0, y0) that leaves out (x1, y1), with the pen selected.
    void Line(int x0, int y0, int x1, int y1);
    void SetRuns() const;
    void FillSpan(const Rows& rows, int y, int x0, int x1) const;
    // The inside of a polygon with the brush by the alternate rule: a pixel is inside when its
    // centre is.
    void FillPolygon(const Rows& rows, const std::vector<PixelPoint>& points);

    // The polygon fill's working lists, kept so that a frame does not allocate per polygon.
    struct Edge {
        int top, bottom;
        double x0, slope;
    };
    // Column x from row `from` to `to`, inclusive and on the surface.
    struct Run {
        int x, from, to;
    };
    mutable std::vector<Run> runs_;
    PixelRows runRows_{};
    std::uint32_t runColor_ = 0;

    std::vector<Edge> edges_;
    struct Crossing {
        double x; // where the row's centre line crosses the edge
        const Edge* edge;
    };
    std::vector<Crossing> active_;
};

// The pixels of a line from (x0, y0) that leaves out (x1, y1): one per step along the longer
// axis, the shorter one rounding half away from the start. Only the steps whose major coordinate
// lies within a pixel of a width by height surface are walked: from `first` to `last`.
class LineWalk {
public:
    LineWalk(int x0, int y0, int x1, int y1, int width, int height)
    {
        const std::int64_t dx = static_cast<std::int64_t>(x1) - x0;
        const std::int64_t dy = static_cast<std::int64_t>(y1) - y0;
        const std::int64_t adx = std::llabs(dx);
        const std::int64_t ady = std::llabs(dy);
        xMajor_ = adx >= ady;
        steps = xMajor_ ? adx : ady;
        straight = dx == 0 || dy == 0 || adx == ady;
        if (steps == 0)
            return;
        const std::int64_t major0 = xMajor_ ? x0 : y0;
        const std::int64_t limit = xMajor_ ? width : height;
        const bool forward = (xMajor_ ? dx : dy) >= 0;
        first = std::max<std::int64_t>(0, forward ? -1 - major0 : major0 - limit);
        last = std::min<std::int64_t>(steps - 1, forward ? limit - major0 : major0 + 1);
        if (last < first)
            return;
        // The minor offset is floor((2 i m + steps) / (2 steps)), found once and then carried
        // along with its remainder.
        twoM_ = 2 * (xMajor_ ? ady : adx);
        twoSteps_ = 2 * steps;
        const __int128 n0 = static_cast<__int128>(twoM_) * first + steps;
        const auto off = static_cast<std::int64_t>(n0 / twoSteps_);
        rem_ = static_cast<std::int64_t>(n0 % twoSteps_);
        const int majorDir = forward ? 1 : -1;
        const int minorDir = (xMajor_ ? dy : dx) < 0 ? -1 : 1;
        const auto major = static_cast<int>(major0 + majorDir * first);
        const auto minor = static_cast<int>((xMajor_ ? y0 : x0) + minorDir * off);
        x = xMajor_ ? major : minor;
        y = xMajor_ ? minor : major;
        majorX_ = xMajor_ ? majorDir : 0;
        majorY_ = xMajor_ ? 0 : majorDir;
        minorX_ = xMajor_ ? 0 : minorDir;
        minorY_ = xMajor_ ? minorDir : 0;
    }

    // To the pixel of the next step.
    void Next()
    {
        x += majorX_;
        y += majorY_;
        rem_ += twoM_;
        if (rem_ >= twoSteps_) {
            rem_ -= twoSteps_;
            x += minorX_;
            y += minorY_;
        }
    }

    std::int64_t steps = 0; // of the whole line
    std::int64_t first = 0;
    std::int64_t last = -1;
    bool straight = true; // level, upright or at 45 degrees
    int x = 0;            // the pixel of the step the walk is at, from `first` on
    int y = 0;

private:
    bool xMajor_ = true;
    std::int64_t twoM_ = 0;
    std::int64_t twoSteps_ = 1;
    std::int64_t rem_ = 0;
    int majorX_ = 0;
    int majorY_ = 0;
    int minorX_ = 0;
    int minorY_ = 0;
};

} // namespace fw
