#include "render/GdiCanvas.h"

#include <cmath>

namespace fw {

void GdiCanvas::Line(int x0, int y0, int x1, int y1)
{
    const Rows rows = Surface();
    LineWalk walk(x0, y0, x1, y1, rows.width, rows.height);
    const int start = styleStep_;
    styleStep_ = static_cast<int>((start + walk.steps) % kDotPeriod);
    if (pen_.style == PenStyle::Null)
        return;
    const std::uint32_t color = rows.opaque | ToRgb(pen_.color);
    const bool styled = Dotted();
    const bool mask = rop_ == RasterOp::MaskPen;
    const bool paintGaps = styled && bkMode_ == BkMode::Opaque;
    const int offsets = pen_.width >= 2 ? 4 : 1; // a wide pen covers the 2 by 2 below and right
    auto at = [&rows](std::int64_t x, std::int64_t y) -> std::uint32_t* {
        if (x < 0 || y < 0 || x >= rows.width || y >= rows.height)
            return nullptr;
        return rows.bits + static_cast<std::size_t>(y) * rows.stride + static_cast<std::size_t>(x);
    };
    // A plain level or upright line, the grid's and the handles', is one run: from the start up
    // to the end, which is left out.
    if (!styled && !mask && offsets == 1 && (y0 == y1) != (x0 == x1)) {
        const bool level = y0 == y1;
        const std::int64_t a = level ? x0 : y0;
        const std::int64_t b = level ? x1 : y1;
        for (std::int64_t m = std::max<std::int64_t>(std::min(a, b + 1), -1),
                          end = std::min<std::int64_t>(std::max(a, b - 1), level ? rows.width : rows.height);
             m <= end; ++m)
            if (std::uint32_t* px = level ? at(m, y0) : at(x0, m))
                *px = color;
        return;
    }
    for (std::int64_t i = walk.first; i <= walk.last; ++i, walk.Next()) {
        const bool on = !styled || (start + i) % kDotPeriod < kDotOn;
        if (!on && !paintGaps)
            continue;
        const std::uint32_t ink = on ? color : rows.opaque | 0xFFFFFFu;
        for (int k = 0; k < (on ? offsets : 1); ++k)
            if (std::uint32_t* px = at(walk.x + (k & 1), walk.y + (k >> 1)))
                *px = mask ? (*px & ink) : ink;
    }
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
    FillPolygon(Surface(), points);
    Outline(points);
}

void GdiCanvas::Rectangle(int left, int top, int right, int bottom)
{
    if (!OrderRectangle(left, top, right, bottom))
        return;
    const Rows rows = Surface();
    // Wholly off the surface (a wide pen reaches one pixel further): nothing shows, and the
    // dotted pattern ends where the four edges would leave it.
    if (right < -1 || bottom < -1 || left > rows.width || top > rows.height) {
        const std::int64_t w = static_cast<std::int64_t>(right) - 1 - left;
        const std::int64_t h = static_cast<std::int64_t>(bottom) - 1 - top;
        styleStep_ = static_cast<int>((2 * w + 2 * h) % kDotPeriod);
        return;
    }
    if (brush_.kind != Brush::Kind::Hollow)
        for (int y = std::max(top, 0); y < std::min(bottom, rows.height); ++y)
            FillSpan(rows, y, left, right - 1);
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
    // The edges sorted by their top; each row samples the active ones at its centre.
    edges_.clear();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const PixelPoint& a = points[i];
        const PixelPoint& b = points[(i + 1) % points.size()];
        if (a.y == b.y)
            continue;
        const PixelPoint& t = a.y < b.y ? a : b;
        const PixelPoint& u = a.y < b.y ? b : a;
        edges_.push_back({static_cast<double>(t.y), static_cast<double>(u.y), static_cast<double>(t.x),
                          (static_cast<double>(u.x) - t.x) / (static_cast<double>(u.y) - t.y)});
    }
    std::sort(edges_.begin(), edges_.end(), [](const Edge& l, const Edge& r) { return l.top < r.top; });
    active_.clear();
    std::size_t next = 0;
    for (int y = minY; y <= maxY; ++y) {
        const double yc = y + 0.5;
        while (next < edges_.size() && edges_[next].top <= yc)
            active_.push_back(&edges_[next++]);
        std::erase_if(active_, [yc](const Edge* e) { return e->bottom <= yc; });
        xs_.clear();
        for (const Edge* e : active_)
            xs_.push_back(e->x0 + (yc - e->top) * e->slope);
        std::sort(xs_.begin(), xs_.end());
        for (std::size_t k = 0; k + 1 < xs_.size(); k += 2) {
            const double from = std::max(xs_[k], -1.0);
            const double to = std::min(xs_[k + 1], static_cast<double>(rows.width) + 1);
            // Pixels whose centre x + 0.5 lies in [from, to).
            const int x0 = static_cast<int>(std::ceil(from - 0.5));
            const int x1 = static_cast<int>(std::ceil(to - 0.5)) - 1;
            if (x1 >= x0)
                FillSpan(rows, y, x0, x1);
        }
    }
}

} // namespace fw
