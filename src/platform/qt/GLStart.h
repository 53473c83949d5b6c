// The OpenGL rendering context of the plan view, made once at start when OpenGL is on.
#pragma once

#include <memory>

class QOffscreenSurface;
class QOpenGLContext;

namespace fw::qt {

class GLContext {
public:
    GLContext();
    ~GLContext();
    GLContext(const GLContext&) = delete;
    GLContext& operator=(const GLContext&) = delete;

    // The three steps of the set-up, each counting 1 when it succeeded: the format and the
    // context, the drawing surface, making the context current. Only a sum of 3 is a working
    // context.
    int Create();
    // Not current any more, and deleted; nothing happens without a context.
    void Release();
    bool active() const { return context_ != nullptr; }
    // Current again on its surface before the view draws; false without a context.
    bool MakeCurrent();
    QOpenGLContext* context() const { return context_.get(); }

private:
    std::unique_ptr<QOpenGLContext> context_;
    std::unique_ptr<QOffscreenSurface> surface_;
};

} // namespace fw::qt
