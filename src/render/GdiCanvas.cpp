#include "render/GdiCanvas.h"

#include <cmath>

namespace fw {

void WalkLine(const PixelRows& rows, int x0, int y0, int x1, int y1, const LineInk& ink)
{
    LineWalk walk(x0, y0, x1, y1, rows.width, rows.height);
    const int offsets = ink.wide ? 4 : 1; // a wide pen covers the 2 by 2 below and right
    auto at = [&rows](std::int64_t x, std::int64_t y) -> std::uint32_t* {
        if (x < 0 || y < 0 || x >= rows.width || y >= rows.height)
            return nullptr;
        return rows.bits + static_cast<std::size_t>(y) * rows.stride + static_cast<std::size_t>(x);
    };
    for (std::int64_t i = walk.first; i <= walk.last; ++i, walk.Next()) {
        const bool on = !ink.dotted || (ink.start + i) % kDotPeriod < kDotOn;
        if (!on && !ink.paintGaps)
            continue;
        const std::uint32_t color = on ? ink.color : rows.opaque | 0xFFFFFFu;
        for (int k = 0; k < (on ? offsets : 1); ++k)
            if (std::uint32_t* px = at(walk.x + (k & 1), walk.y + (k >> 1)))
                *px = ink.mask ? (*px & color) : color;
    }
}

namespace {

// ceil(a / b) for a >= 0, b > 0.
std::int64_t CeilDiv(__int128 a, __int128 b) { return static_cast<std::int64_t>((a + b - 1) / b); }

// A level (or upright) run from a towards b, b left out, on row or column `at` of a surface
// `length` long across it and `across` wide: the first and last pixel on the surface, inclusive.
bool RunOnSurface(std::int64_t a, std::int64_t b, std::int64_t at, std::int64_t length, std::int64_t across,
                  std::int64_t& from, std::int64_t& to)
{
    if (at < 0 || at >= across)
        return false;
    from = std::max<std::int64_t>(a < b ? a : b + 1, 0);
    to = std::min<std::int64_t>(a < b ? b - 1 : a, length - 1);
    return from <= to;
}

} // namespace

void SolidLine(const PixelRows& rows, int x0, int y0, int x1, int y1, std::uint32_t color)
{
    std::int64_t from = 0;
    std::int64_t to = 0;
    if (y0 == y1) {
        if (RunOnSurface(x0, x1, y0, rows.width, rows.height, from, to)) {
            std::uint32_t* row = rows.bits + static_cast<std::size_t>(y0) * rows.stride;
            std::fill(row + from, row + to + 1, color);
        }
        return;
    }
    if (x0 == x1) {
        if (RunOnSurface(y0, y1, x0, rows.height, rows.width, from, to))
            for (std::size_t y = static_cast<std::size_t>(from), i = y * rows.stride + static_cast<std::size_t>(x0);
                 y <= static_cast<std::size_t>(to); ++y, i += rows.stride)
                rows.bits[i] = color;
        return;
    }
    const std::int64_t dx = static_cast<std::int64_t>(x1) - x0;
    const std::int64_t dy = static_cast<std::int64_t>(y1) - y0;
    const bool xMajor = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t steps = xMajor ? std::llabs(dx) : std::llabs(dy);
    const std::int64_t m = xMajor ? std::llabs(dy) : std::llabs(dx);
    const std::int64_t major0 = xMajor ? x0 : y0;
    const std::int64_t minor0 = xMajor ? y0 : x0;
    const int majorDir = (xMajor ? dx : dy) < 0 ? -1 : 1;
    const int minorDir = (xMajor ? dy : dx) < 0 ? -1 : 1;
    // Step i sets major0 + majorDir i across, and minor0 + minorDir off(i) with
    // off(i) = floor((2 i m + steps) / (2 steps)), which never falls as i grows.
    std::int64_t first = 0;
    std::int64_t last = steps - 1;
    const bool inside = x0 >= 0 && y0 >= 0 && x1 >= 0 && y1 >= 0 && x0 < rows.width && x1 < rows.width &&
                        y0 < rows.height && y1 < rows.height;
    if (!inside) {
        // The steps whose major coordinate is on the surface.
        const std::int64_t majorLimit = xMajor ? rows.width : rows.height;
        first = std::max(first, majorDir > 0 ? -major0 : major0 - (majorLimit - 1));
        last = std::min(last, majorDir > 0 ? majorLimit - 1 - major0 : major0);
        // Those whose minor offset lies in [lo, hi].
        const std::int64_t minorLimit = xMajor ? rows.height : rows.width;
        const std::int64_t lo = minorDir > 0 ? -minor0 : minor0 - (minorLimit - 1);
        const std::int64_t hi = minorDir > 0 ? minorLimit - 1 - minor0 : minor0;
        if (hi < 0 || first > last)
            return;
        if (lo > 0)
            first = std::max(first, CeilDiv(static_cast<__int128>(2 * lo - 1) * steps, 2 * m));
        last = std::min(last, CeilDiv(static_cast<__int128>(2 * hi + 1) * steps, 2 * m) - 1);
        if (first > last)
            return;
    }
    const std::int64_t twoM = 2 * m;
    const std::int64_t twoSteps = 2 * steps;
    std::int64_t off = 0;
    // The remainder less one whole step, so that a carry is its turning non-negative.
    std::int64_t err = steps - twoSteps;
    if (first > 0) {
        const __int128 n0 = static_cast<__int128>(twoM) * first + steps;
        off = static_cast<std::int64_t>(n0 / twoSteps);
        err = static_cast<std::int64_t>(n0 % twoSteps) - twoSteps;
    }
    const std::int64_t x = xMajor ? major0 + majorDir * first : minor0 + minorDir * off;
    const std::int64_t y = xMajor ? minor0 + minorDir * off : major0 + majorDir * first;
    const auto stride = static_cast<std::ptrdiff_t>(rows.stride);
    const std::ptrdiff_t majorStep = xMajor ? majorDir : majorDir * stride;
    const std::ptrdiff_t minorStep = xMajor ? minorDir * stride : minorDir;
    std::ptrdiff_t i = static_cast<std::ptrdiff_t>(y) * stride + static_cast<std::ptrdiff_t>(x);
    for (std::int64_t n = last - first; n >= 0; --n) {
        rows.bits[i] = color;
        i += majorStep;
        err += twoM;
        if (err >= 0) {
            err -= twoSteps;
            i += minorStep;
        }
    }
}

void GdiCanvas::Line(int x0, int y0, int x1, int y1)
{
    const std::int64_t steps = std::max(std::llabs(static_cast<std::int64_t>(x1) - x0),
                                        std::llabs(static_cast<std::int64_t>(y1) - y0));
    LineInk ink;
    ink.start = styleStep_;
    styleStep_ = static_cast<int>((ink.start + steps) % kDotPeriod);
    if (pen_.style == PenStyle::Null)
        return;
    const Rows rows = LineSurface(x0, y0, x1, y1);
    ink.color = rows.opaque | ToRgb(pen_.color);
    ink.dotted = Dotted();
    ink.mask = rop_ == RasterOp::MaskPen;
    ink.paintGaps = ink.dotted && bkMode_ == BkMode::Opaque;
    ink.wide = pen_.width >= 2;
    const bool solid = !ink.dotted && !ink.mask && !ink.wide;
    if (solid && x0 == x1 && y0 != y1) {
        if (x0 < 0 || x0 >= rows.width)
            return;
        const int from = std::max(y0 < y1 ? y0 : y1 + 1, 0);
        const int to = std::min(y0 < y1 ? y1 - 1 : y0, rows.height - 1);
        if (from > to)
            return;
        if (ink.color != runColor_)
            SetWaitingRuns();
        runColor_ = ink.color;
        runRows_ = rows;
        runs_.push_back({x0, from, to});
        return;
    }
    SetWaitingRuns();
    if (solid)
        SolidLine(rows, x0, y0, x1, y1, ink.color);
    else
        WalkLine(rows, x0, y0, x1, y1, ink);
}

void GdiCanvas::SetRuns() const
{
    std::sort(runs_.begin(), runs_.end(), [](const Run& a, const Run& b) { return a.x < b.x; });
    int top = runs_.front().from;
    int bottom = runs_.front().to;
    for (const Run& r : runs_) {
        top = std::min(top, r.from);
        bottom = std::max(bottom, r.to);
    }
    for (int y = top; y <= bottom; ++y) {
        std::uint32_t* row = runRows_.bits + static_cast<std::size_t>(y) * runRows_.stride;
        for (const Run& r : runs_)
            if (r.from <= y && y <= r.to)
                row[r.x] = runColor_;
    }
    runs_.clear();
}

void GdiCanvas::FillSpan(const Rows& rows, int y, int x0, int x1) const
{
    if (y < 0 || y >= rows.height)
        return;
    x0 = std::max(x0, 0);
    x1 = std::min(x1, rows.width - 1);
    if (x1 < x0)
        return;
    std::uint32_t* row = rows.bits + static_cast<std::size_t>(y) * rows.stride;
    const std::uint32_t rgb = rows.opaque | ToRgb(brush_.color);
    switch (brush_.kind) {
    case Brush::Kind::Solid: std::fill(row + x0, row + x1 + 1, rgb); break;
    case Brush::Kind::HatchForwardDiagonal:
        if (bkMode_ == BkMode::Opaque)
            std::fill(row + x0, row + x1 + 1, rows.opaque | 0xFFFFFFu);
        // The first x at or after x0 with x - y a multiple of 8, then every eighth.
        for (int x = x0 + (((y - x0) % 8) + 8) % 8; x <= x1; x += 8)
            row[x] = rgb;
        break;
    case Brush::Kind::Hollow: break;
    }
}

void GdiCanvas::Polygon(const std::vector<PixelPoint>& points)
{
    if (points.size() < 2)
        return;
    SetWaitingRuns();
    if (brush_.kind != Brush::Kind::Hollow && points.size() >= 3) {
        PixelBox box{points[0].x, points[0].y, points[0].x, points[0].y};
        for (const PixelPoint& p : points) {
            box.left = std::min<std::int64_t>(box.left, p.x);
            box.right = std::max<std::int64_t>(box.right, p.x);
            box.top = std::min<std::int64_t>(box.top, p.y);
            box.bottom = std::max<std::int64_t>(box.bottom, p.y);
        }
        FillPolygon(Surface(box), points);
    }
    Outline(points);
}

void GdiCanvas::Rectangle(int left, int top, int right, int bottom)
{
    if (!OrderRectangle(left, top, right, bottom))
        return;
    // Wholly off the surface (a wide pen reaches one pixel further): nothing shows, and the
    // dotted pattern ends where the four edges would leave it.
    if (right < -1 || bottom < -1 || left > Width() || top > Height()) {
        const std::int64_t w = static_cast<std::int64_t>(right) - 1 - left;
        const std::int64_t h = static_cast<std::int64_t>(bottom) - 1 - top;
        styleStep_ = static_cast<int>((2 * w + 2 * h) % kDotPeriod);
        return;
    }
    if (brush_.kind != Brush::Kind::Hollow) {
        SetWaitingRuns();
        const Rows rows = Surface({left, top, right - 1, bottom - 1});
        for (int y = std::max(top, 0); y < std::min(bottom, rows.height); ++y)
            FillSpan(rows, y, left, right - 1);
    }
    const int keepX = curX_;
    const int keepY = curY_;
    MoveToEx(left, top);
    LineTo(right - 1, top);
    LineTo(right - 1, bottom - 1);
    LineTo(left, bottom - 1);
    LineTo(left, top);
    curX_ = keepX;
    curY_ = keepY;
}

void GdiCanvas::FillPolygon(const Rows& rows, const std::vector<PixelPoint>& points)
{
    if (brush_.kind == Brush::Kind::Hollow || points.size() < 3)
        return;
    int minY = points[0].y;
    int maxY = points[0].y;
    for (const auto& p : points) {
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    minY = std::max(minY, 0);
    maxY = std::min(maxY, rows.height - 1);
    // The edges sorted by their top; each row samples the active ones at its centre. The ends are
    // whole pixels, so an edge is active from its top row up to the row before its bottom.
    edges_.clear();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PixelPoint& a = points[i];
        const PixelPoint& b = points[(i + 1) % points.size()];
        if (a.y == b.y)
            continue;
        const PixelPoint& t = a.y < b.y ? a : b;
        const PixelPoint& u = a.y < b.y ? b : a;
        if (u.y <= minY || t.y > maxY)
            continue;
        edges_.push_back({t.y, u.y, static_cast<double>(t.x),
                          (static_cast<double>(u.x) - t.x) / (static_cast<double>(u.y) - t.y)});
    }
    std::sort(edges_.begin(), edges_.end(), [](const Edge& l, const Edge& r) { return l.top < r.top; });
    active_.clear();
    std::size_t next = 0;
    for (int y = minY; y <= maxY; ++y) {
        const double yc = y + 0.5;
        while (next < edges_.size() && edges_[next].top <= y)
            active_.push_back({0.0, &edges_[next++]});
        std::erase_if(active_, [y](const Crossing& c) { return c.edge->bottom <= y; });
        // The crossings in order: kept in the last row's order, they are nearly sorted already.
        for (std::size_t k = 0; k < active_.size(); ++k) {
            const Crossing c{active_[k].edge->x0 + (yc - active_[k].edge->top) * active_[k].edge->slope,
                             active_[k].edge};
            std::size_t at = k;
            for (; at > 0 && active_[at - 1].x > c.x; --at)
                active_[at] = active_[at - 1];
            active_[at] = c;
        }
        for (std::size_t k = 0; k + 1 < active_.size(); k += 2) {
            const double from = std::max(active_[k].x, -1.0);
            const double to = std::min(active_[k + 1].x, static_cast<double>(rows.width) + 1);
            // Pixels whose centre x + 0.5 lies in [from, to).
            const int x0 = static_cast<int>(std::ceil(from - 0.5));
            const int x1 = static_cast<int>(std::ceil(to - 0.5)) - 1;
            if (x1 >= x0)
                FillSpan(rows, y, x0, x1);
        }
    }
}

} // namespace fw
