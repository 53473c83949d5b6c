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

bool HasFlatten(const Stores& s)
{
    for (const ShapeRecord& r : s.ShapeStore)
        if (r.gType == kFlatten)
            return true;
    return false;
}

bool LeaveOutSecondFlatten(const Stores& s, std::vector<PointList>& points, std::vector<ShapeRecord>& shapes)
{
    bool have = HasFlatten(s);
    bool leftOut = false;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        if (shapes[i].gType == kFlatten) {
            if (have) {
                leftOut = true;
                continue;
            }
            have = true;
        }
        if (kept != i) {
            shapes[kept] = std::move(shapes[i]);
            if (i < points.size())
                points[kept] = std::move(points[i]);
        }
        ++kept;
    }
    shapes.resize(kept);
    if (points.size() > kept)
        points.resize(kept);
    return leftOut;
}

} // namespace fw
