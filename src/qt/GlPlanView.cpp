#include "qt/GlPlanView.h"

#include "qt/QtCanvas.h"

namespace fw::qt {

GlPlanView::~GlPlanView() { Release(); }

bool GlPlanView::Setup(int width, int height)
{
    ready_ = context_.MakeCurrent() && GlSetup(gl_) && frame_.Resize(width, height);
    return ready_;
}

void GlPlanView::Resize(int width, int height)
{
    if (ready_ && context_.MakeCurrent())
        frame_.Resize(width, height);
}

void GlPlanView::Rebuild(const Session& s, bool full)
{
    if (!ready_ || !context_.MakeCurrent())
        return;
    if (full)
        GlLoadTextures(s, gl_, table_);
    GlBuildList(s, gl_, table_, fills_);
}

void GlPlanView::Frame(const Session& s, QtCanvas& target)
{
    if (!ready_ || !context_.MakeCurrent())
        return;
    GlFrame(s, gl_);
    // The framebuffer follows the canvas's size; until a resize has reached it, nothing is read.
    if (frame_.width() == target.Width() && frame_.height() == target.Height()) {
        int stride = 0;
        std::uint32_t* bits = target.FrameBits(stride);
        frame_.Read(bits, stride);
    }
}

void GlPlanView::Release()
{
    if (ready_ && context_.MakeCurrent()) {
        frame_.Release();
        gl_.Release();
    }
    ready_ = false;
}

} // namespace fw::qt
