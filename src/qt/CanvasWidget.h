// The plan view's widget, `Picture1`: the frame of PaintFrame on a 2-pixel sunken border, and the
// mouse and keys of the canvas handed to the editor.
#pragma once

#include <functional>
#include <memory>

#include <QImage>
#include <QWidget>

#include "core/Session.h"

namespace fw::qt {

class GlPlanView;
class QtCanvas;

class CanvasWidget : public QWidget {
    Q_OBJECT
public:
    // The border around the drawable area; the control is 2 * kBorder larger than sWidth, sHeight.
    static constexpr int kBorder = 2;

    CanvasWidget(Session& session, QWidget* parent = nullptr);
    ~CanvasWidget() override;

    // PaintFrame now, on the back buffer and the window canvas, then shown. Nothing before the
    // main window has finished loading.
    void PaintNow();
    // The window canvas as last painted, sWidth by sHeight (at least 1 by 1).
    QImage Frame() const;
    // In OpenGL mode the full frame comes from the GL view; nullptr for the ordinary view.
    void setGlView(GlPlanView* view);
    // How many times the back buffer was made (one per resize that changed nothing else).
    int buffersMade() const { return buffersMade_; }
    // Runs editor work; the main window puts its fault guard here. Default: a fault becomes a
    // critical message and the event ends.
    void setGuard(std::function<void(const std::function<void()>&)> guard) { guard_ = std::move(guard); }

    // The editor's virtual key code of a Qt key (45 Insert, 13 Enter, 187 and 189 the plus and
    // minus of the main keyboard, ...); 0 for keys the canvas doesn't pass on.
    static int KeyCode(int qtKey, Qt::KeyboardModifiers modifiers);
    // The shift state bits of the editor (1 Shift, 2 Ctrl, 4 Alt).
    static int ShiftState(Qt::KeyboardModifiers modifiers);

signals:
    // After the editor has handled a mouse move: the position for the status bar.
    void positionChanged();
    // After a button, double click or key: the enabling the tools write at once may have changed.
    void eventHandled();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // The wheel zooms through the zoom levels about the point under the pointer (WheelZoom).
    void wheelEvent(QWheelEvent* event) override;

private:
    void MakeBuffers();
    // PaintFrame onto the buffers; false before the main window has finished loading.
    bool Compose();
    // A press (down) or release of a button the editor knows; other buttons pass on.
    void ButtonEvent(QMouseEvent* event, bool down);
    void Run(const std::function<void()>& work);
    // The position in the drawable area's pixels, single precision as the editor is given it.
    static double AreaX(const QMouseEvent* event);
    static double AreaY(const QMouseEvent* event);

    Session& session_;
    std::unique_ptr<QtCanvas> back_;
    std::unique_ptr<QtCanvas> window_;
    GlPlanView* glView_ = nullptr;
    std::function<void(const std::function<void()>&)> guard_;
    bool painted_ = false;
    int buffersMade_ = 0;
    // Wheel turn not yet spent on a zoom step: 120 eighths of a degree make one notch, and fine
    // wheels and touch pads send less at a time.
    int wheelRest_ = 0;
};

} // namespace fw::qt
