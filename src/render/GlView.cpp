#include "render/GlView.h"

#include <cctype>

#include "core/COffset.h"
#include "core/Helpers.h"
#include "render/Texture.h"

namespace fw {

namespace {

bool SameNameNoCase(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

void Upload(GlApi& gl, unsigned name, std::int32_t width, std::int32_t height, const std::vector<std::uint8_t>& rgba)
{
    gl.PixelStorei(gl::kUnpackAlignment, 1);
    gl.BindTexture(gl::kTexture2D, name);
    gl.TexParameterf(gl::kTexture2D, gl::kTextureWrapS, static_cast<float>(gl::kRepeat));
    gl.TexParameterf(gl::kTexture2D, gl::kTextureWrapT, static_cast<float>(gl::kRepeat));
    gl.TexParameterf(gl::kTexture2D, gl::kTextureMagFilter, static_cast<float>(gl::kLinear));
    gl.TexParameterf(gl::kTexture2D, gl::kTextureMinFilter, static_cast<float>(gl::kLinear));
    gl.TexEnvf(gl::kTextureEnv, gl::kTextureEnvMode, static_cast<float>(gl::kModulate));
    gl.TexImage2D(width, height, rgba.data());
}

// Five doubles a vertex: X, -Y, 0 and the texture coordinates. Each vertex of a primitive is sent
// as the tessellator's vertex callback does: the two values behind the position as texture
// coordinates, then the position.
void Tessellate(GlApi& gl, GlFillCache& fills, std::size_t index, const std::vector<double>& v)
{
    const GlPrimitives& p = fills.Fill(gl, index, v);
    for (std::size_t k = 0; k < p.modes.size(); ++k) {
        const std::size_t end = k + 1 < p.starts.size() ? p.starts[k + 1] : p.indices.size();
        gl.Begin(p.modes[k]);
        for (std::size_t i = p.starts[k]; i < end; ++i) {
            const double* vertex = &v[5 * static_cast<std::size_t>(p.indices[i])];
            const double st[2] = {vertex[3], vertex[4]};
            gl.TexCoord2dv(st);
            gl.Vertex3dv(vertex);
        }
        gl.End();
    }
}

void PushVertex(std::vector<double>& v, const Point& p, double s, double t)
{
    v.push_back(p.X);
    v.push_back(-static_cast<double>(p.Y));
    v.push_back(0.0);
    v.push_back(s);
    v.push_back(t);
}

void TexturedFill(GlApi& gl, const GlTextureTable& table, GlFillCache& fills, std::size_t index,
                  const ShapeRecord& record, const std::vector<double>& v)
{
    gl.Color4ub(255, 255, 255, 255);
    gl.Enable(gl::kTexture2D);
    gl.BindTexture(gl::kTexture2D, table.find(record.tDayPath));
    Tessellate(gl, fills, index, v);
    gl.Disable(gl::kTexture2D);
}

std::uint8_t Red(std::int32_t c) { return static_cast<std::uint8_t>(c & 0xFF); }
std::uint8_t Green(std::int32_t c) { return static_cast<std::uint8_t>((c >> 8) & 0xFF); }
std::uint8_t Blue(std::int32_t c) { return static_cast<std::uint8_t>((c >> 16) & 0xFF); }

void Handle(GlApi& gl, const Point& p, std::int32_t colour, double zoom)
{
    const double x0 = p.X - 1 / zoom;
    const double x1 = p.X + 3 / zoom;
    const double y0 = -(p.Y - 1 / zoom);
    const double y1 = -(p.Y + 3 / zoom);
    gl.Color4ub(255, 255, 255, 255);
    gl.Begin(gl::kPolygon);
    gl.Vertex2d(x0, y0);
    gl.Vertex2d(x1, y0);
    gl.Vertex2d(x1, y1);
    gl.Vertex2d(x0, y1);
    gl.End();
    gl.Color4ub(Red(colour), Green(colour), Blue(colour), 255);
    gl.Begin(gl::kLineLoop);
    gl.Vertex2d(x0, y0);
    gl.Vertex2d(x1, y0);
    gl.Vertex2d(x1, y1);
    gl.Vertex2d(x0, y1);
    gl.End();
}

bool Closed(std::uint8_t type) { return type == kPoly || type == kTexPoly || type == kFlatten || type == kForest; }

} // namespace

const GlPrimitives& GlFillCache::Fill(GlApi& gl, std::size_t index, const std::vector<double>& vertices)
{
    if (entries_.size() <= index)
        entries_.resize(index + 1);
    Entry& e = entries_[index];
    if (!e.made || e.vertices != vertices) {
        e.vertices = vertices;
        gl.Tessellate(e.vertices, e.primitives);
        e.made = true;
        ++tessellations_;
    }
    return e.primitives;
}

void GlFillCache::Trim(std::size_t count)
{
    if (entries_.size() > count)
        entries_.resize(count);
}

bool GlTextureTable::add(const std::string& name)
{
    if (entries_.size() >= 65535)
        return false;
    entries_.push_back({name, 1.0, 1.0});
    return true;
}

unsigned GlTextureTable::find(const std::string& name) const
{
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (SameNameNoCase(entries_[i].name, name))
            return static_cast<unsigned>(i + 1);
    return 1;
}

bool GlTextureTable::contains(const std::string& name) const
{
    for (const GlTextureEntry& e : entries_)
        if (SameNameNoCase(e.name, name))
            return true;
    return false;
}

bool GlSetup(GlApi& gl)
{
    gl.Enable(gl::kBlend);
    gl.BlendFunc(gl::kSrcAlpha, gl::kOneMinusSrcAlpha);
    gl.ClearColor(1.0f, 1.0f, 1.0f, 1.0f);
    gl.Hint(gl::kPerspectiveCorrectionHint, gl::kNicest);
    gl.Hint(gl::kPointSmoothHint, gl::kNicest);
    gl.Disable(gl::kDepthTest);
    return gl.NewTess();
}

std::vector<std::uint8_t> GlNoneChecker()
{
    std::vector<std::uint8_t> image;
    image.reserve(32 * 32 * 4);
    for (int row = 0; row < 32; ++row)
        for (int col = 0; col < 32; ++col) {
            const std::uint8_t v = ((row + col) % 2 == 0) ? 0 : 255;
            image.insert(image.end(), {v, v, v, 128});
        }
    return image;
}

void GlLoadTextures(const Session& s, GlApi& gl, GlTextureTable& table)
{
    table.clear();
    Upload(gl, 1, 32, 32, GlNoneChecker());
    table.add("None");
    const std::string folder = AddBackslash(s.config.TEXPath);
    std::vector<std::uint8_t> image;
    for (int i = 0; i < s.stores.ShapeCount(); ++i) {
        const ShapeRecord& r = s.stores.ShapeStore[i];
        if (r.gType != kPoly && r.gType != kTexPoly && r.gType != kWideLine)
            continue;
        if (table.contains(r.tDayPath))
            continue;
        std::int32_t w = 0;
        std::int32_t h = 0;
        if (ReadTextureGl(folder + r.tDayPath, s.programFolder, image, w, h) == 1 && TextureScale(w, h) != 0 &&
            table.add(r.tDayPath))
            Upload(gl, table.count(), w, h, image);
    }
}

void GlPaintPoly(GlApi& gl, const GlTextureTable& table, GlFillCache& fills, std::size_t index, const PointList& points,
                 const ShapeRecord& record)
{
    std::vector<double> v;
    v.reserve(points.size() * 5);
    if (record.gIsColored == 1) {
        for (const Point& p : points)
            PushVertex(v, p, 0.0, 0.0);
        const std::int32_t c = record.cColor;
        gl.Color4ub(Red(c), Green(c), Blue(c), static_cast<std::uint8_t>(record.cTransparency * 17));
        Tessellate(gl, fills, index, v);
        return;
    }
    const double minX = record.gLimits[0];
    const double minY = record.gLimits[2];
    for (const Point& p : points)
        PushVertex(v, p, (p.X - minX) / 256.0, (p.Y - minY) / 256.0);
    TexturedFill(gl, table, fills, index, record, v);
}

void GlPaintTexPoly(GlApi& gl, const GlTextureTable& table, GlFillCache& fills, std::size_t index,
                    const PointList& points, const ShapeRecord& record)
{
    std::vector<double> v;
    v.reserve(points.size() * 5);
    // The map has four corners; a point past them has no map of its own.
    for (std::size_t i = 0; i < points.size(); ++i) {
        const std::size_t k = i < 4 ? i : 3;
        PushVertex(v, points[i], record.mTexMap[2 * k] / 256.0, record.mTexMap[2 * k + 1] / 256.0);
    }
    TexturedFill(gl, table, fills, index, record, v);
}

void GlPaintOutline(GlApi& gl, const PointList& points, bool closed, std::int32_t colour, bool showPoints,
                    double zoom)
{
    if (points.empty())
        return;
    gl.Color4ub(Red(colour), Green(colour), Blue(colour), 255);
    gl.Begin(closed ? gl::kLineLoop : gl::kLineStrip);
    for (const Point& p : points)
        gl.Vertex2f(static_cast<float>(p.X), static_cast<float>(-p.Y));
    gl.End();
    Handle(gl, points[0], colour, zoom);
    if (showPoints)
        for (std::size_t i = 1; i < points.size(); ++i)
            Handle(gl, points[i], colour, zoom);
}

void GlBuildList(const Session& s, GlApi& gl, const GlTextureTable& table, GlFillCache& fills)
{
    const int count = s.stores.ShapeCount();
    if (count < 1)
        return;
    const CSelection& sel = s.editor.selection;
    const double zoom = s.view.zoom();
    fills.Trim(static_cast<std::size_t>(count));
    gl.NewList(kGlShapeList, gl::kCompile);
    for (int i = 0; i < count; ++i) {
        const ShapeRecord& r = s.stores.ShapeStore[i];
        const auto index = static_cast<std::size_t>(i);
        if (r.gType == kPoly)
            GlPaintPoly(gl, table, fills, index, s.stores.PointStore[i], r);
        else if (r.gType == kTexPoly)
            GlPaintTexPoly(gl, table, fills, index, s.stores.PointStore[i], r);
    }
    for (int i = 0; i < count; ++i)
        if (sel.shapeIsSelected(i) != 1)
            GlPaintOutline(gl, s.stores.PointStore[i], Closed(s.stores.ShapeStore[i].gType), RGB(0, 0, 0), false,
                           zoom);
    std::int32_t colour = 0;
    bool showPoints = false;
    switch (sel.state()) {
    case 1: colour = RGB(255, 0, 0); break;
    case 2: colour = RGB(0, 255, 0); showPoints = true; break;
    case 3: colour = RGB(0, 0, 255); break;
    default: break;
    }
    if (colour != 0)
        for (int i = 0; i < count; ++i)
            if (sel.shapeIsSelected(i) == 1)
                GlPaintOutline(gl, s.stores.PointStore[i], Closed(s.stores.ShapeStore[i].gType), colour, showPoints,
                               zoom);
    gl.EndList();
}

void GlFrame(const Session& s, GlApi& gl)
{
    const COffset& view = s.view;
    const double left = ScreenToWorld(view, 0, 0).X;
    const double right = ScreenToWorld(view, view.sWidth(), 0).X;
    const double top = -ScreenToWorld(view, 0, 0).Y;
    const double bottom = -ScreenToWorld(view, 0, view.sHeight()).Y;
    gl.MatrixMode(gl::kProjection);
    gl.LoadIdentity();
    gl.Ortho2D(left, right, bottom, top);
    gl.MatrixMode(gl::kModelView);
    gl.LoadIdentity();
    gl.Clear(gl::kColorBufferBit);
    gl.PushMatrix();
    gl.CallList(kGlShapeList);
    gl.PopMatrix();
}

} // namespace fw
