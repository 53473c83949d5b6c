// Douglas-Peucker thinning to a point budget, with the smallest tolerance that fits.
#pragma once

#include <cstddef>
#include <vector>

namespace fw {

struct PlanePoint {
    double x = 0;
    double y = 0;
};

struct Simplified {
    std::vector<std::size_t> kept;  // indices into the input, in order, end points included
    double tolerance = 0;           // the tolerance that gave them (0 when nothing was dropped)
    double deviation = 0;           // the largest distance of a dropped point from the result
};

// Keeps at most maxPoints of the line's own points (maxPoints >= 2), first and last always kept.
// A closed ring is passed with its first point repeated at the end.
Simplified SimplifyToFit(const std::vector<PlanePoint>& line, std::size_t maxPoints);

} // namespace fw
