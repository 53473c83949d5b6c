#include "export/ItemGeometry.h"

#include <cmath>

#include "export/ScasmForms.h"

namespace fw {

ShapeBoxResult ShapeBox(const PointList& list, double s)
{
    const auto box = ComputeLimits(list);
    const double w = static_cast<double>(box[1]) - box[0];
    const double h = static_cast<double>(box[3]) - box[2];
    const double hs = h / (2 * s);
    const double ws = w / (2 * s);
    ShapeBoxResult out;
    out.cx = ExportRound(box[0] + w / 2, "the centre of a shape");
    out.cy = ExportRound(box[2] + h / 2, "the centre of a shape");
    out.r = ExportRound(std::sqrt(hs * hs + ws * ws) / 2, "the radius of a shape");
    return out;
}

double LengthAlong(const Point& a, const Point& b)
{
    const double dx = (static_cast<double>(b.X) - a.X) / 1000;
    const double dy = (static_cast<double>(b.Y) - a.Y) / 1000;
    return std::sqrt(dx * dx + dy * dy) * 1000;
}

Point PointAlong(const Point& a, const Point& b, double d)
{
    const double dx = (static_cast<double>(b.X) - a.X) / 1000;
    const double dy = (static_cast<double>(b.Y) - a.Y) / 1000;
    const double len = std::sqrt(dx * dx + dy * dy) * 1000;
    if (len == 0)
        throw OperationFault("Division by zero: a point has no direction to move in (two points fall on one).");
    const double t = d / len;
    return {ExportRound(dx * 1000 * t + a.X, "a point along a line"),
            ExportRound(dy * 1000 * t + a.Y, "a point along a line")};
}

} // namespace fw
