// The OpenGL 1.1 and GLU tessellator calls of the OpenGL view, one to one, so that the view's
// logic runs against a real context or a recording one. Nothing here includes a GL header.
#pragma once

#include <cstdint>
#include <vector>

namespace fw {

// The enumerants the view passes, with OpenGL's own values.
namespace gl {
inline constexpr unsigned kLineLoop = 0x0002;
inline constexpr unsigned kLineStrip = 0x0003;
inline constexpr unsigned kPolygon = 0x0009;
inline constexpr unsigned kCompile = 0x1300;
inline constexpr unsigned kColorBufferBit = 0x4000;
inline constexpr unsigned kBlend = 0x0BE2;
inline constexpr unsigned kDepthTest = 0x0B71;
inline constexpr unsigned kTexture2D = 0x0DE1;
inline constexpr unsigned kSrcAlpha = 0x0302;           // 770
inline constexpr unsigned kOneMinusSrcAlpha = 0x0303;   // 771
inline constexpr unsigned kPerspectiveCorrectionHint = 0x0C50; // 3152
inline constexpr unsigned kPointSmoothHint = 0x0C51;           // 3153
inline constexpr unsigned kNicest = 0x1102;                    // 4354
inline constexpr unsigned kProjection = 0x1701;
inline constexpr unsigned kModelView = 0x1700;
inline constexpr unsigned kUnpackAlignment = 0x0CF5;
inline constexpr unsigned kTextureWrapS = 0x2802;
inline constexpr unsigned kTextureWrapT = 0x2803;
inline constexpr unsigned kTextureMagFilter = 0x2800;
inline constexpr unsigned kTextureMinFilter = 0x2801;
inline constexpr unsigned kRepeat = 0x2901;
inline constexpr unsigned kLinear = 0x2601;
inline constexpr unsigned kTextureEnv = 0x2300;
inline constexpr unsigned kTextureEnvMode = 0x2200;
inline constexpr unsigned kModulate = 0x2100;
inline constexpr unsigned kRgba = 0x1908;
inline constexpr unsigned kUnsignedByte = 0x1401;
} // namespace gl

// What the tessellator made of one polygon: primitives, each its mode and the indices of its
// vertices in the polygon's vertex buffer.
struct GlPrimitives {
    std::vector<unsigned> modes;
    std::vector<std::uint32_t> starts; // where each primitive's indices begin in indices
    std::vector<std::uint32_t> indices;
    void clear()
    {
        modes.clear();
        starts.clear();
        indices.clear();
    }
};

class GlApi {
public:
    virtual ~GlApi() = default;

    virtual void Enable(unsigned cap) = 0;
    virtual void Disable(unsigned cap) = 0;
    virtual void BlendFunc(unsigned src, unsigned dst) = 0;
    virtual void ClearColor(float r, float g, float b, float a) = 0;
    virtual void Clear(unsigned mask) = 0;
    virtual void Hint(unsigned target, unsigned mode) = 0;
    virtual void Viewport(int x, int y, int width, int height) = 0;
    virtual void MatrixMode(unsigned mode) = 0;
    virtual void LoadIdentity() = 0;
    virtual void Ortho2D(double left, double right, double bottom, double top) = 0;
    virtual void PushMatrix() = 0;
    virtual void PopMatrix() = 0;

    virtual void NewList(unsigned list, unsigned mode) = 0;
    virtual void EndList() = 0;
    virtual void CallList(unsigned list) = 0;

    virtual void PixelStorei(unsigned name, int value) = 0;
    virtual void BindTexture(unsigned target, unsigned texture) = 0;
    virtual void TexParameterf(unsigned target, unsigned name, float value) = 0;
    virtual void TexEnvf(unsigned target, unsigned name, float value) = 0;
    // RGBA bytes, width * height * 4 of them, row 0 first.
    virtual void TexImage2D(int width, int height, const std::uint8_t* rgba) = 0;

    virtual void Begin(unsigned mode) = 0;
    virtual void End() = 0;
    virtual void Vertex2f(float x, float y) = 0;
    virtual void Vertex2d(double x, double y) = 0;
    virtual void Color4ub(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) = 0;

    virtual void TexCoord2dv(const double* st) = 0;
    virtual void Vertex3dv(const double* xyz) = 0;

    // The one tessellator: false when it can't be made.
    virtual bool NewTess() = 0;
    // One polygon of one contour through the tessellator, whose begin, vertex and end callbacks
    // are kept in out instead of being called at once, so that a shape that didn't change needn't
    // be tessellated again. vertices: five doubles each, the position and the texture
    // coordinates; they stay where they are until this returns. A polygon the tessellator can't
    // make (one that crosses itself, as there is no combine callback) gives nothing.
    virtual void Tessellate(const std::vector<double>& vertices, GlPrimitives& out) = 0;
};

} // namespace fw
