// Plane geometry of a shape's outline for the design check: distinct points, one line, crossings.
#pragma once

#include <optional>

#include "core/Records.h"

namespace fw {

// Number of different points in the list.
int DistinctPoints(const PointList& points);

// True when the list holds at least two different points and all lie on one line.
bool OnOneLine(const PointList& points);

// Two edges of a closed outline that cross, touch or fold back on each other. Edge k runs from
// point k to the next point that differs from it; the numbers are indices into the list.
struct Crossing {
    int first = 0;
    int second = 0;
};

// The first such pair of edges, or none for a simple outline. Repeated points are passed over.
std::optional<Crossing> FindCrossing(const PointList& points);

} // namespace fw
