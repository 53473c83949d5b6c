#include "editor/WorkEdit.h"

#include <algorithm>
#include <cmath>

#include "editor/EditorCommon.h"
#include "editor/Transforms.h"
#include "editor/Undo.h"

namespace fw {

void CopySelection(const Session& s, std::vector<PointList>& points, std::vector<ShapeRecord>& shapes,
                   std::vector<ObjectRecord>& objects)
{
    const CSelection& sel = s.editor.selection;
    if (!sel.SelShapes().empty()) {
        points.clear();
        shapes.clear();
        for (auto i : sel.SelShapes()) {
            points.push_back(s.stores.PointStore.at(i));
            shapes.push_back(s.stores.ShapeStore.at(i));
        }
    }
    if (!sel.SelObjects().empty()) {
        objects.clear();
        for (auto i : sel.SelObjects())
            objects.push_back(s.stores.ObjectStore.at(i));
    }
}

void WorkBegin(WorkingCopy& w, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
               const std::vector<ObjectRecord>& objects, int shapeLast, int objectLast, const Limits& limits)
{
    if (shapeLast >= 0) {
        const std::size_t n = static_cast<std::size_t>(shapeLast) + 1;
        w.WorkBasePoints.assign(points.begin(), points.begin() + std::min(n, points.size()));
        w.WorkPoints = w.WorkBasePoints;
        w.WorkShapes.assign(shapes.begin(), shapes.begin() + std::min(n, shapes.size()));
        w.WorkShapeLast = static_cast<std::int16_t>(std::min(w.WorkBasePoints.size(), w.WorkShapes.size())) - 1;
    }
    if (objectLast >= 0) {
        const std::size_t n = static_cast<std::size_t>(objectLast) + 1;
        w.WorkBaseObjects.assign(objects.begin(), objects.begin() + std::min(n, objects.size()));
        w.WorkObjects = w.WorkBaseObjects;
        w.WorkObjectLast = static_cast<std::int16_t>(w.WorkObjects.size()) - 1;
    }
    w.WorkStartLimits = limits;
    w.WorkLimits = limits;
}

void WorkSetPoints(WorkingCopy& w, const std::vector<std::int32_t>& selected)
{
    w.WorkSelPoints.assign(selected.begin(), selected.end());
}

void WorkClear(WorkingCopy& w)
{
    w = WorkingCopy{};
}

void WorkResult(const WorkingCopy& w, std::vector<PointList>& points, std::vector<ShapeRecord>& shapes,
                std::vector<ObjectRecord>& objects, Limits& limits)
{
    points = w.WorkPoints;
    shapes = w.WorkShapes;
    objects = w.WorkObjects;
    limits = w.WorkLimits;
}

Limits SelectionLimits(const std::vector<PointList>& points, const std::vector<ObjectRecord>& objects,
                       int shapeLast, int objectLast)
{
    Limits l{};
    bool first = true;
    auto take = [&](std::int32_t x, std::int32_t y) {
        if (first) {
            l = {x, x, y, y};
            first = false;
            return;
        }
        l[0] = std::min(l[0], x);
        l[1] = std::max(l[1], x);
        l[2] = std::min(l[2], y);
        l[3] = std::max(l[3], y);
    };
    for (int i = 0; i <= shapeLast && i < static_cast<int>(points.size()); ++i)
        for (const auto& p : points[i])
            take(p.X, p.Y);
    for (int i = 0; i <= objectLast && i < static_cast<int>(objects.size()); ++i)
        take(objects[i].PosX, objects[i].PosY);
    return l;
}

void WorkMove(WorkingCopy& w, std::int32_t dx, std::int32_t dy)
{
    for (std::size_t i = 0; i < w.WorkPoints.size(); ++i)
        for (std::size_t k = 0; k < w.WorkPoints[i].size(); ++k) {
            w.WorkPoints[i][k].X = Add32(w.WorkBasePoints[i][k].X, dx);
            w.WorkPoints[i][k].Y = Add32(w.WorkBasePoints[i][k].Y, dy);
        }
    for (std::size_t i = 0; i < w.WorkObjects.size(); ++i) {
        w.WorkObjects[i].PosX = Add32(w.WorkBaseObjects[i].PosX, dx);
        w.WorkObjects[i].PosY = Add32(w.WorkBaseObjects[i].PosY, dy);
    }
    w.WorkLimits = SelectionLimits(w.WorkPoints, w.WorkObjects, w.WorkShapeLast, w.WorkObjectLast);
}

void WorkMovePoints(WorkingCopy& w, std::int32_t dx, std::int32_t dy)
{
    if (w.WorkShapeLast < 0 || w.WorkPoints.empty())
        return;
    PointList& pts = w.WorkPoints[0];
    const PointList& base = w.WorkBasePoints[0];
    for (auto k : w.WorkSelPoints) {
        if (k < 0 || static_cast<std::size_t>(k) >= pts.size())
            continue;
        pts[k].X = Add32(base[k].X, dx);
        pts[k].Y = Add32(base[k].Y, dy);
    }
    w.WorkShapes[0].gIsConcave = ComputeConcavity(pts);
    w.WorkLimits = SelectionLimits(w.WorkPoints, w.WorkObjects, w.WorkShapeLast, w.WorkObjectLast);
}

void StoreSelection(Session& s, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
                    const std::vector<ObjectRecord>& objects)
{
    const CSelection& sel = s.editor.selection;
    for (int i = 0; i <= sel.sizeShape() && i < static_cast<int>(points.size()) &&
                    i < static_cast<int>(shapes.size());
         ++i) {
        const auto index = sel.selShIndex(i);
        s.stores.PointStore.at(index) = points[i];
        ShapeRecord& rec = s.stores.ShapeStore.at(index);
        rec = shapes[i];
        rec.gLimits = ComputeLimits(points[i]);
    }
    for (int i = 0; i <= sel.sizeObject() && i < static_cast<int>(objects.size()); ++i)
        s.stores.ObjectStore.at(sel.selObjIndex(i)) = objects[i];
}

void LoadWorkingCopy(Session& s)
{
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
    CopySelection(s, points, shapes, objects);
    const CSelection& sel = s.editor.selection;
    const Limits limits = sel.getLimits();
    std::vector<std::int32_t> selPoints;
    if (sel.state() == 2)
        sel.getPoints(selPoints);
    WorkClear(s.editor.work);
    WorkBegin(s.editor.work, points, shapes, objects, sel.sizeShape(), sel.sizeObject(), limits);
    if (sel.state() == 2)
        WorkSetPoints(s.editor.work, selPoints);
}

void EndWorkingCopy(Session& s)
{
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
    Limits limits{};
    WorkResult(s.editor.work, points, shapes, objects, limits);
    StoreSelection(s, points, shapes, objects);
    WorkClear(s.editor.work);
    s.editor.selection.setLimits(limits);
}

namespace {

// The show flag a delete switches on for the newly selected record: not for forests and signs.
void ShowAfterDelete(Session& s, int type)
{
    if ((type >= kPoly && type <= kFlatten) || (type >= kRunway && type <= kExclude)) {
        if (std::uint8_t* f = ShowFlagOf(s.showFlags, type))
            *f = 1;
    }
}

} // namespace

void DeleteSelection(Session& s)
{
    Stores& st = s.stores;
    CSelection& sel = s.editor.selection;
    for (auto& r : st.ShapeStore)
        r.gKeep = 1;
    for (auto& o : st.ObjectStore)
        o.oKeep = 1;
    for (auto i : sel.SelShapes())
        if (i < st.ShapeStore.size())
            st.ShapeStore[i].gKeep = 0;
    for (auto i : sel.SelObjects())
        if (i < st.ObjectStore.size())
            st.ObjectStore[i].oKeep = 0;
    CompactStores(st);
    sel.reset();
    if (!st.ObjectStore.empty()) {
        const ObjectRecord& o = st.ObjectStore[0];
        sel.addEntry(0, 1, o.PosX, o.PosX, o.PosY, o.PosY);
        ShowAfterDelete(s, o.oType);
    } else if (!st.ShapeStore.empty()) {
        const auto& l = st.ShapeStore[0].gLimits;
        sel.addEntry(0, 0, l[0], l[1], l[2], l[3]);
        ShowAfterDelete(s, st.ShapeStore[0].gType);
    }
}

int DeleteSelectedPoints(Session& s)
{
    CSelection& sel = s.editor.selection;
    const int shape = sel.firstShape();
    if (shape >= static_cast<int>(s.stores.ShapeStore.size()))
        return -1;
    ShapeRecord& rec = s.stores.ShapeStore[shape];
    PointList& pts = s.stores.PointStore[shape];
    const int n = static_cast<int>(pts.size()) - 1;
    const std::vector<std::uint16_t> selected = sel.SelPoints();
    const int sUpper = static_cast<int>(selected.size()) - 1;
    const int t = rec.gType;
    const int m = (t == kPoly || t == kTexPoly || t == kFlatten || t == kForest) ? 2 : 1;
    if (sUpper == n)
        return 0;
    if (n - sUpper <= m)
        return -1;
    PointList kept;
    std::size_t cursor = 0;
    for (int i = 0; i <= n; ++i) {
        if (cursor < selected.size() && selected[cursor] == i) {
            if (cursor + 1 < selected.size())
                ++cursor;
            continue;
        }
        kept.push_back(pts[i]);
    }
    pts = std::move(kept);
    UpdateShapeGeometry(rec, pts);
    sel.reset();
    sel.resetPt();
    sel.addEntry(shape, 0, rec.gLimits[0], rec.gLimits[1], rec.gLimits[2], rec.gLimits[3]);
    sel.setState(2);
    const int before = selected.empty() ? 0 : selected[0] - 1;
    sel.addPt(static_cast<std::uint16_t>(std::max(before, 0)));
    return 1;
}

int InsertPoint(Session& s)
{
    CSelection& sel = s.editor.selection;
    const int shape = sel.firstShape();
    if (shape >= static_cast<int>(s.stores.ShapeStore.size()) || sel.SelPoints().empty())
        return 0;
    ShapeRecord& rec = s.stores.ShapeStore[shape];
    PointList& pts = s.stores.PointStore[shape];
    const int n = static_cast<int>(pts.size()) - 1;
    const int p = sel.SelPoints().back();
    if (p > n)
        return 0;
    const int t = rec.gType;
    const int limit = t == kTexPoly ? 4 : t == kFlatten ? 9 : 80;
    if (n + 1 >= limit)
        return 0;
    const Point A = pts[p];
    Point B;
    if (p != n) {
        B = pts[p + 1];
    } else if (t == kPoly || t == kTexPoly || t == kFlatten || t == kForest) {
        B = pts[0];
    } else {
        // A line's end: 10 pixels beyond it, along its last edge.
        const Point prev = p > 0 ? pts[p - 1] : A;
        const double dX = static_cast<double>(A.X) - prev.X;
        const double dY = static_cast<double>(A.Y) - prev.Y;
        double l = std::sqrt(dX * dX + dY * dY);
        if (l == 0)
            l = 0.0001;
        const double f = 10.0 / s.view.zoom() / l;
        B = {Round32(dX * f + A.X), Round32(dY * f + A.Y)};
    }
    const Point mid{Round32((static_cast<double>(B.X) - A.X) / 2.0 + A.X),
                    Round32((static_cast<double>(B.Y) - A.Y) / 2.0 + A.Y)};
    pts.insert(pts.begin() + p + 1, mid);
    UpdateShapeGeometry(rec, pts);
    sel.reset();
    sel.resetPt();
    sel.addEntry(shape, 0, rec.gLimits[0], rec.gLimits[1], rec.gLimits[2], rec.gLimits[3]);
    sel.setState(2);
    sel.addPt(static_cast<std::uint16_t>(p + 1));
    return 1;
}

void MnuEdelete(Session& s)
{
    CSelection& sel = s.editor.selection;
    if (sel.sizeShape() + sel.sizeObject() + 2 <= 0)
        return; // a shortcut that beat the menu tick
    UndoPrepare(s);
    switch (sel.state()) {
    case 1:
    case 3:
        DeleteSelection(s);
        MarkChanged(s, true);
        break;
    case 2: {
        const int r = DeleteSelectedPoints(s);
        if (r == -1) {
            s.config.MessageDelete = static_cast<std::uint8_t>(
                ShowTip(s, "You are trying to delete too many points...",
                        "When deleting points, note that at least 3 points should remain for polygons, 2 "
                        "points for other shapes.",
                        s.config.MessageDelete));
        } else if (r == 0) {
            DeleteSelection(s);
            MarkChanged(s, true);
        } else {
            MarkChanged(s, true);
        }
        break;
    }
    default: break;
    }
    RebuildGL(s);
    PaintFrame(s);
}

} // namespace fw
