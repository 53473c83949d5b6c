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

void NoDirectionFault()
{
    throw OperationFault("Division by zero: a point has no direction to move in (two points fall on one).");
}

} // namespace fw
