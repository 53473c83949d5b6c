// Geometry shared by the 3-D items and the flatten polygon: the box of a point list and points along a line.
#pragma once

#include <cstdint>

#include "core/Records.h"

namespace fw {

struct ShapeBoxResult {
    std::int32_t cx = 0; // centre, in the units of the list
    std::int32_t cy = 0;
    std::int32_t r = 0;  // radius, the sides divided by 2 * s
};

// Box of the list as it stands; the list must not be empty.
ShapeBoxResult ShapeBox(const PointList& list, double s);

// Length of the line from a to b, taken in thousands so that the squares stay in range.
double LengthAlong(const Point& a, const Point& b);

// The point at distance d from a towards b; a negative d lies behind a. Stops the export when a and b
// are one point, as there is no direction then.
Point PointAlong(const Point& a, const Point& b, double d);

} // namespace fw
