#include "gl/OpenGl.h"

#define GL_GLEXT_PROTOTYPES 1
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>

namespace fw {

namespace {

// The polygon being tessellated: its vertex buffer and where the primitives go.
struct Capture {
    const GLdouble* base = nullptr;
    GlPrimitives* out = nullptr;
};

void GLAPIENTRY OnBegin(GLenum mode, void* data)
{
    auto* c = static_cast<Capture*>(data);
    c->out->modes.push_back(mode);
    c->out->starts.push_back(static_cast<std::uint32_t>(c->out->indices.size()));
}

void GLAPIENTRY OnEnd(void*) {}

// The vertex's place in the buffer; the vertex itself, with the two texture coordinates
// behind its position, is sent when the primitives are replayed.
void GLAPIENTRY OnVertex(void* vertex, void* data)
{
    auto* c = static_cast<Capture*>(data);
    c->out->indices.push_back(static_cast<std::uint32_t>((static_cast<const GLdouble*>(vertex) - c->base) / 5));
}

} // namespace

struct OpenGl::Tess {
    GLUtesselator* tess = nullptr;
    ~Tess()
    {
        if (tess != nullptr)
            gluDeleteTess(tess);
    }
};

OpenGl::OpenGl() = default;
OpenGl::~OpenGl() { Release(); }

void OpenGl::Release() { tess_.reset(); }

void OpenGl::Enable(unsigned cap) { glEnable(cap); }
void OpenGl::Disable(unsigned cap) { glDisable(cap); }
void OpenGl::BlendFunc(unsigned src, unsigned dst) { glBlendFunc(src, dst); }
void OpenGl::ClearColor(float r, float g, float b, float a) { glClearColor(r, g, b, a); }
void OpenGl::Clear(unsigned mask) { glClear(mask); }
void OpenGl::Hint(unsigned target, unsigned mode) { glHint(target, mode); }
void OpenGl::Viewport(int x, int y, int width, int height) { glViewport(x, y, width, height); }
void OpenGl::MatrixMode(unsigned mode) { glMatrixMode(mode); }
void OpenGl::LoadIdentity() { glLoadIdentity(); }
void OpenGl::Ortho2D(double left, double right, double bottom, double top) { gluOrtho2D(left, right, bottom, top); }
void OpenGl::PushMatrix() { glPushMatrix(); }
void OpenGl::PopMatrix() { glPopMatrix(); }
void OpenGl::NewList(unsigned list, unsigned mode) { glNewList(list, mode); }
void OpenGl::EndList() { glEndList(); }
void OpenGl::CallList(unsigned list) { glCallList(list); }
void OpenGl::PixelStorei(unsigned name, int value) { glPixelStorei(name, value); }
void OpenGl::BindTexture(unsigned target, unsigned texture) { glBindTexture(target, texture); }
void OpenGl::TexParameterf(unsigned target, unsigned name, float value) { glTexParameterf(target, name, value); }
void OpenGl::TexEnvf(unsigned target, unsigned name, float value) { glTexEnvf(target, name, value); }

void OpenGl::TexImage2D(int width, int height, const std::uint8_t* rgba)
{
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
}

void OpenGl::Begin(unsigned mode) { glBegin(mode); }
void OpenGl::End() { glEnd(); }
void OpenGl::Vertex2f(float x, float y) { glVertex2f(x, y); }
void OpenGl::Vertex2d(double x, double y) { glVertex2d(x, y); }
void OpenGl::Color4ub(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) { glColor4ub(r, g, b, a); }

void OpenGl::TexCoord2dv(const double* st) { glTexCoord2dv(st); }
void OpenGl::Vertex3dv(const double* xyz) { glVertex3dv(xyz); }

bool OpenGl::NewTess()
{
    tess_ = std::make_unique<Tess>();
    tess_->tess = gluNewTess();
    if (tess_->tess == nullptr) {
        tess_.reset();
        return false;
    }
    gluTessCallback(tess_->tess, GLU_TESS_BEGIN_DATA, reinterpret_cast<_GLUfuncptr>(&OnBegin));
    gluTessCallback(tess_->tess, GLU_TESS_END_DATA, reinterpret_cast<_GLUfuncptr>(&OnEnd));
    gluTessCallback(tess_->tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<_GLUfuncptr>(&OnVertex));
    return true;
}

void OpenGl::Tessellate(const std::vector<double>& vertices, GlPrimitives& out)
{
    out.clear();
    if (!tess_ || vertices.size() < 5)
        return;
    Capture capture{vertices.data(), &out};
    GLdouble* base = const_cast<GLdouble*>(vertices.data());
    gluTessBeginPolygon(tess_->tess, &capture);
    gluTessBeginContour(tess_->tess);
    for (std::size_t i = 0; i + 5 <= vertices.size(); i += 5)
        gluTessVertex(tess_->tess, base + i, base + i);
    gluTessEndContour(tess_->tess);
    gluTessEndPolygon(tess_->tess);
    // A polygon given up half way (the tessellator's error) may leave an open primitive.
    if (!out.starts.empty() && out.starts.back() == out.indices.size()) {
        out.modes.pop_back();
        out.starts.pop_back();
    }
}

GlFramebuffer::~GlFramebuffer() { Release(); }

void GlFramebuffer::Release()
{
    if (framebuffer_ != 0) {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
        glDeleteFramebuffers(1, &framebuffer_);
    }
    if (colour_ != 0)
        glDeleteRenderbuffers(1, &colour_);
    framebuffer_ = 0;
    colour_ = 0;
    width_ = 0;
    height_ = 0;
}

bool GlFramebuffer::Resize(int width, int height)
{
    width = std::max(1, width);
    height = std::max(1, height);
    if (framebuffer_ == 0) {
        glGenFramebuffers(1, &framebuffer_);
        glGenRenderbuffers(1, &colour_);
    }
    glBindRenderbuffer(GL_RENDERBUFFER, colour_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width, height);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour_);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
        Release();
        return false;
    }
    width_ = width;
    height_ = height;
    glViewport(0, 0, width, height);
    return true;
}

void GlFramebuffer::Read(std::uint32_t* pixels, int stride) const
{
    if (framebuffer_ == 0)
        return;
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    // One read into the target with GL's bottom row first, then the rows turned over in place.
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, stride);
    glReadPixels(0, 0, width_, height_, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    for (int top = 0, bottom = height_ - 1; top <= bottom; ++top, --bottom) {
        std::uint32_t* a = pixels + static_cast<std::ptrdiff_t>(top) * stride;
        std::uint32_t* b = pixels + static_cast<std::ptrdiff_t>(bottom) * stride;
        for (int x = 0; x < width_; ++x) {
            const std::uint32_t t = a[x] | 0xFF000000u;
            a[x] = b[x] | 0xFF000000u;
            b[x] = t;
        }
    }
}

HeadlessGlContext::~HeadlessGlContext() { Release(); }

int HeadlessGlContext::Create(std::string& error)
{
    Release();
    EGLDisplay display = EGL_NO_DISPLAY;
    auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (getPlatformDisplay != nullptr)
        display = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    EGLint major = 0;
    EGLint minor = 0;
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor)) {
        display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
        if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor)) {
            error = "no EGL display could be opened";
            return 0;
        }
    }
    display_ = display;
    if (!eglBindAPI(EGL_OPENGL_API)) {
        error = "the EGL display offers no desktop OpenGL";
        Release();
        return 0;
    }
    const EGLint configAttributes[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint configs = 0;
    if (!eglChooseConfig(display, configAttributes, &config, 1, &configs) || configs < 1)
        config = nullptr; // surfaceless contexts need no config
    const EGLint contextAttributes[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                        EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT, EGL_NONE};
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, contextAttributes);
    if (context == EGL_NO_CONTEXT) {
        error = "no OpenGL context could be made";
        Release();
        return 1;
    }
    context_ = context;
    if (!MakeCurrent()) {
        error = "the OpenGL context could not be made current";
        Release();
        return 2;
    }
    return 3;
}

bool HeadlessGlContext::MakeCurrent()
{
    if (eglGetCurrentContext() == context_ && context_ != nullptr)
        return true;
    return context_ != nullptr && eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_);
}

void HeadlessGlContext::Release()
{
    if (display_ != nullptr) {
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        if (context_ != nullptr)
            eglDestroyContext(display_, context_);
        eglTerminate(display_);
    }
    display_ = nullptr;
    context_ = nullptr;
}

} // namespace fw
