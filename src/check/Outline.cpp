#include "check/Outline.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace fw {

namespace {

// Differences of 32-bit coordinates take 33 bits, so their products need more than 64.
__extension__ using Wide = __int128;

int Orientation(const Point& a, const Point& b, const Point& c)
{
    const std::int64_t abx = static_cast<std::int64_t>(b.X) - a.X;
    const std::int64_t aby = static_cast<std::int64_t>(b.Y) - a.Y;
    const std::int64_t acx = static_cast<std::int64_t>(c.X) - a.X;
    const std::int64_t acy = static_cast<std::int64_t>(c.Y) - a.Y;
    const Wide cross = static_cast<Wide>(abx) * acy - static_cast<Wide>(aby) * acx;
    return (cross > 0) - (cross < 0);
}

// p lies on the line through a and b: is it inside the segment's box?
bool WithinBox(const Point& a, const Point& b, const Point& p)
{
    return std::min(a.X, b.X) <= p.X && p.X <= std::max(a.X, b.X) && std::min(a.Y, b.Y) <= p.Y &&
           p.Y <= std::max(a.Y, b.Y);
}

bool SegmentsMeet(const Point& a, const Point& b, const Point& c, const Point& d)
{
    const int o1 = Orientation(a, b, c);
    const int o2 = Orientation(a, b, d);
    const int o3 = Orientation(c, d, a);
    const int o4 = Orientation(c, d, b);
    if (o1 * o2 < 0 && o3 * o4 < 0)
        return true;
    return (o1 == 0 && WithinBox(a, b, c)) || (o2 == 0 && WithinBox(a, b, d)) || (o3 == 0 && WithinBox(c, d, a)) ||
           (o4 == 0 && WithinBox(c, d, b));
}

// Two edges meeting at v run back over each other when a and b lie on one side of v on one line.
bool FoldsBack(const Point& a, const Point& v, const Point& b)
{
    if (Orientation(a, v, b) != 0)
        return false;
    const Wide dot = static_cast<Wide>(static_cast<std::int64_t>(a.X) - v.X) * (static_cast<std::int64_t>(b.X) - v.X) +
                     static_cast<Wide>(static_cast<std::int64_t>(a.Y) - v.Y) * (static_cast<std::int64_t>(b.Y) - v.Y);
    return dot > 0;
}

// Indices of the outline's corners: a point equal to the one before it is passed over, and so are
// points at the end equal to the first.
std::vector<int> Corners(const PointList& points)
{
    std::vector<int> run;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (run.empty() || !(points[i] == points[static_cast<std::size_t>(run.back())]))
            run.push_back(static_cast<int>(i));
    while (run.size() > 1 && points[static_cast<std::size_t>(run.back())] == points[0])
        run.pop_back();
    return run;
}

} // namespace

int DistinctPoints(const PointList& points)
{
    std::vector<std::int64_t> keys;
    keys.reserve(points.size());
    for (const Point& p : points)
        keys.push_back((static_cast<std::int64_t>(p.X) << 32) | static_cast<std::uint32_t>(p.Y));
    std::sort(keys.begin(), keys.end());
    return static_cast<int>(std::unique(keys.begin(), keys.end()) - keys.begin());
}

bool OnOneLine(const PointList& points)
{
    const auto other = std::find_if(points.begin(), points.end(), [&](const Point& p) { return !(p == points[0]); });
    if (other == points.end())
        return false;
    return std::all_of(points.begin(), points.end(),
                       [&](const Point& p) { return Orientation(points[0], *other, p) == 0; });
}

std::optional<Crossing> FindCrossing(const PointList& points)
{
    const std::vector<int> run = Corners(points);
    const int m = static_cast<int>(run.size());
    if (m < 3)
        return std::nullopt;
    auto from = [&](int k) -> const Point& { return points[static_cast<std::size_t>(run[static_cast<std::size_t>(k)])]; };
    auto to = [&](int k) -> const Point& { return from((k + 1) % m); };

    // A sweep along X: each edge meets only the edges whose X range overlaps its own. Each edge's
    // box is worked out once, beside it in the order the sweep takes.
    struct Edge {
        std::int32_t minX, maxX, minY, maxY;
        int k;
    };
    std::vector<Edge> order(static_cast<std::size_t>(m));
    for (int k = 0; k < m; ++k) {
        const Point& a = from(k);
        const Point& b = to(k);
        order[static_cast<std::size_t>(k)] = {std::min(a.X, b.X), std::max(a.X, b.X), std::min(a.Y, b.Y),
                                              std::max(a.Y, b.Y), k};
    }
    std::sort(order.begin(), order.end(), [](const Edge& a, const Edge& b) { return a.minX < b.minX; });

    for (std::size_t p = 0; p < order.size(); ++p) {
        const Edge& e = order[p];
        const int k = e.k;
        for (std::size_t q = p + 1; q < order.size() && order[q].minX <= e.maxX; ++q) {
            const Edge& f = order[q];
            const int l = f.k;
            const int lo = std::min(k, l);
            const int hi = std::max(k, l);
            if (std::max(e.minY, f.minY) > std::min(e.maxY, f.maxY))
                continue;
            bool meet = false;
            if (hi == lo + 1)
                meet = FoldsBack(from(lo), from(hi), to(hi));
            else if (lo == 0 && hi == m - 1)
                meet = FoldsBack(from(1), from(0), from(m - 1));
            else
                meet = SegmentsMeet(from(lo), to(lo), from(hi), to(hi));
            if (meet)
                return Crossing{run[static_cast<std::size_t>(lo)], run[static_cast<std::size_t>(hi)]};
        }
    }
    return std::nullopt;
}

} // namespace fw
