#include "core/Stores.h"

namespace fw {

void ClearStores(Stores& s)
{
    s.PointStore.clear();
    s.ShapeStore.clear();
    s.ObjectStore.clear();
}

void UpdateShapeGeometry(ShapeRecord& shape, const PointList& points)
{
    shape.gLimits = ComputeLimits(points);
    shape.gIsConcave = ComputeConcavity(points);
}

void AppendShape(Stores& s, const ShapeRecord& shape, const PointList& points)
{
    s.ShapeStore.push_back(shape);
    s.PointStore.push_back(points);
    UpdateShapeGeometry(s.ShapeStore.back(), s.PointStore.back());
}

void AppendObject(Stores& s, int type, std::int32_t x, std::int32_t y, double rotation,
                  const std::string& programFolder)
{
    ObjectRecord o;
    ResetObject(o, type, programFolder);
    o.PosX = x;
    o.PosY = y;
    o.Rotation = rotation;
    s.ObjectStore.push_back(std::move(o));
}

void CompactStores(Stores& s)
{
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    for (std::size_t i = 0; i < s.ShapeStore.size(); ++i) {
        if (s.ShapeStore[i].gKeep != 0) {
            shapes.push_back(std::move(s.ShapeStore[i]));
            points.push_back(std::move(s.PointStore[i]));
        }
    }
    s.ShapeStore = std::move(shapes);
    s.PointStore = std::move(points);
    std::vector<ObjectRecord> objects;
    for (auto& o : s.ObjectStore)
        if (o.oKeep != 0)
            objects.push_back(std::move(o));
    s.ObjectStore = std::move(objects);
}

bool CanAddShape(const Stores& s) { return s.ShapeCount() < kMaxShapes; }
bool CanAddObject(const Stores& s) { return s.ObjectCount() < kMaxObjects; }

} // namespace fw
