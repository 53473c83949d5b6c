#include "export/Optimize.h"

namespace fw {

int RemoveCollinear(const PointList& points, const IndexList& in, IndexList& out)
{
    if (in.size() < 3)
        return 0;
    const std::size_t last = in.size() - 1;
    // Each coordinate scaled first, then subtracted; a point's scaled form is made once and
    // carried along as it becomes the previous one.
    struct Scaled {
        double x, y;
    };
    auto scaled = [&](std::size_t k) {
        const Point& p = points.at(in[k]);
        return Scaled{p.X / 100.0, p.Y / 100.0};
    };
    Scaled prev = scaled(last);
    Scaled cur = scaled(0);
    int kept = 0;
    for (std::size_t i = 0; i <= last; ++i) {
        const Scaled next = scaled(i == last ? 0 : i + 1);
        const double ax = cur.x - prev.x;
        const double ay = cur.y - prev.y;
        const double bx = next.x - cur.x;
        const double by = next.y - cur.y;
        prev = cur;
        cur = next;
        if (ax * by - ay * bx == 0.0)
            continue;
        out.push_back(in[i]);
        ++kept;
    }
    return kept >= 3 ? 1 : 0;
}

IndexList ReducedIndices(const PointList& points, int level, bool filter)
{
    if (points.size() > 256)
        throw OperationFault("The shape has " + std::to_string(points.size()) +
                             " points; the export can index at most 256.");
    if (level != 0)
        throw PointReductionFault("multiple levels of complexity can't be computed for it. Mark it \"No point reduction\" or switch the option off.");
    IndexList scratch;
    scratch.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        scratch.push_back(static_cast<std::uint8_t>(i));
    if (!filter)
        return scratch;
    IndexList result;
    result.reserve(scratch.size());
    RemoveCollinear(points, scratch, result);
    return result;
}

} // namespace fw
