// Display geometry of objects: each type's builder turns a record into polylines in world units.
#pragma once

#include <cstdint>
#include <vector>

#include "core/Records.h"

namespace fw {

// One entry per polyline; lives for one painter call.
using LineSet = std::vector<PointList>;

constexpr double kPi = 3.14159265358979;

// x' = round(x cos a - y sin a + px), y' = round(y cos a + x sin a + py); a positive angle turns
// clockwise on the canvas, as a compass heading does.
void RotateAndPlace(LineSet& lines, double angleRadians, std::int32_t px, std::int32_t py);

// Screen-size symbols take the zoom so that they keep their pixel size.
void BuildVorGeometry(LineSet& lines, const ObjectRecord& o, double zoom);
void BuildNdbGeometry(LineSet& lines, const ObjectRecord& o, double zoom);
void BuildInitGeometry(LineSet& lines, const ObjectRecord& o, double zoom);
// w and h are the area's width and height doubled (world units).
void BuildExcludeGeometry(LineSet& lines, std::int32_t posX, std::int32_t posY, std::int32_t w,
                          std::int32_t h, double zoom);
void BuildSignGeometry(LineSet& lines, const ObjectRecord& o);
void BuildApiGeometry(LineSet& lines, const ObjectRecord& o);

// W, L, thr, ext in world units; heading in degrees; (px, py) the runway's middle.
void BuildRunwayGeometry(LineSet& lines, std::int32_t W, std::int32_t L, double heading,
                         std::int32_t px, std::int32_t py, std::uint8_t lights, std::int32_t thr,
                         std::int32_t ext);
// Converts the record's feet and calls the builder above.
void BuildRunwayFromRecord(LineSet& lines, const ObjectRecord& o);

// The builder for the record's type; an unknown type gives no lines.
void BuildObjectGeometry(LineSet& lines, const ObjectRecord& o, double zoom);

} // namespace fw
