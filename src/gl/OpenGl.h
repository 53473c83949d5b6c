// The GL view's calls on the real OpenGL 1.1 and GLU of the current context, and what a context
// needs around them: a framebuffer of the canvas's size to draw into and read back, and a
// context of its own for machines without a display.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ports/GlApi.h"

namespace fw {

class OpenGl final : public GlApi {
public:
    OpenGl();
    ~OpenGl() override;
    OpenGl(const OpenGl&) = delete;
    OpenGl& operator=(const OpenGl&) = delete;

    void Enable(unsigned cap) override;
    void Disable(unsigned cap) override;
    void BlendFunc(unsigned src, unsigned dst) override;
    void ClearColor(float r, float g, float b, float a) override;
    void Clear(unsigned mask) override;
    void Hint(unsigned target, unsigned mode) override;
    void Viewport(int x, int y, int width, int height) override;
    void MatrixMode(unsigned mode) override;
    void LoadIdentity() override;
    void Ortho2D(double left, double right, double bottom, double top) override;
    void PushMatrix() override;
    void PopMatrix() override;
    void NewList(unsigned list, unsigned mode) override;
    void EndList() override;
    void CallList(unsigned list) override;
    void PixelStorei(unsigned name, int value) override;
    void BindTexture(unsigned target, unsigned texture) override;
    void TexParameterf(unsigned target, unsigned name, float value) override;
    void TexEnvf(unsigned target, unsigned name, float value) override;
    void TexImage2D(int width, int height, const std::uint8_t* rgba) override;
    void Begin(unsigned mode) override;
    void End() override;
    void Vertex2f(float x, float y) override;
    void Vertex2d(double x, double y) override;
    void Color4ub(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) override;
    void TexCoord2dv(const double* st) override;
    void Vertex3dv(const double* xyz) override;
    bool NewTess() override;
    void Tessellate(const std::vector<double>& vertices, GlPrimitives& out) override;

    // Drops the tessellator; the context must still be current.
    void Release();

private:
    struct Tess;
    std::unique_ptr<Tess> tess_;
};

// An RGBA framebuffer object of the current context that the view draws into, so that the frame
// can be read back and the overlays painted over it with the ordinary surface operations.
class GlFramebuffer {
public:
    GlFramebuffer() = default;
    ~GlFramebuffer();
    GlFramebuffer(const GlFramebuffer&) = delete;
    GlFramebuffer& operator=(const GlFramebuffer&) = delete;

    // Made (again) at width by height, at least 1 by 1, bound, with the viewport set. False when
    // the context can't make one.
    bool Resize(int width, int height);
    int width() const { return width_; }
    int height() const { return height_; }
    // The frame as 0xFFRRGGBB values, rows from the top, into rows of stride values each.
    void Read(std::uint32_t* pixels, int stride) const;
    // Deletes the buffers; the context must still be current.
    void Release();

private:
    unsigned framebuffer_ = 0;
    unsigned colour_ = 0;
    int width_ = 0;
    int height_ = 0;
};

// A desktop OpenGL context in the compatibility profile without any window or display (Mesa's
// surfaceless platform, else the default display). The view draws into a framebuffer of its own,
// so one such context serves the desktop program, the batch tool and the tests alike.
class HeadlessGlContext {
public:
    HeadlessGlContext() = default;
    ~HeadlessGlContext();
    HeadlessGlContext(const HeadlessGlContext&) = delete;
    HeadlessGlContext& operator=(const HeadlessGlContext&) = delete;

    // The three steps of the set-up, each counting 1 when it succeeded: a display with desktop
    // OpenGL, the context, making it current. Only 3 is a working context; below it error says
    // why and nothing is kept.
    int Create(std::string& error);
    // Current again before the view draws; false without a context.
    bool MakeCurrent();
    bool active() const { return context_ != nullptr; }
    // Not current any more, and deleted; nothing happens without a context.
    void Release();

private:
    void* display_ = nullptr;
    void* context_ = nullptr;
};

} // namespace fw
