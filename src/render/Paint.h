// The plan view: PaintFrame composes the frame on the back buffer and shows it on the window
// canvas; what follows the mouse is painted on the window over a fresh copy of the back buffer.
#pragma once

#include <cstdint>
#include <functional>

#include "core/Session.h"
#include "ports/Canvas.h"
#include "render/Clip.h"
#include "render/Geometry.h"

namespace fw {

// Colours fixed in the program.
constexpr std::int32_t kBlack = RGB(0, 0, 0);
constexpr std::int32_t kWhite = RGB(255, 255, 255);
constexpr std::int32_t kHatchOrange = RGB(255, 128, 0);
constexpr std::int32_t kSelectRed = RGB(255, 0, 0);
constexpr std::int32_t kEditPointsGreen = RGB(0, 200, 0);
constexpr std::int32_t kDragBlue = RGB(0, 0, 255);
constexpr std::int32_t kGhostGrey = RGB(128, 128, 128);

// In OpenGL mode the window's buffers are swapped in place of the block copy, and the full path
// hands the frame to the GL view.
struct GlHooks {
    std::function<void()> swapBuffers;
    std::function<void(Canvas& window)> glFrame;
};

// window: the visible canvas; back: the off-screen surface of sWidth by sHeight that keeps the
// last complete frame. gl is used when the session runs in OpenGL mode.
void PaintFrame(const Session& s, Canvas& window, Canvas& back, const GlHooks* gl = nullptr);

// What PaintFrame would do now: the overlay path (nothing recomposed), else the full path.
bool TakesOverlayPath(const Session& s);

// The painters, each with the clip window of the frame.
void PaintShapes(const Session& s, const ClipWindow& w, Canvas& surface);
void PaintObjects(const Session& s, const ClipWindow& w, Canvas& surface);
void PaintSelectedShapes(const Session& s, const ClipWindow& w, Canvas& surface);
void PaintSelectedObjects(const Session& s, const ClipWindow& w, Canvas& surface);
void PaintLayerView(const Session& s, const ClipWindow& w, Canvas& surface);
void PaintGrid(const Session& s, Canvas& surface);
void PaintImageFrame(const Session& s, const ClipWindow& w, Canvas& surface);
void PaintRubberBand(const Session& s, Canvas& surface);
void PaintDrawingLine(const Session& s, Canvas& surface);
void PaintDragGhost(const Session& s, const ClipWindow& w, Canvas& surface, bool showBox);
// Each polyline as consecutive clipped segments, no closing segment.
void PaintObjectLines(const ClipWindow& w, const LineSet& lines, Canvas& surface, const PixelMap& map);

// The grid lines of spacing s (world units) that fit the window, on multiples of s.
struct GridRange {
    std::int32_t startX = 0;
    std::int32_t startY = 0;
    std::int32_t endX = 0;
    std::int32_t endY = 0;
};
GridRange GridBounds(const COffset& view, std::int32_t s);

} // namespace fw
