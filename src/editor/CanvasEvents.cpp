#include "editor/CanvasEvents.h"

#include <algorithm>
#include <limits>

#include "core/Numbers.h"
#include "editor/Arrange.h"
#include "editor/Commands.h"
#include "editor/EditorCommon.h"
#include "editor/ImageFrame.h"
#include "editor/Selection.h"
#include "editor/Transforms.h"
#include "editor/Undo.h"
#include "editor/WorkEdit.h"

namespace fw {

namespace {

struct ToolInfo {
    const char* key;
    int editState;   // 14 for the object tools
    int type;
    int cursor;      // 0: the cross of the shape tools
};

constexpr ToolInfo kDrawTools[] = {
    {"poly", 1, kPoly, 0},          {"texpoly", 2, kTexPoly, 0},   {"wideline", 3, kWideLine, 0},
    {"dotline", 4, kDotLine, 0},    {"treeline", 5, kTreeLine, 0}, {"forest", 19, kForest, 0},
    {"api", 14, kApi, 102},         {"sign", 14, kSign, 102},      {"runway", 14, kRunway, 103},
    {"vor", 14, kVor, 104},         {"ndb", 14, kNdb, 105},        {"location", 14, kInit, 106},
    {"flatten", 6, kFlatten, 0},    {"exclude", 14, kExclude, 107},
};

bool IsDrawingState(int st) { return (st >= 1 && st <= 6) || st == 19; }

Point WorldAt(const Session& s, double x, double y)
{
    return ScreenToWorld(s.view, Round32(x), Round32(y));
}

bool Fits16(const Point& p)
{
    return p.X >= std::numeric_limits<std::int16_t>::min() && p.X <= std::numeric_limits<std::int16_t>::max() &&
           p.Y >= std::numeric_limits<std::int16_t>::min() && p.Y <= std::numeric_limits<std::int16_t>::max();
}

void BeginPan(Session& s, double x, double y)
{
    s.editor.memory.PanStartPixel = {Round32(x), Round32(y)};
    s.editor.EditState = 7;
}

// The view offset a pan to this pixel gives, held inside the work area.
Point PanOffset(const Session& s, double x, double y)
{
    const Point start = s.editor.memory.PanStartPixel;
    const double zoom = s.view.zoom();
    const std::int32_t ox =
        std::clamp(Round32((static_cast<double>(Round32(x)) - start.X) / zoom + s.view.offX()), -10000, 10000);
    const std::int32_t oy =
        std::clamp(Round32((static_cast<double>(Round32(y)) - start.Y) / zoom + s.view.offY()), -10000, 10000);
    return {ox, oy};
}

std::int32_t HandleTolerance(const Session& s) { return Round32(3.0 / s.view.zoom()); }

void EndImageEdit(Session& s) { StopImageFrame(s); }

// The image frame tests take the pixel as a 16-bit value.
std::int32_t Pixel16(double v) { return std::clamp(Round32(v), -32768, 32767); }

// A new item stands selected: the view shows it, the tool is put down and the menus follow.
void ShowNewItem(Session& s)
{
    RebuildGL(s);
    PaintFrame(s);
    SetCanvasPointer(s, 0);
    Menu_Enable(s);
    Menu_EnableToolBar(s);
    s.editor.EditState = 0;
}

void PlaceObject(Session& s, const Point& p)
{
    EditorState& e = s.editor;
    AppendObject(s.stores, e.memory.PlaceObjectType, p.X, p.Y, 0, s.programFolder);
    const int index = s.stores.ObjectCount() - 1;
    e.selection.reset();
    e.selection.addEntry(index, 1, p.X, p.X, p.Y, p.Y);
    e.selection.setState(3);
    ShowNewItem(s);
    ObjectRecord copy = s.stores.ObjectStore[index];
    if (!UiOf(s).ObjectProperties(copy)) {
        DeleteSelection(s);
        e.selection.setState(1);
        PaintFrame(s);
        return;
    }
    s.stores.ObjectStore[index] = copy;
    RebuildGL(s);
    MarkChanged(s, true);
    PaintFrame(s);
}

// Drawing ends without a shape: the points so far are dropped and the tool is put down.
void AbandonShape(Session& s)
{
    EditorState& e = s.editor;
    e.draw.reset();
    e.EditState = 0;
    SetCanvasPointer(s, 0);
    Menu_Enable(s);
    Menu_EnableToolBar(s);
    PaintFrame(s);
}

void FinishShape(Session& s)
{
    EditorState& e = s.editor;
    const int st = e.EditState;
    if (!IsDrawingState(st))
        return;
    if (e.memory.DrawFirstPoint == 1 || e.draw.PointIndex() < PointMinimum(st))
        return;
    std::vector<std::int32_t> coords;
    e.draw.getPoints(coords);
    AddShape(s, coords, e.memory.DrawShapeType);
    e.draw.reset();
    const int index = s.stores.ShapeCount() - 1;
    ShapeRecord& rec = s.stores.ShapeStore[index];
    rec.gLimits = ComputeLimits(s.stores.PointStore[index]);
    e.selection.reset();
    e.selection.addEntry(index, 0, rec.gLimits[0], rec.gLimits[1], rec.gLimits[2], rec.gLimits[3]);
    e.selection.setState(1);
    ShowNewItem(s);
    s.dirty = 1;
    rec.gKeep = static_cast<std::int32_t>(s.stores.PointStore[index].size()) - 1;
    if (rec.gType != kFlatten) {
        ShapeRecord copy = rec;
        if (UiOf(s).NewShapeProperties(copy, &s.stores.PointStore[index]))
            s.stores.ShapeStore[index] = copy;
    }
    MarkChanged(s, true);
    RebuildGL(s, true);
    PaintFrame(s);
}

// End of a drag, a free rescale or a free rotate: the working copy goes into the stores.
void EndMovingEdit(Session& s, bool changed)
{
    EndWorkingCopy(s);
    if (changed)
        MarkChanged(s, true);
    s.editor.EditState = 0;
    RebuildGL(s);
    PaintFrame(s);
}

} // namespace

int PointLimit(int st)
{
    switch (st) {
    case 1: case 3: case 4: case 5: case 19: return kMaxPoints;
    case 2: return kMaxTexPolyPoints;
    case 6: return kMaxFlattenPoints;
    default: return 0;
    }
}

int PointMinimum(int st)
{
    switch (st) {
    case 1: case 2: case 6: case 19: return 3;
    case 3: case 4: case 5: return 2;
    default: return 0;
    }
}

void AddShape(Session& s, const std::vector<std::int32_t>& coords, int type)
{
    PointList pts;
    for (std::size_t i = 0; i + 1 < coords.size(); i += 2)
        pts.push_back({coords[i], coords[i + 1]});
    ShapeRecord rec;
    const int d = DefaultShapeIndex(type);
    if (d >= 0)
        rec = s.config.defaultShapes[d];
    else
        ResetShape(rec, type);
    if (type == kPoly || type == kTexPoly || type == kForest)
        rec.gIsConcave = ComputeConcavity(pts);
    if (type == kTexPoly && !pts.empty()) {
        const Limits l = ComputeLimits(pts);
        const double w = static_cast<double>(l[1]) - l[0];
        const double h = static_cast<double>(l[3]) - l[2];
        const double div = w > h ? w : h;
        const double sc = div != 0 ? 255.0 / div : 0.0; // every point on one spot maps to the corner
        for (std::size_t i = 0; i < pts.size() && i < 4; ++i) {
            rec.mTexMap[i * 2] = Round32((pts[i].X - static_cast<double>(l[0])) * sc);
            rec.mTexMap[i * 2 + 1] = Round32((pts[i].Y - static_cast<double>(l[2])) * sc);
        }
    }
    s.stores.PointStore.push_back(std::move(pts));
    s.stores.ShapeStore.push_back(std::move(rec));
}

bool ToolClick(Session& s, const std::string& key)
{
    const ToolInfo* tool = nullptr;
    for (const auto& t : kDrawTools)
        if (key == t.key)
            tool = &t;
    const bool view = key == "zoomIn" || key == "zoomOut" || key == "mEdit" || key == "mLayer" || key == "mPreview";
    if (!tool && !view)
        return false;

    EditorState& e = s.editor;
    WorkClear(e.work);
    EndImageEdit(s);
    e.EditState = 0;
    SetCanvasPointer(s, 0);
    PaintFrame(s);

    if (tool) {
        const bool isObject = tool->editState == 14;
        if (tool->type == kFlatten && HasFlatten(s.stores)) {
            UiOf(s).Message(kOneFlattenMessage, MessageStyle::Information);
            return true;
        }
        if (isObject ? !CanAddObject(s.stores) : !CanAddShape(s.stores))
            return true;
        Menu_DisableToolBar(s);
        Menu_Disable(s);
        if (std::uint8_t* flag = ShowFlagOf(s.showFlags, tool->type))
            *flag = 1;
        if (isObject) {
            UndoPrepare(s);
            SetCanvasPointer(s, 99, tool->cursor);
            e.memory.PlaceObjectType = static_cast<std::uint8_t>(tool->type);
            e.EditState = 14;
            return true;
        }
        e.selection.setState(1);
        UndoPrepare(s);
        SetCanvasPointer(s, 2);
        e.EditState = static_cast<std::uint8_t>(tool->editState);
        e.memory.DrawFirstPoint = 1;
        e.memory.DrawShapeType = static_cast<std::uint8_t>(tool->type);
        PaintFrame(s);
        return true;
    }
    if (key == "zoomIn")
        ZoomStep(s, true);
    else if (key == "zoomOut")
        ZoomStep(s, false);
    else if (key == "mEdit")
        ToolEditMode(s);
    else if (key == "mLayer")
        ToolArrangeMode(s);
    return true;
}

void CanvasMouseDown(Session& s, MouseButton button, int shift, double x, double y)
{
    if (button == MouseButton::Right)
        return;
    EditorState& e = s.editor;
    const Point P = WorldAt(s, x, y);
    const int st = e.EditState;
    if (IsDrawingState(st)) {
        if (!Fits16(P)) {
            // The point can't be held in 16 bits: the shape being drawn is abandoned, so that
            // the tool ends and the menus come back; nothing is added.
            UiOf(s).Message(kPointTooFarMessage, MessageStyle::Information);
            AbandonShape(s);
            return;
        }
        e.memory.DrawFirstPoint = 0;
        e.draw.AddPoint(static_cast<std::int16_t>(P.X), static_cast<std::int16_t>(P.Y));
        e.draw.UpdatePoint(static_cast<std::int16_t>(P.X), static_cast<std::int16_t>(P.Y));
        if (e.draw.PointIndex() == PointLimit(st))
            FinishShape(s);
        return;
    }
    switch (st) {
    case 10:
    case 12: {
        const int hit = e.selection.squareIsWhere(P.X, P.Y, HandleTolerance(s));
        if (hit != 0) {
            if (st == 10) {
                e.memory.ScaleStart = P;
                e.memory.ScaleHandle = hit;
                e.EditState = 11;
            } else {
                e.memory.RotateStart = P;
                e.EditState = 13;
            }
        } else {
            WorkClear(e.work);
            PaintFrame(s);
            BeginPan(s, x, y);
        }
        return;
    }
    case 14:
        PlaceObject(s, P);
        return;
    case 16:
        if (OnImageHandle(s, Pixel16(x), Pixel16(y))) {
            SetCanvasPointer(s, 9);
            e.memory.ImageScaleStart = P.X;
            e.EditState = 18;
        } else if (InsideImageFrame(s, Pixel16(x), Pixel16(y))) {
            SetCanvasPointer(s, 15);
            e.memory.ImageDragStart = P;
            e.EditState = 17;
        } else {
            SetCanvasPointer(s, 0);
            EndImageEdit(s);
            e.EditState = 0;
            PaintFrame(s);
        }
        return;
    case 0:
        break;
    default:
        return;
    }

    if (shift == kShiftKey) {
        e.EditState = 8;
        e.selSquare.reset();
        e.selSquare.initNew(P.X, P.Y);
        PaintFrame(s);
        return;
    }
    switch (e.selection.state()) {
    case 1:
        if (SelectAt(s, P.X, P.X, P.Y, P.Y, 1) < 0) {
            BeginPan(s, x, y);
        } else {
            RebuildGL(s);
            PaintFrame(s);
        }
        break;
    case 2: {
        const int r = SelectPointsAt(s, P.X, P.X, P.Y, P.Y, 0);
        if (r == -1) {
            BeginPan(s, x, y);
        } else if (r == 0 || r == 1) {
            UndoPrepare(s);
            if (r == 0)
                SelectPointsAt(s, P.X, P.X, P.Y, P.Y, 1);
            LoadWorkingCopy(s);
            e.memory.DragStart = P;
            e.EditState = 15;
        }
        RebuildGL(s);
        PaintFrame(s);
        break;
    }
    case 3:
        if (SelectAt(s, P.X, P.X, P.Y, P.Y, 0) == 1) {
            UndoPrepare(s);
            LoadWorkingCopy(s);
            e.memory.DragStart = P;
            e.EditState = 9;
        } else {
            BeginPan(s, x, y);
        }
        break;
    default: break;
    }
}

void CanvasMouseMove(Session& s, int shift, double x, double y)
{
    EditorState& e = s.editor;
    const Point P = WorldAt(s, x, y);
    const int st = e.EditState;
    if (st != 7)
        StatusPosition(s, P, e.statusLatitude, e.statusLongitude);
    if (IsDrawingState(st)) {
        if (e.memory.DrawFirstPoint != 1 && Fits16(P)) {
            e.draw.UpdatePoint(static_cast<std::int16_t>(P.X), static_cast<std::int16_t>(P.Y));
            PaintFrame(s);
        }
        return;
    }
    const auto dx = [&](const Point& from) { return Add32(P.X, -static_cast<std::int64_t>(from.X)); };
    const auto dy = [&](const Point& from) { return Add32(P.Y, -static_cast<std::int64_t>(from.Y)); };
    switch (st) {
    case 7: {
        // A preview: the offset moves for this paint only, and for good at button up.
        const Point saved{s.view.offX(), s.view.offY()};
        e.memory.PanSavedOffset = saved;
        const Point off = PanOffset(s, x, y);
        s.view.setOffX(off.X);
        s.view.setOffY(off.Y);
        PaintFrame(s);
        s.view.setOffX(saved.X);
        s.view.setOffY(saved.Y);
        break;
    }
    case 9:
        WorkMove(e.work, dx(e.memory.DragStart), dy(e.memory.DragStart));
        PaintFrame(s);
        break;
    case 15:
        WorkMovePoints(e.work, dx(e.memory.DragStart), dy(e.memory.DragStart));
        PaintFrame(s);
        break;
    case 10: {
        const int hit = e.selection.squareIsWhere(P.X, P.Y, HandleTolerance(s));
        static constexpr int kPointers[9] = {0, 9, 9, 7, 7, 8, 6, 6, 8};
        SetCanvasPointer(s, kPointers[hit]);
        break;
    }
    case 11: {
        const int handle = e.memory.ScaleHandle;
        std::int32_t ddx = dx(e.memory.ScaleStart);
        std::int32_t ddy = dy(e.memory.ScaleStart);
        if (handle == 1 || handle == 2)
            ddy = 0;
        if (handle == 3 || handle == 4)
            ddx = 0;
        WorkRescale(e.work, handle, ddx, ddy, 0, 0, 0);
        PaintFrame(s);
        break;
    }
    case 12:
        if (e.selection.squareIsWhere(P.X, P.Y, HandleTolerance(s)) != 0)
            SetCanvasPointer(s, 99, 108);
        else
            SetCanvasPointer(s, 0);
        break;
    case 13:
        e.memory.RotateAngle =
            WorkRotate(e.work, dx(e.memory.RotateStart), Round32(s.view.centX() * 2 / s.view.zoom()), 0, 0);
        PaintFrame(s);
        break;
    case 16:
        if (OnImageHandle(s, Pixel16(x), Pixel16(y)))
            SetCanvasPointer(s, 9);
        else if (InsideImageFrame(s, Pixel16(x), Pixel16(y)))
            SetCanvasPointer(s, 15);
        else
            SetCanvasPointer(s, 0);
        break;
    case 17:
        MoveImageFrame(s.bitmap.frame, dx(e.memory.ImageDragStart), dy(e.memory.ImageDragStart));
        PaintFrame(s);
        break;
    case 18:
        ScaleImageFrame(s.bitmap.frame, Add32(P.X, -static_cast<std::int64_t>(e.memory.ImageScaleStart)),
                        s.bitmap.width, s.bitmap.height);
        PaintFrame(s);
        break;
    case 8:
        if (shift != kShiftKey) {
            e.selSquare.reset();
            PaintFrame(s);
            e.EditState = 0;
        } else {
            e.selSquare.Update(P.X, P.Y);
            PaintFrame(s);
        }
        break;
    default: break;
    }
}

void CanvasMouseUp(Session& s, MouseButton button, int /*shift*/, double x, double y)
{
    EditorState& e = s.editor;
    const Point P = WorldAt(s, x, y);
    const int st = e.EditState;
    if (button == MouseButton::Right) {
        if ((st >= 1 && st <= 5) || st == 19)
            return;
        auto empty = [&] {
            e.memory.ContextPoint = P;
            UiOf(s).PopupMenu("MnuClick2");
        };
        switch (e.selection.state()) {
        case 1:
        case 3: {
            const int r = SelectAt(s, P.X, P.X, P.Y, P.Y, 0);
            if (r <= 0)
                empty();
            else if (s.view.mMode() == 0)
                UiOf(s).PopupMenu("MnuSelection");
            else if (s.view.mMode() == 1)
                UiOf(s).PopupMenu("MnuClick3");
            break;
        }
        case 2: {
            const int r = SelectPointsAt(s, P.X, P.X, P.Y, P.Y, 0);
            if (r < 0)
                empty();
            else if (s.view.mMode() == 0)
                UiOf(s).PopupMenu("MnuSelection");
            break;
        }
        default: break;
        }
        return;
    }
    switch (st) {
    case 7: {
        const Point off = PanOffset(s, x, y);
        s.view.setOffX(off.X);
        s.view.setOffY(off.Y);
        e.EditState = 0;
        PaintFrame(s);
        break;
    }
    case 9:
    case 15: {
        const Point start = e.memory.DragStart;
        EndMovingEdit(s, P.X != start.X && P.Y != start.Y);
        break;
    }
    case 11: {
        SetCanvasPointer(s, 0);
        FreeEditTip(s, 11);
        const Point start = e.memory.ScaleStart;
        EndMovingEdit(s, P.X != start.X && P.Y != start.Y);
        break;
    }
    case 13:
        SetCanvasPointer(s, 0);
        FreeEditTip(s, 13);
        EndMovingEdit(s, P.X != e.memory.RotateStart.X);
        break;
    case 17:
    case 18:
        s.showFlags.BackImageLeft = s.bitmap.frame.current[0].X;
        s.showFlags.BackImageTop = s.bitmap.frame.current[0].Y;
        s.showFlags.BackImagescale = s.bitmap.frame.scale;
        StartImageFrame(s);
        e.EditState = 16;
        SetCanvasPointer(s, 0);
        PaintFrame(s);
        break;
    case 8: {
        CSelSquare& sq = e.selSquare;
        sq.Update(P.X, P.Y);
        sq.Sort();
        const int state = e.selection.state();
        if (state == 1 || state == 3)
            SelectAt(s, sq.left(), sq.right(), sq.low(), sq.top(), 1);
        else if (state == 2)
            SelectPointsAt(s, sq.left(), sq.right(), sq.low(), sq.top(), 1);
        sq.reset();
        RebuildGL(s);
        PaintFrame(s);
        e.EditState = 0;
        break;
    }
    default: break;
    }
}

void CanvasDoubleClick(Session& s)
{
    const int st = s.editor.EditState;
    if (st == 0) {
        MnuSshapeproperties(s);
        return;
    }
    FinishShape(s);
}

void CanvasKeyDown(Session& s, int keyCode, int /*shift*/)
{
    EditorState& e = s.editor;
    switch (keyCode) {
    case 45:
        if (e.selection.state() == 2) {
            const int shape = e.selection.firstShape();
            if (shape >= s.stores.ShapeCount())
                return;
            if (static_cast<int>(s.stores.PointStore[shape].size()) - 1 < kMaxPoints) {
                UndoPrepare(s);
                if (InsertPoint(s) == 1) {
                    RebuildGL(s);
                    MarkChanged(s, true);
                    PaintFrame(s);
                }
            }
        } else {
            PaintFrame(s);
        }
        break;
    case 13:
        RunCommand(s, "MnuSselectshape");
        break;
    case 187:
        if (e.EditState == 0)
            ZoomStep(s, true);
        break;
    case 189:
        if (e.EditState == 0)
            ZoomStep(s, false);
        break;
    default: break;
    }
}

} // namespace fw
