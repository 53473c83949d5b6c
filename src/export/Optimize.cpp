#include "export/Optimize.h"

namespace fw {

int RemoveCollinear(const PointList& points, const IndexList& in, IndexList& out)
{
    if (in.size() < 3)
        return 0;
    const std::size_t last = in.size() - 1;
    int kept = 0;
    for (std::size_t i = 0; i <= last; ++i) {
        const Point& prev = points.at(in[i == 0 ? last : i - 1]);
        const Point& cur = points.at(in[i]);
        const Point& next = points.at(in[i == last ? 0 : i + 1]);
        // Each coordinate scaled first, then subtracted.
        const double ax = cur.X / 100.0 - prev.X / 100.0;
        const double ay = cur.Y / 100.0 - prev.Y / 100.0;
        const double bx = next.X / 100.0 - cur.X / 100.0;
        const double by = next.Y / 100.0 - cur.Y / 100.0;
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
    for (std::size_t i = 0; i < points.size(); ++i)
        scratch.push_back(static_cast<std::uint8_t>(i));
    if (!filter)
        return scratch;
    IndexList result;
    RemoveCollinear(points, scratch, result);
    return result;
}

} // namespace fw
