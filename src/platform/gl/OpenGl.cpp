#include "platform/gl/OpenGl.h"

#define GL_GLEXT_PROTOTYPES 1
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>

namespace fw {

namespace {

void GLAPIENTRY OnBegin(GLenum mode) { glBegin(mode); }
void GLAPIENTRY OnEnd() { glEnd(); }

// The position and, behind it, the two texture coordinates; with texturing off they don't count.
void GLAPIENTRY OnVertex(void* data)
{
    const auto* v = static_cast<const GLdouble*>(data);
    const GLdouble st[2] = {v[3], v[4]};
    glTexCoord2dv(st);
    glVertex3dv(v);
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

bool OpenGl::NewTess()
{
    tess_ = std::make_unique<Tess>();
    tess_->tess = gluNewTess();
    if (tess_->tess == nullptr) {
        tess_.reset();
        return false;
    }
    gluTessCallback(tess_->tess, GLU_TESS_BEGIN, reinterpret_cast<_GLUfuncptr>(&OnBegin));
    gluTessCallback(tess_->tess, GLU_TESS_END, reinterpret_cast<_GLUfuncptr>(&OnEnd));
    gluTessCallback(tess_->tess, GLU_TESS_VERTEX, reinterpret_cast<_GLUfuncptr>(&OnVertex));
    return true;
}

void OpenGl::TessBeginPolygon()
{
    if (tess_)
        gluTessBeginPolygon(tess_->tess, nullptr);
}

void OpenGl::TessBeginContour()
{
    if (tess_)
        gluTessBeginContour(tess_->tess);
}

void OpenGl::TessVertex(const double* xyzst)
{
    // The tessellator reads the position and hands the same address to the vertex callback.
    if (tess_)
        gluTessVertex(tess_->tess, const_cast<GLdouble*>(xyzst), const_cast<GLdouble*>(xyzst));
}

void OpenGl::TessEndContour()
{
    if (tess_)
        gluTessEndContour(tess_->tess);
}

void OpenGl::TessEndPolygon()
{
    if (tess_)
        gluTessEndPolygon(tess_->tess);
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
    glFinish();
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, stride);
    // GL's rows run from the bottom: read each into its row from the top.
    for (int y = 0; y < height_; ++y)
        glReadPixels(0, height_ - 1 - y, width_, 1, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                     pixels + static_cast<std::ptrdiff_t>(y) * stride);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    for (int y = 0; y < height_; ++y) {
        std::uint32_t* row = pixels + static_cast<std::ptrdiff_t>(y) * stride;
        for (int x = 0; x < width_; ++x)
            row[x] |= 0xFF000000u;
    }
}

HeadlessGlContext::~HeadlessGlContext() { Release(); }

bool HeadlessGlContext::Create(std::string& error)
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
            return false;
        }
    }
    display_ = display;
    if (!eglBindAPI(EGL_OPENGL_API)) {
        error = "the EGL display offers no desktop OpenGL";
        Release();
        return false;
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
        return false;
    }
    context_ = context;
    if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
        error = "the OpenGL context could not be made current";
        Release();
        return false;
    }
    return true;
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
