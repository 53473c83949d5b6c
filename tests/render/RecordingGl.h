// A GL port that keeps the calls as text lines, for checking what the view compiles.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "ports/GlApi.h"

namespace fw::test {

class RecordingGl final : public GlApi {
public:
    std::vector<std::string> calls;
    bool tessOk = true;

    void Enable(unsigned cap) override { Add("Enable %u", cap); }
    void Disable(unsigned cap) override { Add("Disable %u", cap); }
    void BlendFunc(unsigned s, unsigned d) override { Add("BlendFunc %u %u", s, d); }
    void ClearColor(float r, float g, float b, float a) override { Add("ClearColor %g %g %g %g", r, g, b, a); }
    void Clear(unsigned m) override { Add("Clear %u", m); }
    void Hint(unsigned t, unsigned m) override { Add("Hint %u %u", t, m); }
    void Viewport(int x, int y, int w, int h) override { Add("Viewport %d %d %d %d", x, y, w, h); }
    void MatrixMode(unsigned m) override { Add("MatrixMode %u", m); }
    void LoadIdentity() override { Add("LoadIdentity"); }
    void Ortho2D(double l, double r, double b, double t) override { Add("Ortho2D %g %g %g %g", l, r, b, t); }
    void PushMatrix() override { Add("PushMatrix"); }
    void PopMatrix() override { Add("PopMatrix"); }
    void NewList(unsigned l, unsigned m) override { Add("NewList %u %u", l, m); }
    void EndList() override { Add("EndList"); }
    void CallList(unsigned l) override { Add("CallList %u", l); }
    void PixelStorei(unsigned n, int v) override { Add("PixelStorei %u %d", n, v); }
    void BindTexture(unsigned t, unsigned n) override { Add("BindTexture %u %u", t, n); }
    void TexParameterf(unsigned t, unsigned n, float v) override { Add("TexParameterf %u %u %g", t, n, v); }
    void TexEnvf(unsigned t, unsigned n, float v) override { Add("TexEnvf %u %u %g", t, n, v); }
    void TexImage2D(int w, int h, const std::uint8_t* p) override { Add("TexImage2D %d %d %u", w, h, p[3]); }
    void Begin(unsigned m) override { Add("Begin %u", m); }
    void End() override { Add("End"); }
    void Vertex2f(float x, float y) override { Add("Vertex2f %g %g", x, y); }
    void Vertex2d(double x, double y) override { Add("Vertex2d %g %g", x, y); }
    void Color4ub(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) override
    {
        Add("Color4ub %u %u %u %u", r, g, b, a);
    }
    void TexCoord2dv(const double* st) override { Add("TexCoord2dv %g %g", st[0], st[1]); }
    void Vertex3dv(const double* v) override { Add("Vertex3dv %g %g %g", v[0], v[1], v[2]); }
    bool NewTess() override { return tessOk; }
    // Records the polygon and makes one fan of all its vertices.
    void Tessellate(const std::vector<double>& v, GlPrimitives& out) override
    {
        out.clear();
        Add("Tessellate %u", static_cast<unsigned>(v.size() / 5));
        for (std::size_t i = 0; i + 5 <= v.size(); i += 5)
            Add("TessVertex %g %g %g %g %g", v[i], v[i + 1], v[i + 2], v[i + 3], v[i + 4]);
        out.modes.push_back(6);
        out.starts.push_back(0);
        for (std::uint32_t i = 0; i < v.size() / 5; ++i)
            out.indices.push_back(i);
    }

    // The lines that start with prefix, in order.
    std::vector<std::string> Only(const std::string& prefix) const
    {
        std::vector<std::string> out;
        for (const std::string& c : calls)
            if (c.rfind(prefix, 0) == 0)
                out.push_back(c);
        return out;
    }

private:
    template <typename... T>
    void Add(const char* format, T... values)
    {
        char line[160];
        std::snprintf(line, sizeof line, format, values...);
        calls.emplace_back(line);
    }
    void Add(const char* text) { calls.emplace_back(text); }
};

} // namespace fw::test
