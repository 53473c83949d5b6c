// The viewport clipper: every world line and filled polygon of the plan view goes through it, in
// world units, before anything becomes a pixel.
#pragma once

#include <array>
#include <cstdint>

#include "core/COffset.h"
#include "core/Numbers.h"
#include "core/Records.h"
#include "ports/Canvas.h"

namespace fw {

struct ClipWindow {
    std::int32_t xMin = 0;
    std::int32_t xMax = 0;
    std::int32_t yMin = 0;
    std::int32_t yMax = 0;
};

// The world-to-pixel map of one painter call, read from COffset once.
struct PixelMap {
    std::int32_t sx = 0;
    std::int32_t sy = 0;
    double zoom = 1;
    static PixelMap Of(const COffset& view) { return {view.sDiffX(), view.sDiffY(), view.zoom()}; }
    // round(x * zoom + sx), held inside 30 bits.
    int X(double x) const { return Of(x * zoom + sx); }
    int Y(double y) const { return Of(y * zoom + sy); }

private:
    // Pixels are held to 30 bits so that a handle's corners a few pixels off never overflow.
    static constexpr int kPixelLimit = 1 << 30;
    static int Of(double v)
    {
        // Inside the limit adding and taking away 1.5 * 2^52 rounds half to even, as Round32
        // does, without a call per coordinate.
        constexpr double kShift = 6755399441055744.0;
        if (v > -kPixelLimit && v < kPixelLimit)
            return static_cast<int>((v + kShift) - kShift);
        return Clamped(v);
    }
    static int Clamped(double v);
};

// The canvas inset by 10 pixels on every side, in world units.
ClipWindow SetClipWindow(const COffset& view);
int OutCode(const ClipWindow& w, std::int32_t x, std::int32_t y);
// 1 when the box (min X, max X, min Y, max Y) lies wholly beyond one side.
int BoxOutside(const ClipWindow& w, const std::array<std::int32_t, 4>& limits);
void ClipAndDrawLine(const ClipWindow& w, std::int32_t x0, std::int32_t y0, std::int32_t x1,
                     std::int32_t y1, Canvas& surface, const PixelMap& map);
// Consecutive clipped segments p[0]-p[1], p[1]-p[2], ... as ClipAndDrawLine draws them.
void DrawClippedPath(const ClipWindow& w, const Point* p, std::size_t count, Canvas& surface,
                     const PixelMap& map);
// The outline of a shape; polygons (types 1, 2, 6, 7) close, lines stay open.
void ShapeOutline(const ClipWindow& w, const PointList& points, const ShapeRecord& record,
                  Canvas& surface, const PixelMap& map);

// The clipper's point buffers hold indices 0 to 200.
constexpr int kClipBufferLast = 200;
// Fills the visible part with the current brush and outlines it with the current pen. A polygon
// or clip result too long for the buffers is drawn as its clipped outline without a fill.
// Returns false in that case.
bool FillClippedPolygon(const ClipWindow& w, const PointList& points, Canvas& surface,
                        const PixelMap& map);

} // namespace fw
