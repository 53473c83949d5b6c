// A session with a canvas-sized view, and readers of a recording canvas's calls.
#pragma once

#include <string>
#include <vector>

#include "core/Session.h"
#include "platform/RecordingCanvas.h"

namespace fw::test {

inline Session MakeSession(int width, int height, double zoom = 1.0, int offX = 0, int offY = 0)
{
    Session s;
    s.programFolder = "/opt/fw/";
    ResetConfig(s.config, s.programFolder);
    DeriveGridColors(s.config);
    ResetAtStart(s);
    s.view.setSWidth(width);
    s.view.setSHeight(height);
    s.view.reset();
    s.view.setZoom(zoom);
    s.view.setOffX(offX);
    s.view.setOffY(offY);
    return s;
}

inline PointList Pts(std::initializer_list<Point> p) { return PointList(p); }

inline void AddShape(Session& s, int type, const PointList& points)
{
    ShapeRecord r;
    ResetShape(r, type);
    AppendShape(s.stores, r, points);
}

inline void AddObject(Session& s, int type, int x, int y, double rotation = 0)
{
    AppendObject(s.stores, type, x, y, rotation, s.programFolder);
}

// The calls of one kind, in order.
inline std::vector<RecordingCanvas::Call> Only(const RecordingCanvas& c, const std::string& op)
{
    std::vector<RecordingCanvas::Call> out;
    for (const auto& call : c.calls)
        if (call.op == op)
            out.push_back(call);
    return out;
}

// Each move followed by its line, as {x0, y0, x1, y1}.
inline std::vector<std::vector<int>> Segments(const RecordingCanvas& c)
{
    std::vector<std::vector<int>> out;
    for (std::size_t i = 0; i + 1 < c.calls.size(); ++i)
        if (c.calls[i].op == "move" && c.calls[i + 1].op == "line")
            out.push_back({c.calls[i].args[0], c.calls[i].args[1], c.calls[i + 1].args[0], c.calls[i + 1].args[1]});
    return out;
}

} // namespace fw::test
