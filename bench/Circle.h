// The outline most benchmarks draw: `count` points round a circle of 2000 units, shifted by i so
// that no two shapes coincide.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/Records.h"

namespace fw::bench {

inline PointList Circle(int count, int i)
{
    PointList pts;
    for (int k = 0; k < count; ++k) {
        const double a = 2 * 3.14159265358979 * k / count;
        pts.push_back({static_cast<std::int32_t>(std::lround(2000 * std::cos(a))) + i,
                       static_cast<std::int32_t>(std::lround(2000 * std::sin(a))) - i});
    }
    return pts;
}

} // namespace fw::bench
