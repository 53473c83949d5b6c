// The plan view in OpenGL mode: the GL view drawn into a framebuffer of the canvas's size and
// read back into the canvas's back buffer, over which the overlays are painted as ever.
#pragma once

#include "core/Session.h"
#include "gl/OpenGl.h"
#include "render/GlView.h"

namespace fw::qt {

class QtCanvas;

class GlPlanView {
public:
    explicit GlPlanView(HeadlessGlContext& context) : context_(context) {}
    ~GlPlanView();
    GlPlanView(const GlPlanView&) = delete;
    GlPlanView& operator=(const GlPlanView&) = delete;

    // The set-up once the context is made: state, tessellator, a framebuffer of width by height.
    // False when any of them failed.
    bool Setup(int width, int height);
    bool ready() const { return ready_; }
    // The viewport after a resize of the window.
    void Resize(int width, int height);
    // GlLoadTextures when full, then GlBuildList.
    void Rebuild(const Session& s, bool full);
    // GlFrame, read back into target.
    void Frame(const Session& s, QtCanvas& target);
    // Drops the list's resources while the context is still current.
    void Release();

private:
    HeadlessGlContext& context_;
    OpenGl gl_;
    GlFramebuffer frame_;
    GlTextureTable table_;
    GlFillCache fills_;
    bool ready_ = false;
};

} // namespace fw::qt
