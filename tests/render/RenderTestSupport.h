// A session with a canvas-sized view, and readers of a recording canvas's calls.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Session.h"
#include "support/RecordingCanvas.h"

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

// A 24-bit bitmap file of one colour, bottom-up rows.
inline std::vector<unsigned char> Bmp24(int w, int h, std::uint32_t rgb)
{
    const int stride = (w * 3 + 3) / 4 * 4;
    std::vector<unsigned char> b(54 + static_cast<std::size_t>(stride) * h, 0);
    auto put32 = [&b](std::size_t at, std::uint32_t v) {
        for (int i = 0; i < 4; ++i)
            b[at + i] = static_cast<unsigned char>(v >> (8 * i));
    };
    b[0] = 'B';
    b[1] = 'M';
    put32(2, static_cast<std::uint32_t>(b.size()));
    put32(10, 54);
    put32(14, 40);
    put32(18, static_cast<std::uint32_t>(w));
    put32(22, static_cast<std::uint32_t>(h));
    b[26] = 1;
    b[28] = 24;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const std::size_t at = 54 + static_cast<std::size_t>(y) * stride + x * 3;
            b[at] = rgb & 0xFF;
            b[at + 1] = (rgb >> 8) & 0xFF;
            b[at + 2] = (rgb >> 16) & 0xFF;
        }
    return b;
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
