// The stores own all geometry; index order is paint order.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Records.h"

namespace fw {

constexpr int kMaxShapes = 800;
constexpr int kMaxObjects = 800;
constexpr int kMaxPoints = 80;
constexpr int kMaxTexPolyPoints = 4;
constexpr int kMaxFlattenPoints = 9;

struct Stores {
    std::vector<PointList> PointStore;   // same index as the shape
    std::vector<ShapeRecord> ShapeStore;
    std::vector<ObjectRecord> ObjectStore;

    std::int16_t ShapeCount() const { return static_cast<std::int16_t>(ShapeStore.size()); }
    std::int16_t ObjectCount() const { return static_cast<std::int16_t>(ObjectStore.size()); }
};

void ClearStores(Stores& s);
// Copies the record and its points, computes gLimits and gIsConcave.
void AppendShape(Stores& s, const ShapeRecord& shape, const PointList& points);
// A fresh record of the type's defaults at a position and rotation.
void AppendObject(Stores& s, int type, std::int32_t x, std::int32_t y, double rotation,
                  const std::string& programFolder);
// Recomputes gLimits and gIsConcave of a shape after its points changed.
void UpdateShapeGeometry(ShapeRecord& shape, const PointList& points);
// Drops every shape with gKeep 0 and every object with oKeep 0; survivors keep their order.
void CompactStores(Stores& s);
// True when one more shape (object) could be added under the tools' limit.
bool CanAddShape(const Stores& s);
bool CanAddObject(const Stores& s);

// A project holds at most one flatten polygon. The flatten tool's message when there is one.
inline constexpr const char* kOneFlattenMessage =
    "You already drew a flatten polygon...\n\nOnly one flatten polygon can be specified for every Fieldwright project.";
bool HasFlatten(const Stores& s);
// Shapes about to be added (paste, import): each flatten polygon that would be the second in the
// stores is left out, with its points. True when one was left out.
bool LeaveOutSecondFlatten(const Stores& s, std::vector<PointList>& points, std::vector<ShapeRecord>& shapes);

} // namespace fw
