// Index lists of the export: the collinear filter and the levels of point reduction.
#pragma once

#include <cstdint>
#include <vector>

#include "core/Numbers.h"
#include "core/Records.h"

namespace fw {

// Levels 1 to 3 of point reduction have no index list to read from: the export has to stop there.
struct PointReductionFault : OperationFault {
    using OperationFault::OperationFault;
};

using IndexList = std::vector<std::uint8_t>;

// Drops every entry lying exactly on the line through its neighbours; 1 when at least 3 remain.
// With fewer than 3 entries in, returns 0 and leaves out untouched.
int RemoveCollinear(const PointList& points, const IndexList& in, IndexList& out);

// Level 0: all indices, through the filter when it is on. Levels 1..3 throw PointReductionFault.
// More than 256 points can't be held in byte indices: OperationFault.
IndexList ReducedIndices(const PointList& points, int level, bool filter);

} // namespace fw
