#include "platform/qt/GLStart.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QSurfaceFormat>

namespace fw::qt {

GLContext::GLContext() = default;

GLContext::~GLContext() { Release(); }

int GLContext::Create()
{
    Release();
    // Double buffered RGBA with 16 colour and 16 depth bits, as the plan view asks for.
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
    format.setRedBufferSize(5);
    format.setGreenBufferSize(6);
    format.setBlueBufferSize(5);
    format.setDepthBufferSize(16);
    format.setVersion(1, 1);
    // The fixed-function calls of the view are real calls only in a compatibility context.
    format.setProfile(QSurfaceFormat::CompatibilityProfile);

    int steps = 0;
    context_ = std::make_unique<QOpenGLContext>();
    context_->setFormat(format);
    if (!context_->create()) {
        context_.reset();
        return steps;
    }
    ++steps;
    surface_ = std::make_unique<QOffscreenSurface>();
    surface_->setFormat(context_->format());
    surface_->create();
    if (surface_->isValid())
        ++steps;
    if (steps == 2 && context_->makeCurrent(surface_.get()))
        ++steps;
    if (steps != 3)
        Release();
    return steps;
}

bool GLContext::MakeCurrent() { return context_ && surface_ && context_->makeCurrent(surface_.get()); }

void GLContext::Release()
{
    if (context_) {
        context_->doneCurrent();
        context_.reset();
    }
    surface_.reset();
}

} // namespace fw::qt
