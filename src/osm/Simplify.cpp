#include "osm/Simplify.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace fw {

namespace {

double SegmentDistance(const PlanePoint& p, const PlanePoint& a, const PlanePoint& b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double len2 = dx * dx + dy * dy;
    double t = 0;
    if (len2 > 0)
        t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / len2, 0.0, 1.0);
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

// For each inner point the largest tolerance at which Douglas-Peucker still keeps it: its own
// distance when it was the farthest of its span, capped by the values of the spans above it.
std::vector<double> KeepLevels(const std::vector<PlanePoint>& line)
{
    std::vector<double> level(line.size(), -1.0);
    struct Span {
        std::size_t first, last;
        double cap;
    };
    std::vector<Span> todo{{0, line.size() - 1, HUGE_VAL}};
    while (!todo.empty()) {
        const Span s = todo.back();
        todo.pop_back();
        if (s.last <= s.first + 1)
            continue;
        std::size_t far = s.first + 1;
        double farDist = -1;
        for (std::size_t i = s.first + 1; i < s.last; ++i) {
            const double d = SegmentDistance(line[i], line[s.first], line[s.last]);
            if (d > farDist) {
                farDist = d;
                far = i;
            }
        }
        const double cap = std::min(s.cap, farDist);
        level[far] = cap;
        todo.push_back({s.first, far, cap});
        todo.push_back({far, s.last, cap});
    }
    return level;
}

} // namespace

Simplified SimplifyToFit(const std::vector<PlanePoint>& line, std::size_t maxPoints)
{
    Simplified out;
    if (line.size() <= maxPoints || line.size() < 3) {
        for (std::size_t i = 0; i < line.size(); ++i)
            out.kept.push_back(i);
        return out;
    }
    const std::vector<double> level = KeepLevels(line);
    std::vector<double> sorted(level.begin() + 1, level.end() - 1);
    std::sort(sorted.begin(), sorted.end(), std::greater<>());
    // Points above the tolerance stay; the inner budget's next level is the smallest that fits.
    out.tolerance = sorted[maxPoints - 2];
    out.kept.push_back(0);
    for (std::size_t i = 1; i + 1 < line.size(); ++i)
        if (level[i] > out.tolerance)
            out.kept.push_back(i);
    out.kept.push_back(line.size() - 1);
    for (std::size_t k = 0; k + 1 < out.kept.size(); ++k)
        for (std::size_t i = out.kept[k] + 1; i < out.kept[k + 1]; ++i)
            out.deviation = std::max(out.deviation, SegmentDistance(line[i], line[out.kept[k]], line[out.kept[k + 1]]));
    return out;
}

} // namespace fw
