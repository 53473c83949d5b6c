// Geometry shared by the 3-D items and the flatten polygon: the box of a point list and points along a line.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/Records.h"
#include "export/ScasmForms.h"

namespace fw {

struct ShapeBoxResult {
    std::int32_t cx = 0; // centre, in the units of the list
    std::int32_t cy = 0;
    std::int32_t r = 0;  // radius, the sides divided by 2 * s
};

// Box of the list as it stands; the list must not be empty.
ShapeBoxResult ShapeBox(const PointList& list, double s);

[[noreturn, gnu::cold]] void NoDirectionFault();

// Length of the line from a to b, taken in thousands so that the squares stay in range. Inline, so
// that the divisions and the root overlap the writing of the rows around them.
inline double LengthAlong(const Point& a, const Point& b)
{
    const double dx = (static_cast<double>(b.X) - a.X) / 1000;
    const double dy = (static_cast<double>(b.Y) - a.Y) / 1000;
    return std::sqrt(dx * dx + dy * dy) * 1000;
}

// The point at distance d from a towards b; a negative d lies behind a. Stops the export when a and b
// are one point, as there is no direction then.
inline Point PointAlong(const Point& a, const Point& b, double d)
{
    const double dx = (static_cast<double>(b.X) - a.X) / 1000;
    const double dy = (static_cast<double>(b.Y) - a.Y) / 1000;
    const double len = std::sqrt(dx * dx + dy * dy) * 1000;
    if (len == 0)
        NoDirectionFault();
    const double t = d / len;
    return {ExportRound(dx * 1000 * t + a.X, "a point along a line"),
            ExportRound(dy * 1000 * t + a.Y, "a point along a line")};
}

} // namespace fw
