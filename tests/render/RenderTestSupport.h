// A session with a canvas-sized view, picture and project files to read, and readers of a
// recording canvas's calls.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "core/Session.h"
#include "files/ProjectFile.h"
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

// A 24-bit bitmap file of one colour, bottom-up rows; the right half in the second colour if given.
inline std::vector<unsigned char> Bmp24(int w, int h, std::uint32_t rgb, std::int64_t rightRgb = -1)
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
            const std::uint32_t c = rightRgb >= 0 && x >= w / 2 ? static_cast<std::uint32_t>(rightRgb) : rgb;
            b[at] = c & 0xFF;
            b[at + 1] = (c >> 8) & 0xFF;
            b[at + 2] = (c >> 16) & 0xFF;
        }
    return b;
}

// A bitmap of one pixel whose header claims w by h: the pixels of a refused picture are never read.
inline std::vector<unsigned char> BmpClaiming(int w, int h)
{
    std::vector<unsigned char> b = Bmp24(1, 1, 0);
    for (int i = 0; i < 4; ++i) {
        b[18 + i] = static_cast<unsigned char>(w >> (8 * i));
        b[22 + i] = static_cast<unsigned char>(h >> (8 * i));
    }
    return b;
}

inline void WriteBytes(const std::string& path, const std::vector<unsigned char>& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// A project of one Poly whose background image, shown, is imagePath.
inline bool WriteProjectNamingImage(const std::string& path, const std::string& imagePath)
{
    ProjectData d;
    ResetShowFlags(d.showFlags);
    ResetProject(d.project);
    d.showFlags.BackImagePath = imagePath;
    d.showFlags.ShowBackPicture = 1;
    ShapeRecord sh;
    ResetShape(sh, kPoly);
    d.shapes = {sh};
    d.points = {{{0, 0}, {100, 0}, {100, 100}}};
    return WriteProjectFile(path, d, nullptr);
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

// Each move followed by its line, as {x0, y0, x1, y1}; with a colour, only the lines of that pen.
inline std::vector<std::vector<int>> Segments(const RecordingCanvas& c, std::int64_t color = -1)
{
    std::vector<std::vector<int>> out;
    for (std::size_t i = 0; i + 1 < c.calls.size(); ++i)
        if (c.calls[i].op == "move" && c.calls[i + 1].op == "line" &&
            (color < 0 || c.calls[i + 1].pen.color == color))
            out.push_back({c.calls[i].args[0], c.calls[i].args[1], c.calls[i + 1].args[0], c.calls[i + 1].args[1]});
    return out;
}

} // namespace fw::test
