#include "editor/Undo.h"

#include "editor/EditorCommon.h"
#include "editor/Selection.h"
#include "editor/WorkEdit.h"

namespace fw {

namespace {

void TakeSnapshot(const Session& s, SceneSnapshot& to)
{
    CopyScene(s.stores, to.stores);
    CopySelectionState(s.editor.selection, to.selection);
}

void CopySnapshot(const SceneSnapshot& from, SceneSnapshot& to)
{
    CopyScene(from.stores, to.stores);
    CopySelectionState(from.selection, to.selection);
}

} // namespace

void CopyScene(const Stores& from, Stores& to)
{
    to.ShapeStore = from.ShapeStore;
    to.PointStore = from.PointStore;
    to.ObjectStore = from.ObjectStore;
}

void UndoPrepare(Session& s) { TakeSnapshot(s, s.editor.UndoNext); }

void UndoCommit(Session& s) { CopySnapshot(s.editor.UndoNext, s.editor.UndoLast); }

void MarkChanged(Session& s, bool withUndo)
{
    if (withUndo) {
        UndoCommit(s);
        s.canUndo = 1;
    }
    s.dirty = 1;
}

void Undo(Session& s)
{
    if (s.canUndo != 1)
        return;
    EditorState& e = s.editor;
    TakeSnapshot(s, e.UndoNext);
    CopyScene(e.UndoLast.stores, s.stores);
    CopySelectionState(e.UndoLast.selection, e.selection);
    CopySnapshot(e.UndoNext, e.UndoLast);
    RebuildGL(s);
    PaintFrame(s);
}

void ClipClear(Clipboard& c) { c = Clipboard{}; }

void ClipStore(Clipboard& c, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
               const std::vector<ObjectRecord>& objects, int shapeLast, int objectLast, const Limits& limits)
{
    const std::int64_t mx = limits[0];
    const std::int64_t my = limits[2];
    c.points.clear();
    c.shapes.clear();
    c.objects.clear();
    for (int i = 0; i <= shapeLast && i < static_cast<int>(points.size()) && i < static_cast<int>(shapes.size());
         ++i) {
        c.shapes.push_back(shapes[i]);
        PointList rel;
        for (const auto& p : points[i])
            rel.push_back({Add32(p.X, -mx), Add32(p.Y, -my)});
        c.points.push_back(std::move(rel));
    }
    for (int i = 0; i <= objectLast && i < static_cast<int>(objects.size()); ++i) {
        ObjectRecord o = objects[i];
        o.PosX = Add32(o.PosX, -mx);
        o.PosY = Add32(o.PosY, -my);
        c.objects.push_back(std::move(o));
    }
    c.shapeLast = static_cast<std::int16_t>(c.shapes.size()) - 1;
    c.objectLast = static_cast<std::int16_t>(c.objects.size()) - 1;
}

void ClipFetch(const Clipboard& c, const Point& base, std::vector<PointList>& points,
               std::vector<ShapeRecord>& shapes, std::vector<ObjectRecord>& objects)
{
    points.clear();
    shapes.clear();
    objects.clear();
    for (std::size_t i = 0; i < c.shapes.size(); ++i) {
        PointList pts;
        for (const auto& p : c.points[i])
            pts.push_back({Add32(p.X, base.X), Add32(p.Y, base.Y)});
        ShapeRecord r = c.shapes[i];
        r.gLimits = ComputeLimits(pts);
        shapes.push_back(std::move(r));
        points.push_back(std::move(pts));
    }
    for (const auto& o0 : c.objects) {
        ObjectRecord o = o0;
        o.PosX = Add32(o.PosX, base.X);
        o.PosY = Add32(o.PosY, base.Y);
        objects.push_back(std::move(o));
    }
}

void MnuEcopy(Session& s)
{
    const CSelection& sel = s.editor.selection;
    if (sel.sizeShape() + sel.sizeObject() + 2 <= 0)
        return;
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
    CopySelection(s, points, shapes, objects);
    const Limits limits = sel.getLimits();
    ClipClear(s.editor.clipboard);
    ClipStore(s.editor.clipboard, points, shapes, objects, sel.sizeShape(), sel.sizeObject(), limits);
    s.canPaste = 1;
}

void MnuEpaste(Session& s)
{
    if (s.canPaste != 1)
        return;
    UndoPrepare(s);
    const Point base = ScreenToWorldClamped(s.view, 5, 5);
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
    const Clipboard& clip = s.editor.clipboard;
    ClipFetch(clip, base, points, shapes, objects);
    // A project holds at most one flatten polygon: one that would be the second is left out.
    const bool leftOut = LeaveOutSecondFlatten(s.stores, points, shapes);
    if (s.stores.ShapeCount() + static_cast<int>(shapes.size()) >= kMaxShapes + 1 ||
        s.stores.ObjectCount() + static_cast<int>(objects.size()) >= kMaxObjects + 1)
        return;
    if (leftOut)
        UiOf(s).Message(kOneFlattenMessage, MessageStyle::Information);
    if (shapes.empty() && objects.empty())
        return;
    CSelection& sel = s.editor.selection;
    sel.reset();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        s.stores.ShapeStore.push_back(shapes[i]);
        s.stores.PointStore.push_back(points[i]);
        const auto& l = shapes[i].gLimits;
        sel.addEntry(s.stores.ShapeCount() - 1, 0, l[0], l[1], l[2], l[3]);
    }
    for (const auto& o : objects) {
        s.stores.ObjectStore.push_back(o);
        sel.addEntry(s.stores.ObjectCount() - 1, 1, o.PosX, o.PosX, o.PosY, o.PosY);
    }
    sel.setState(3);
    MarkChanged(s, true);
    RebuildGL(s);
    PaintFrame(s);
}

} // namespace fw
