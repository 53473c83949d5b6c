#include "render/Clip.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/Numbers.h"

namespace fw {

int PixelMap::Clamped(double v) { return std::clamp(Round32(v), -kPixelLimit, kPixelLimit); }

ClipWindow SetClipWindow(const COffset& view)
{
    ClipWindow w;
    w.xMin = ScreenToWorld(view, 10, 0).X;
    w.xMax = ScreenToWorld(view, view.sWidth() - 10, 0).X;
    w.yMin = ScreenToWorld(view, 0, 10).Y;
    w.yMax = ScreenToWorld(view, 0, view.sHeight() - 10).Y;
    return w;
}

int OutCode(const ClipWindow& w, std::int32_t x, std::int32_t y)
{
    int code = 0;
    if (y > w.yMax)
        code += 1;
    else if (y < w.yMin)
        code += 2;
    if (x > w.xMax)
        code += 8;
    else if (x < w.xMin)
        code += 4;
    return code;
}

int BoxOutside(const ClipWindow& w, const std::array<std::int32_t, 4>& l)
{
    if (l[0] < w.xMin && l[1] < w.xMin)
        return 1;
    if (l[0] > w.xMax && l[1] > w.xMax)
        return 1;
    if (l[2] < w.yMin && l[3] < w.yMin)
        return 1;
    if (l[2] > w.yMax && l[3] > w.yMax)
        return 1;
    return 0;
}

void ClipAndDrawLine(const ClipWindow& w, std::int32_t x0, std::int32_t y0, std::int32_t x1,
                     std::int32_t y1, Canvas& surface, const PixelMap& map)
{
    int c0 = OutCode(w, x0, y0);
    int c1 = OutCode(w, x1, y1);
    // Each pass settles one bound of one end, so four passes per end are the most there can be.
    for (int pass = 0; (c0 | c1) != 0; ++pass) {
        if ((c0 & c1) != 0 || pass >= 8)
            return;
        const int c = c0 != 0 ? c0 : c1;
        const double dx = static_cast<double>(x1) - x0;
        const double dy = static_cast<double>(y1) - y0;
        double x = 0;
        double y = 0;
        if (c & 1) {
            y = w.yMax;
            x = x0 + (w.yMax - static_cast<double>(y0)) * dx / dy;
        } else if (c & 2) {
            y = w.yMin;
            x = x0 + (w.yMin - static_cast<double>(y0)) * dx / dy;
        } else if (c & 8) {
            x = w.xMax;
            y = y0 + (w.xMax - static_cast<double>(x0)) * dy / dx;
        } else {
            x = w.xMin;
            y = y0 + (w.xMin - static_cast<double>(x0)) * dy / dx;
        }
        if (c == c0) {
            x0 = Round32(x);
            y0 = Round32(y);
            c0 = OutCode(w, x0, y0);
        } else {
            x1 = Round32(x);
            y1 = Round32(y);
            c1 = OutCode(w, x1, y1);
        }
    }
    surface.MoveToEx(map.X(x0), map.Y(y0));
    surface.LineTo(map.X(x1), map.Y(y1));
}

void DrawClippedPath(const ClipWindow& w, const Point* p, std::size_t count, Canvas& surface, const PixelMap& map)
{
    if (count < 2)
        return;
    // Each point's code and pixel are found once and serve both segments it ends.
    int c0 = OutCode(w, p[0].X, p[0].Y);
    bool mapped = false;
    int x0 = 0;
    int y0 = 0;
    for (std::size_t i = 1; i < count; ++i) {
        const int c1 = OutCode(w, p[i].X, p[i].Y);
        if ((c0 | c1) == 0) {
            if (!mapped) {
                x0 = map.X(p[i - 1].X);
                y0 = map.Y(p[i - 1].Y);
            }
            const int x1 = map.X(p[i].X);
            const int y1 = map.Y(p[i].Y);
            surface.MoveToEx(x0, y0);
            surface.LineTo(x1, y1);
            x0 = x1;
            y0 = y1;
            mapped = true;
        } else {
            if ((c0 & c1) == 0)
                ClipAndDrawLine(w, p[i - 1].X, p[i - 1].Y, p[i].X, p[i].Y, surface, map);
            mapped = false;
        }
        c0 = c1;
    }
}

void ShapeOutline(const ClipWindow& w, const PointList& p, const ShapeRecord& record, Canvas& surface,
                  const PixelMap& map)
{
    if (p.empty())
        return;
    const std::size_t last = p.size() - 1;
    // A shape wholly beyond one side has no segment to draw but its closing one, which the
    // clipper rejects on its own.
    if (BoxOutside(w, record.gLimits) == 0)
        DrawClippedPath(w, p.data(), p.size(), surface, map);
    switch (record.gType) {
    case kPoly:
    case kTexPoly:
    case kFlatten:
    case kForest:
        ClipAndDrawLine(w, p[last].X, p[last].Y, p[0].X, p[0].Y, surface, map);
        break;
    default:
        break;
    }
}

namespace {

struct ClipBuffer {
    std::array<Point, kClipBufferLast + 1> v{};
    int count = 0;
};

// One Sutherland-Hodgman pass against bound b on axis x (or y). The walk goes once past the last
// vertex, so the first one comes out a second time at the end. False when the output would not
// fit its buffer.
bool ClipPass(const ClipBuffer& in, ClipBuffer& out, bool onX, std::int32_t b, bool keepBelow)
{
    out.count = 0;
    auto axis = [onX](const Point& p) -> double { return onX ? p.X : p.Y; };
    auto other = [onX](const Point& p) -> double { return onX ? p.Y : p.X; };
    auto append = [&out](const Point& p) {
        if (out.count + 1 > kClipBufferLast)
            return false;
        out.v[++out.count] = p;
        return true;
    };
    for (int i = 1; i <= in.count + 1; ++i) {
        const Point& p = in.v[i - 1];
        const Point& q = in.v[i];
        const double pa = axis(p);
        const double qa = axis(q);
        if ((b - pa) * (b - qa) < 0) {
            const double o = other(p) + (other(q) - other(p)) * (b - pa) / (qa - pa);
            const Point cross = onX ? Point{b, Round32(o)} : Point{Round32(o), b};
            if (!append(cross))
                return false;
        }
        const bool kept = keepBelow ? qa <= b : qa >= b;
        if (kept && !append(q))
            return false;
    }
    return true;
}

bool Reload(ClipBuffer& in, const ClipBuffer& out)
{
    if (out.count + 1 > kClipBufferLast)
        return false;
    for (int i = 1; i <= out.count; ++i)
        in.v[i] = out.v[i];
    in.count = out.count;
    in.v[in.count + 1] = in.v[1];
    in.v[0] = in.v[in.count];
    return true;
}

void OutlineInstead(const ClipWindow& w, const PointList& p, Canvas& surface, const PixelMap& map)
{
    for (std::size_t i = 0; i < p.size(); ++i) {
        const Point& a = p[i];
        const Point& b = p[(i + 1) % p.size()];
        ClipAndDrawLine(w, a.X, a.Y, b.X, b.Y, surface, map);
    }
}

// The four passes' bounds in their order.
struct Bound {
    bool onX;
    std::int32_t b;
    bool keepBelow;
};

std::array<Bound, 4> Passes(const ClipWindow& w)
{
    return {{{true, w.xMax, true}, {false, w.yMin, false}, {true, w.xMin, false}, {false, w.yMax, true}}};
}

// Polygons that no pass crosses settle without the clipper: a pass that keeps every point adds
// the first one once more, a pass that keeps none leaves nothing. Up to this many points no pass
// of such a polygon fills its buffer.
constexpr int kQuickLast = kClipBufferLast - 4;
enum class Quick { Clip, Nothing, Whole };

Quick QuickCase(const ClipWindow& w, const PointList& points)
{
    std::int32_t minX = points[0].X;
    std::int32_t maxX = minX;
    std::int32_t minY = points[0].Y;
    std::int32_t maxY = minY;
    for (const Point& p : points) {
        minX = std::min(minX, p.X);
        maxX = std::max(maxX, p.X);
        minY = std::min(minY, p.Y);
        maxY = std::max(maxY, p.Y);
    }
    // Wholly beyond any one bound keeps nothing, whatever the other passes would do.
    bool keepsAll = true;
    for (const Bound& pass : Passes(w)) {
        const std::int32_t lo = pass.onX ? minX : minY;
        const std::int32_t hi = pass.onX ? maxX : maxY;
        if (pass.keepBelow ? lo > pass.b : hi < pass.b)
            return Quick::Nothing;
        keepsAll = keepsAll && (pass.keepBelow ? hi <= pass.b : lo >= pass.b);
    }
    return keepsAll ? Quick::Whole : Quick::Clip;
}

} // namespace

bool FillClippedPolygon(const ClipWindow& w, const PointList& points, Canvas& surface, const PixelMap& map)
{
    const int n = static_cast<int>(points.size());
    if (n + 1 > kClipBufferLast) {
        OutlineInstead(w, points, surface, map);
        return false;
    }
    std::vector<PixelPoint> pixels;
    pixels.reserve(kClipBufferLast + 4);
    switch (n > 0 && n <= kQuickLast ? QuickCase(w, points) : Quick::Clip) {
    case Quick::Nothing:
        surface.Polygon(pixels);
        return true;
    case Quick::Whole:
        // Each pass walks once past the last vertex: the first comes out four more times.
        for (const Point& p : points)
            pixels.push_back({map.X(p.X), map.Y(p.Y)});
        pixels.insert(pixels.end(), 4, PixelPoint{pixels.front()});
        surface.Polygon(pixels);
        return true;
    case Quick::Clip: break;
    }
    ClipBuffer in;
    ClipBuffer out;
    for (int i = 0; i < n; ++i)
        in.v[i + 1] = points[i];
    in.count = n;
    if (n > 0) {
        in.v[0] = in.v[n];
        in.v[n + 1] = in.v[1];
    }
    const std::array<Bound, 4> passes = Passes(w);
    // Once a pass keeps nothing there is nothing left to clip.
    for (int k = 0; k < 4 && in.count > 0; ++k) {
        if (!ClipPass(in, out, passes[k].onX, passes[k].b, passes[k].keepBelow) ||
            (k < 3 && !Reload(in, out))) {
            OutlineInstead(w, points, surface, map);
            return false;
        }
    }
    for (int i = 1; i <= out.count; ++i)
        pixels.push_back({map.X(out.v[i].X), map.Y(out.v[i].Y)});
    surface.Polygon(pixels);
    return true;
}

} // namespace fw
