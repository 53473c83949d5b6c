#include "render/Paint.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

#include "render/Bitmap.h"

namespace fw {

namespace {

constexpr Pen SolidPen(std::int32_t color, int width = 1) { return Pen{PenStyle::Solid, width, color}; }

bool ShowFlagIsOn(const ShowFlagsRecord& flags, int type)
{
    const std::uint8_t* f = ShowFlagOf(const_cast<ShowFlagsRecord&>(flags), type);
    return f != nullptr && *f == 1;
}

void Handle(Canvas& surface, const PixelMap& map, const Point& p, int half = 2)
{
    const int x = map.X(p.X);
    const int y = map.Y(p.Y);
    // Off the surface a handle leaves no pixel, not even with a wide pen.
    if (x + half + 2 < 0 || y + half + 2 < 0 || x - half - 1 > surface.Width() || y - half - 1 > surface.Height())
        return;
    surface.Rectangle(x - half, y - half, x + half + 1, y + half + 1);
}

// The pen of the selection by its state; 0 for a state that has none.
bool SelectionPen(std::uint8_t state, Pen& pen)
{
    switch (state) {
    case 1: pen = SolidPen(kSelectRed); return true;
    case 2: pen = SolidPen(kEditPointsGreen); return true;
    case 3: pen = SolidPen(kDragBlue); return true;
    default: return false;
    }
}

bool ValidShape(const Stores& st, int i)
{
    return i >= 0 && i < static_cast<int>(st.ShapeStore.size()) && i < static_cast<int>(st.PointStore.size());
}

bool ValidObject(const Stores& st, int i) { return i >= 0 && i < static_cast<int>(st.ObjectStore.size()); }

// How far from its position an object's lines can reach, in world units, with room for the
// rounding of each step; infinity for a type whose reach is not bounded here.
double ObjectReach(const ObjectRecord& o, double zoom)
{
    constexpr double kRoom = 4;
    switch (o.oType) {
    case kRunway: {
        const double l = std::abs(Round32(2 * o.Length() / 3.2808)) / 2.0;
        const double w = std::abs(Round32(2 * o.RwyWidth() / 3.2808)) / 2.0;
        const double thr = std::max(0, Round32(o.ThrOffN() * 2 / 3.2808));
        const double ext = std::max(0, Round32(o.ExtN() * 2 / 3.2808));
        return std::hypot(l + 155 + thr + ext, w + 10) + kRoom;
    }
    case kVor:
    case kNdb: return std::hypot(100.0, 80.0) / zoom + kRoom;
    case kInit: return std::hypot(10.0, 20.0) / zoom + kRoom;
    case kExclude:
        return std::hypot(std::max<double>(std::abs(o.ExclWidth()), 10 / zoom),
                          std::max<double>(std::abs(o.ExclHeight()), 10 / zoom)) + kRoom;
    case kSign: return 4 + kRoom;
    case kApi: {
        // The outline turns about the position: its farthest corner bounds every turn.
        double far = 0;
        for (int i = 0; i <= std::min<int>(o.DesignLast, kDesignPoints - 1); ++i)
            far = std::max({far, std::abs(static_cast<double>(o.DesignPoints[i].X)),
                            std::abs(static_cast<double>(o.DesignPoints[i].Y))});
        return 2 * far * std::abs(o.Scale()) * std::sqrt(2.0) + kRoom;
    }
    default: return std::numeric_limits<double>::infinity();
    }
}

// True when every line the object can have lies beyond one side of the window.
bool ObjectOutside(const ClipWindow& w, const ObjectRecord& o, double zoom)
{
    const double r = ObjectReach(o, zoom);
    if (!(r < 1e8))
        return false;
    const auto reach = static_cast<std::int32_t>(std::ceil(r));
    const std::array<std::int32_t, 4> box{
        static_cast<std::int32_t>(std::max<std::int64_t>(static_cast<std::int64_t>(o.PosX) - reach, INT32_MIN)),
        static_cast<std::int32_t>(std::min<std::int64_t>(static_cast<std::int64_t>(o.PosX) + reach, INT32_MAX)),
        static_cast<std::int32_t>(std::max<std::int64_t>(static_cast<std::int64_t>(o.PosY) - reach, INT32_MIN)),
        static_cast<std::int32_t>(std::min<std::int64_t>(static_cast<std::int64_t>(o.PosY) + reach, INT32_MAX))};
    return BoxOutside(w, box) == 1;
}

void Present(const Session& s, Canvas& window, const Canvas& back, const GlHooks* gl)
{
    if (s.openGLActive == 1 && gl != nullptr && gl->swapBuffers)
        gl->swapBuffers();
    else
        window.CopyFrom(back);
}

} // namespace

void PaintObjectLines(const ClipWindow& w, const LineSet& lines, Canvas& surface, const PixelMap& map)
{
    // An object wholly beyond one side of the window has no segment the clipper would keep.
    std::array<std::int32_t, 4> box{INT32_MAX, INT32_MIN, INT32_MAX, INT32_MIN};
    for (const auto& line : lines)
        for (const Point& p : line) {
            box[0] = std::min(box[0], p.X);
            box[1] = std::max(box[1], p.X);
            box[2] = std::min(box[2], p.Y);
            box[3] = std::max(box[3], p.Y);
        }
    if (box[0] > box[1] || BoxOutside(w, box) == 1)
        return;
    for (const auto& line : lines)
        DrawClippedPath(w, line.data(), line.size(), surface, map);
}

void PaintShapes(const Session& s, const ClipWindow& w, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const Brush hatch{Brush::Kind::HatchForwardDiagonal, kHatchOrange};
    const Brush white{Brush::Kind::Solid, kWhite};
    const Pen oldPen = surface.SelectPen(SolidPen(kBlack));
    const Brush oldBrush = surface.SelectBrush(white);
    surface.SetBkMode(BkMode::Transparent);
    const Stores& st = s.stores;
    for (int i = 0; i < static_cast<int>(st.ShapeStore.size()); ++i) {
        if (!ValidShape(st, i))
            break;
        const ShapeRecord& shape = st.ShapeStore[i];
        const PointList& points = st.PointStore[i];
        if (!ShowFlagIsOn(s.showFlags, shape.gType))
            continue;
        if (shape.gType == kForest && shape.gIsConcave == 1) {
            // A forest must be convex to export: the hatch asks the user to fix it. Wholly beyond
            // one side of the window it has nothing the clipper would keep.
            if (BoxOutside(w, shape.gLimits) != 1) {
                surface.SelectBrush(hatch);
                FillClippedPolygon(w, points, surface, map);
                surface.SelectBrush(white);
            }
        } else {
            ShapeOutline(w, points, shape, surface, map);
        }
        if (!points.empty())
            Handle(surface, map, points[0]);
    }
    surface.SelectPen(oldPen);
    surface.SelectBrush(oldBrush);
    surface.SetBkMode(BkMode::Opaque);
}

void PaintLayerView(const Session& s, const ClipWindow& w, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const Pen oldPen = surface.SelectPen(SolidPen(kBlack));
    const Stores& st = s.stores;
    for (int i = 0; i < static_cast<int>(st.ShapeStore.size()); ++i) {
        if (!ValidShape(st, i))
            break;
        const ShapeRecord& shape = st.ShapeStore[i];
        if ((shape.gType != kPoly && shape.gType != kTexPoly) || shape.vLayer != 0)
            continue;
        surface.SelectPen(SolidPen(s.editor.selection.shapeIsSelected(i) == 1 ? kSelectRed : kBlack));
        FillClippedPolygon(w, st.PointStore[i], surface, map);
        if (!st.PointStore[i].empty())
            Handle(surface, map, st.PointStore[i][0]);
    }
    surface.SelectPen(oldPen);
}

void PaintObjects(const Session& s, const ClipWindow& w, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const Pen oldPen = surface.SelectPen(SolidPen(kBlack));
    LineSet lines;
    for (const ObjectRecord& o : s.stores.ObjectStore) {
        if (!ShowFlagIsOn(s.showFlags, o.oType))
            continue;
        if (!ObjectOutside(w, o, map.zoom)) {
            BuildObjectGeometry(lines, o, map.zoom);
            PaintObjectLines(w, lines, surface, map);
        }
        Handle(surface, map, {o.PosX, o.PosY});
    }
    surface.SelectPen(oldPen);
}

void PaintSelectedShapes(const Session& s, const ClipWindow& w, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const CSelection& sel = s.editor.selection;
    Pen pen;
    const bool hasPen = SelectionPen(sel.state(), pen);
    const Pen oldPen = hasPen ? surface.SelectPen(pen) : Pen{};
    std::vector<std::int32_t> selectedPoints;
    sel.getPoints(selectedPoints);
    for (int k = 0; k <= sel.sizeShape(); ++k) {
        const int i = sel.selShIndex(k);
        if (!ValidShape(s.stores, i))
            continue;
        const PointList& points = s.stores.PointStore[i];
        ShapeOutline(w, points, s.stores.ShapeStore[i], surface, map);
        if (points.empty())
            continue;
        Handle(surface, map, points[0]);
        if (sel.state() == 2) {
            for (const Point& p : points)
                Handle(surface, map, p);
            for (std::int32_t index : selectedPoints)
                if (index >= 0 && index < static_cast<std::int32_t>(points.size()))
                    Handle(surface, map, points[index], 1);
        }
    }
    if (hasPen)
        surface.SelectPen(oldPen);
}

void PaintSelectedObjects(const Session& s, const ClipWindow& w, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const CSelection& sel = s.editor.selection;
    Pen pen;
    const bool hasPen = SelectionPen(sel.state(), pen);
    const Pen oldPen = hasPen ? surface.SelectPen(pen) : Pen{};
    LineSet lines;
    for (int k = 0; k <= sel.sizeObject(); ++k) {
        const int i = sel.selObjIndex(k);
        if (!ValidObject(s.stores, i))
            continue;
        const ObjectRecord& o = s.stores.ObjectStore[i];
        BuildObjectGeometry(lines, o, map.zoom);
        PaintObjectLines(w, lines, surface, map);
        Handle(surface, map, {o.PosX, o.PosY});
    }
    if (hasPen)
        surface.SelectPen(oldPen);
}

GridRange GridBounds(const COffset& view, std::int32_t s)
{
    const double zoom = view.zoom();
    std::int32_t left0 = Round32(-(view.centX() / zoom + view.offX()) + 10 / zoom);
    std::int32_t top0 = Round32(-(view.centY() / zoom + view.offY()) + 10 / zoom);
    left0 = std::max(left0, -10000);
    top0 = std::max(top0, -10000);
    GridRange g;
    g.endX = std::min(Round32(view.sWidth() / zoom + left0 - 20 / zoom), 10000);
    g.endY = std::min(Round32(view.sHeight() / zoom + top0 - 20 / zoom), 10000);
    g.startX = Round32(static_cast<double>(s) * Round32(static_cast<double>(left0) / s));
    if (g.startX < -10000)
        g.startX += s;
    g.startY = Round32(static_cast<double>(s) * Round32(static_cast<double>(top0) / s));
    if (g.startY < -10000)
        g.startY += s;
    return g;
}

void PaintGrid(const Session& s, Canvas& surface)
{
    const COffset& view = s.view;
    const PixelMap map = PixelMap::Of(view);
    const ConfigRecord& c = s.config;
    const Pen pens[4] = {SolidPen(c.gridColor[0]), SolidPen(c.gridColor[1]), SolidPen(c.gridColor[2]),
                         SolidPen(c.GridColor4)};
    const Pen oldPen = surface.SelectPen(pens[0]);
    // Over an image the grid darkens by masking and does not cover it.
    if (s.showFlags.ShowBackPicture == 1 && CBitmap(const_cast<CBitmapState&>(s.bitmap)).isAvailable())
        surface.SetROP2(RasterOp::MaskPen);
    const std::int32_t left = std::max(ScreenToWorld(view, 10, 0).X, -10000);
    const std::int32_t right = std::min(ScreenToWorld(view, view.sWidth() - 10, 0).X, 10000);
    const std::int32_t top = std::max(ScreenToWorld(view, 0, 10).Y, -10000);
    const std::int32_t bottom = std::min(ScreenToWorld(view, 0, view.sHeight() - 10).Y, 10000);
    for (int level = 0; level < 3; ++level) {
        const std::int32_t spacing = static_cast<std::int32_t>(c.GridDist[level]) * 2;
        if (spacing * view.zoom() >= 5.0) {
            const GridRange g = GridBounds(view, spacing);
            for (std::int64_t y = g.startY; y <= g.endY; y += spacing) {
                surface.MoveToEx(map.X(left), map.Y(static_cast<double>(y)));
                surface.LineTo(map.X(right), map.Y(static_cast<double>(y)));
            }
            for (std::int64_t x = g.startX; x <= g.endX; x += spacing) {
                surface.MoveToEx(map.X(static_cast<double>(x)), map.Y(top));
                surface.LineTo(map.X(static_cast<double>(x)), map.Y(bottom));
            }
        }
        surface.SelectPen(pens[level + 1]);
    }
    if (left < 0 && right > 0) {
        surface.MoveToEx(map.X(0), map.Y(top));
        surface.LineTo(map.X(0), map.Y(bottom));
    }
    if (top < 0 && bottom > 0) {
        surface.MoveToEx(map.X(left), map.Y(0));
        surface.LineTo(map.X(right), map.Y(0));
    }
    surface.SelectPen(oldPen);
    surface.SetROP2(RasterOp::CopyPen);
}

void PaintImageFrame(const Session& s, const ClipWindow& w, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const auto& f = s.bitmap.frame.current;
    const Pen oldPen = surface.SelectPen(SolidPen(kSelectRed, 2));
    for (int i = 0; i < 4; ++i)
        ClipAndDrawLine(w, f[i].X, f[i].Y, f[i + 1].X, f[i + 1].Y, surface, map);
    const int hx = map.X(f[1].X);
    const int hy = map.Y(f[1].Y + (static_cast<double>(f[2].Y) - f[1].Y) / 2);
    surface.Rectangle(hx - 3, hy - 3, hx + 3, hy + 3);
    surface.SelectPen(oldPen);
}

void PaintRubberBand(const Session& s, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const CSelSquare& q = s.editor.selSquare;
    const int l = map.X(q.left());
    const int r = map.X(q.right());
    const int t = map.Y(q.top());
    const int b = map.Y(q.low());
    const Pen oldPen = surface.SelectPen(Pen{PenStyle::Dot, 1, kBlack});
    surface.MoveToEx(l, t);
    surface.LineTo(r, t);
    surface.LineTo(r, b);
    surface.LineTo(l, b);
    surface.LineTo(l, t);
    surface.SelectPen(oldPen);
}

void PaintDrawingLine(const Session& s, Canvas& surface)
{
    const PixelMap map = PixelMap::Of(s.view);
    const Cdraw1& d = s.editor.draw;
    const Pen oldPen = surface.SelectPen(SolidPen(kGhostGrey));
    surface.MoveToEx(map.X(d.X(0)), map.Y(d.Y(0)));
    for (int i = 1; i <= d.PointIndex(); ++i)
        surface.LineTo(map.X(d.X(i)), map.Y(d.Y(i)));
    surface.SelectPen(oldPen);
}

void PaintDragGhost(const Session& s, const ClipWindow& w, Canvas& surface, bool showBox)
{
    const PixelMap map = PixelMap::Of(s.view);
    const WorkingCopy& work = s.editor.work;
    const Pen oldPen = surface.SelectPen(SolidPen(kGhostGrey));
    for (int i = 0; i < work.WorkShapeCount(); ++i)
        if (i < static_cast<int>(work.WorkPoints.size()) && i < static_cast<int>(work.WorkShapes.size()))
            ShapeOutline(w, work.WorkPoints[i], work.WorkShapes[i], surface, map);
    LineSet lines;
    for (int i = 0; i < work.WorkObjectCount() && i < static_cast<int>(work.WorkObjects.size()); ++i) {
        BuildObjectGeometry(lines, work.WorkObjects[i], map.zoom);
        PaintObjectLines(w, lines, surface, map);
    }
    if (showBox) {
        const int L = map.X(work.WorkLimits[0]);
        const int R = map.X(work.WorkLimits[1]);
        const int T = map.Y(work.WorkLimits[2]);
        const int B = map.Y(work.WorkLimits[3]);
        surface.MoveToEx(L, T);
        surface.LineTo(R, T);
        surface.LineTo(R, B);
        surface.LineTo(L, B);
        surface.LineTo(L, T);
        // The handles of the free edit stand on the outer side of the corners.
        surface.Rectangle(L + 1, T + 1, L - 4, T - 4);
        surface.Rectangle(R, T + 1, R + 5, T - 4);
        surface.Rectangle(R, B, R + 5, B + 5);
        surface.Rectangle(L + 1, B, L - 4, B + 5);
    }
    surface.SelectPen(oldPen);
}

bool TakesOverlayPath(const Session& s)
{
    const EditorState& e = s.editor;
    const int working = e.work.WorkShapeCount() + e.work.WorkObjectCount();
    const bool imageDrag = s.bitmap.ImageFrameActive == 1 && (e.EditState == 17 || e.EditState == 18);
    return e.draw.PointIndex() > 0 || working > 0 || imageDrag;
}

void PaintFrame(const Session& s, Canvas& window, Canvas& back, const GlHooks* gl)
{
    const ClipWindow w = SetClipWindow(s.view);
    const EditorState& e = s.editor;
    const bool glMode = s.openGLActive == 1 && gl != nullptr;

    if (TakesOverlayPath(s)) {
        const bool showBox = !(e.EditState == 9 || e.EditState == 13 || e.EditState == 15);
        Present(s, window, back, gl);
        if (e.draw.PointIndex() > 0)
            PaintDrawingLine(s, window);
        if (e.work.WorkShapeCount() + e.work.WorkObjectCount() > 0)
            PaintDragGhost(s, w, window, showBox);
        if (s.bitmap.ImageFrameActive == 1)
            PaintImageFrame(s, w, window);
        return;
    }

    // While the rubber band is dragged nothing is recomposed.
    if (e.selSquare.IsActive() == 1) {
        Present(s, window, back, gl);
        PaintRubberBand(s, window);
        return;
    }
    if (glMode) {
        if (gl->glFrame)
            gl->glFrame(window);
        return;
    }

    const COffset& view = s.view;
    back.FillWhite(0, 0, view.sWidth(), view.sHeight());
    CBitmap bitmap(const_cast<CBitmapState&>(s.bitmap));
    if (s.showFlags.ShowBackPicture == 1 && bitmap.isAvailable()) {
        const ShowFlagsRecord& f = s.showFlags;
        bitmap.Render(back, Round32(f.BackImageLeft * view.zoom() + view.sDiffX()),
                      Round32(f.BackImageTop * view.zoom() + view.sDiffY()), f.BackImagescale * view.zoom(),
                      view.sWidth(), view.sHeight());
    }
    if (s.showFlags.ShowGrid == 1)
        PaintGrid(s, back);
    if (view.mMode() == 1) {
        PaintLayerView(s, w, back);
        window.CopyFrom(back);
        return;
    }
    if (s.stores.ShapeCount() > 0)
        PaintShapes(s, w, back);
    if (s.stores.ObjectCount() > 0)
        PaintObjects(s, w, back);
    if (e.selection.sizeShape() >= 0)
        PaintSelectedShapes(s, w, back);
    if (e.selection.sizeObject() >= 0)
        PaintSelectedObjects(s, w, back);
    if (s.bitmap.ImageFrameActive == 1)
        PaintImageFrame(s, w, back);
    window.CopyFrom(back);
}

} // namespace fw
