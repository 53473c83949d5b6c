#include "qt/CanvasWidget.h"

#include <algorithm>
#include <exception>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

#include "editor/CanvasEvents.h"
#include "editor/Commands.h"
#include "ports/Ui.h"
#include "qt/QtCanvas.h"
#include "qt/GlPlanView.h"
#include "render/Paint.h"

namespace fw::qt {

namespace {

bool ButtonOf(Qt::MouseButton b, MouseButton& out)
{
    switch (b) {
    case Qt::LeftButton: out = MouseButton::Left; return true;
    case Qt::MiddleButton: out = MouseButton::Middle; return true;
    case Qt::RightButton: out = MouseButton::Right; return true;
    default: return false;
    }
}

} // namespace

CanvasWidget::CanvasWidget(Session& session, QWidget* parent) : QWidget(parent), session_(session)
{
    setObjectName("Picture1");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    // Every pixel is painted from the window canvas: nothing to erase first, nothing to flicker.
    setAttribute(Qt::WA_OpaquePaintEvent, true);
    setAttribute(Qt::WA_NoSystemBackground, true);
    setMinimumSize(2 * kBorder, 2 * kBorder);
    MakeBuffers();
}

CanvasWidget::~CanvasWidget() = default;

void CanvasWidget::MakeBuffers()
{
    // Release, then a new back buffer and window canvas of sWidth by sHeight.
    back_.reset();
    window_.reset();
    back_ = std::make_unique<QtCanvas>(session_.view.sWidth(), session_.view.sHeight());
    window_ = std::make_unique<QtCanvas>(session_.view.sWidth(), session_.view.sHeight());
    painted_ = false;
    ++buffersMade_;
    if (glView_ != nullptr)
        glView_->Resize(session_.view.sWidth(), session_.view.sHeight());
}

void CanvasWidget::setGlView(GlPlanView* view)
{
    glView_ = view;
    if (glView_ != nullptr)
        glView_->Resize(session_.view.sWidth(), session_.view.sHeight());
    painted_ = false;
}

bool CanvasWidget::Compose()
{
    if (session_.windowReady != 1)
        return false;
    if (glView_ != nullptr) {
        // The GL frame is read into the back buffer, which then stands for the window's buffer
        // that a swap would show.
        GlHooks gl;
        gl.glFrame = [this](Canvas& window) {
            glView_->Frame(session_, *back_);
            window.CopyFrom(*back_);
        };
        gl.swapBuffers = [this] { window_->CopyFrom(*back_); };
        fw::PaintFrame(session_, *window_, *back_, &gl);
    } else {
        fw::PaintFrame(session_, *window_, *back_);
    }
    painted_ = true;
    return true;
}

void CanvasWidget::PaintNow()
{
    // What follows the mouse changes only the tiles it touches now and touched last time: only
    // those are shown anew.
    const bool overlay = fw::TakesOverlayPath(session_) && glView_ == nullptr;
    if (!Compose())
        return;
    const QRegion changed = window_->TakeChanged();
    if (overlay)
        update(changed.translated(kBorder, kBorder));
    else
        update();
}

QImage CanvasWidget::Frame() const { return window_->Image().copy(); }

void CanvasWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    // The control is the drawable area and its border; the tool strip and the status bar are
    // outside it already.
    COffset& view = session_.view;
    view.setSWidth(std::max(0, width() - 2 * kBorder));
    view.setSHeight(std::max(0, height() - 2 * kBorder));
    view.resize();
    MakeBuffers();
    PaintNow();
}

void CanvasWidget::paintEvent(QPaintEvent*)
{
    // A paint of the window shows the stored window canvas; it is composed anew only the first
    // time after the buffers were made.
    if (!painted_)
        Compose();
    QPainter p(this);
    const QRect all = rect();
    const QPalette& pal = palette();
    // A sunken frame: dark above and left, light below and right.
    p.setPen(pal.color(QPalette::Dark));
    p.drawLine(all.left(), all.top(), all.right() - 1, all.top());
    p.drawLine(all.left(), all.top(), all.left(), all.bottom() - 1);
    p.setPen(pal.color(QPalette::Shadow));
    p.drawLine(all.left() + 1, all.top() + 1, all.right() - 2, all.top() + 1);
    p.drawLine(all.left() + 1, all.top() + 1, all.left() + 1, all.bottom() - 2);
    p.setPen(pal.color(QPalette::Light));
    p.drawLine(all.left(), all.bottom(), all.right(), all.bottom());
    p.drawLine(all.right(), all.top(), all.right(), all.bottom());
    p.setPen(pal.color(QPalette::Midlight));
    p.drawLine(all.left() + 1, all.bottom() - 1, all.right() - 1, all.bottom() - 1);
    p.drawLine(all.right() - 1, all.top() + 1, all.right() - 1, all.bottom() - 1);

    const QRect area = all.adjusted(kBorder, kBorder, -kBorder, -kBorder);
    if (area.isEmpty())
        return;
    if (painted_) {
        const QImage& frame = window_->Image();
        p.drawImage(area.topLeft(), frame, QRect(0, 0, area.width(), area.height()));
        // A frame smaller than the area (never painted at this size) leaves white.
        if (frame.width() < area.width())
            p.fillRect(QRect(area.left() + frame.width(), area.top(), area.width() - frame.width(), area.height()),
                       Qt::white);
        if (frame.height() < area.height())
            p.fillRect(QRect(area.left(), area.top() + frame.height(), area.width(), area.height() - frame.height()),
                       Qt::white);
    } else {
        p.fillRect(area, Qt::white);
    }
}

double CanvasWidget::AreaX(const QMouseEvent* event)
{
    return static_cast<float>(event->position().x() - kBorder);
}

double CanvasWidget::AreaY(const QMouseEvent* event)
{
    return static_cast<float>(event->position().y() - kBorder);
}

int CanvasWidget::ShiftState(Qt::KeyboardModifiers modifiers)
{
    int shift = 0;
    if (modifiers & Qt::ShiftModifier)
        shift |= kShiftKey;
    if (modifiers & Qt::ControlModifier)
        shift |= kCtrlKey;
    if (modifiers & Qt::AltModifier)
        shift |= kAltKey;
    return shift;
}

int CanvasWidget::KeyCode(int qtKey, Qt::KeyboardModifiers modifiers)
{
    const bool keypad = modifiers & Qt::KeypadModifier;
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return 65 + (qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return (keypad ? 96 : 48) + (qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12)
        return 112 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    // The plus key of the main keyboard is the "=" key on many layouts.
    case Qt::Key_Plus:
    case Qt::Key_Equal: return keypad ? 107 : 187;
    case Qt::Key_Minus:
    case Qt::Key_Underscore: return keypad ? 109 : 189;
    case Qt::Key_Asterisk: return keypad ? 106 : 0;
    case Qt::Key_Slash: return keypad ? 111 : 191;
    case Qt::Key_Comma: return 188;
    case Qt::Key_Period: return keypad ? 110 : 190;
    default: return 0;
    }
}

void CanvasWidget::Run(const std::function<void()>& work)
{
    if (guard_) {
        guard_(work);
        return;
    }
    try {
        work();
    } catch (const std::exception& e) {
        if (session_.ui)
            session_.ui->Message(e.what(), MessageStyle::Critical);
    }
}

void CanvasWidget::ButtonEvent(QMouseEvent* event, bool down)
{
    MouseButton button;
    if (!ButtonOf(event->button(), button)) {
        event->ignore();
        return;
    }
    const int shift = ShiftState(event->modifiers());
    const double x = AreaX(event);
    const double y = AreaY(event);
    if (down)
        Run([&] { CanvasMouseDown(session_, button, shift, x, y); });
    else
        Run([&] { CanvasMouseUp(session_, button, shift, x, y); });
    emit eventHandled();
}

void CanvasWidget::mousePressEvent(QMouseEvent* event) { ButtonEvent(event, true); }
void CanvasWidget::mouseReleaseEvent(QMouseEvent* event) { ButtonEvent(event, false); }

void CanvasWidget::mouseMoveEvent(QMouseEvent* event)
{
    const int shift = ShiftState(event->modifiers());
    const double x = AreaX(event);
    const double y = AreaY(event);
    Run([&] { CanvasMouseMove(session_, shift, x, y); });
    emit positionChanged();
}

void CanvasWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of a left double click is the double click alone: the first press has set
    // a shape's last point already. The other buttons press as ever.
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    Run([&] { CanvasDoubleClick(session_); });
    emit eventHandled();
}

void CanvasWidget::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const int delta = event->angleDelta().y();
    if (delta == 0)
        return;
    // A turn the other way starts afresh.
    if ((delta > 0) != (wheelRest_ > 0))
        wheelRest_ = 0;
    wheelRest_ += delta;
    const int steps = wheelRest_ / 120;
    if (steps == 0)
        return;
    wheelRest_ -= steps * 120;
    const double x = static_cast<float>(event->position().x() - kBorder);
    const double y = static_cast<float>(event->position().y() - kBorder);
    Run([&] { WheelZoom(session_, steps, x, y); });
    emit eventHandled();
}

void CanvasWidget::keyPressEvent(QKeyEvent* event)
{
    const int code = KeyCode(event->key(), event->modifiers());
    if (code == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    const int shift = ShiftState(event->modifiers());
    Run([&] { CanvasKeyDown(session_, code, shift); });
    emit eventHandled();
}

} // namespace fw::qt
