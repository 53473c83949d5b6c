// The project the paint benchmark draws: 800 shapes of 80 points and 800 objects over the whole
// work area, the selection a drag moves, and the segments a full frame sends to the surface.
#pragma once

#include <algorithm>
#include <random>
#include <vector>

#include "core/Session.h"
#include "support/RecordingCanvas.h"
#include "render/Paint.h"

namespace fw::bench {

constexpr int kWidth = 1024;
constexpr int kHeight = 768;

inline Session& FullProject()
{
    static Session s = [] {
        Session p;
        p.programFolder = "/opt/fw/";
        ResetConfig(p.config, p.programFolder);
        ResetAtStart(p);
        std::mt19937 rng(7);
        std::uniform_int_distribution<int> centre(-9000, 9000);
        std::uniform_int_distribution<int> step(-120, 120);
        const int shapeTypes[] = {kPoly, kTexPoly, kWideLine, kDotLine, kTreeLine, kForest, kPoly};
        for (int i = 0; i < kMaxShapes; ++i) {
            ShapeRecord r;
            const int type = shapeTypes[i % 7];
            ResetShape(r, type);
            const int points = type == kTexPoly ? kMaxTexPolyPoints : kMaxPoints;
            PointList pts;
            int x = centre(rng);
            int y = centre(rng);
            for (int k = 0; k < points; ++k) {
                x = std::clamp(x + step(rng), -10000, 10000);
                y = std::clamp(y + step(rng), -10000, 10000);
                pts.push_back({x, y});
            }
            AppendShape(p.stores, r, pts);
        }
        const int objectTypes[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
        std::uniform_real_distribution<double> heading(0, 360);
        for (int i = 0; i < kMaxObjects; ++i)
            AppendObject(p.stores, objectTypes[i % 7], centre(rng), centre(rng), heading(rng), p.programFolder);
        p.view.setSWidth(kWidth);
        p.view.setSHeight(kHeight);
        p.view.reset();
        return p;
    }();
    return s;
}

// Dragging the first `count` shapes and objects (40 by default, or everything) at a zoom, as the
// editor holds them between button down and up.
inline void StartDrag(Session& s, double zoom = 0.25, int count = 40)
{
    s.view.setZoom(zoom);
    WorkingCopy& w = s.editor.work;
    w = WorkingCopy{};
    for (int i = 0; i < count; ++i) {
        w.WorkPoints.push_back(s.stores.PointStore[i]);
        w.WorkShapes.push_back(s.stores.ShapeStore[i]);
        w.WorkObjects.push_back(s.stores.ObjectStore[i]);
    }
    w.WorkShapeLast = static_cast<std::int16_t>(count - 1);
    w.WorkObjectLast = static_cast<std::int16_t>(count - 1);
    w.WorkLimits = {-9000, 9000, -9000, 9000};
    s.editor.EditState = 9;
}

inline void EndDrag(Session& s)
{
    s.editor.work = WorkingCopy{};
    s.editor.EditState = 0;
}

// The segments of the frame as x0 y0 x1 y1: the plain lines alone, or with them the outlines of
// the filled polygons and of the rectangles that touch the surface (their fills left out). Those
// of the full frame on the back buffer, or of the overlay on the window while something moves.
inline std::vector<int> FrameSegments(const Session& s, bool outlines)
{
    RecordingCanvas rec(kWidth, kHeight);
    RecordingCanvas recWindow(kWidth, kHeight);
    PaintFrame(s, recWindow, rec);
    std::vector<int> segments;
    int cx = 0;
    int cy = 0;
    auto add = [&segments](int x0, int y0, int x1, int y1) {
        if (x0 != x1 || y0 != y1)
            segments.insert(segments.end(), {x0, y0, x1, y1});
    };
    for (const auto& c : (TakesOverlayPath(s) ? recWindow : rec).calls) {
        if (c.op == "move") {
            cx = c.args[0];
            cy = c.args[1];
        } else if (c.op == "line") {
            add(cx, cy, c.args[0], c.args[1]);
            cx = c.args[0];
            cy = c.args[1];
        } else if (outlines && c.op == "polygon" && c.args.size() >= 4) {
            const std::size_t n = c.args.size();
            for (std::size_t i = 0; i < n; i += 2)
                add(c.args[i], c.args[i + 1], c.args[(i + 2) % n], c.args[(i + 3) % n]);
        } else if (outlines && c.op == "rect") {
            const int l = std::min(c.args[0], c.args[2]);
            const int r = std::max(c.args[0], c.args[2]) - 1;
            const int t = std::min(c.args[1], c.args[3]);
            const int b = std::max(c.args[1], c.args[3]) - 1;
            if (r < l || b < t || r < -1 || b < -1 || l > kWidth || t > kHeight)
                continue;
            add(l, t, r, t);
            add(r, t, r, b);
            add(r, b, l, b);
            add(l, b, l, t);
        }
    }
    return segments;
}

} // namespace fw::bench
