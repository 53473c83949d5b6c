// The plan view's widget, `Picture1`. It keeps COffset's canvas size; the painting comes later.
#pragma once

#include <QWidget>

#include "core/Session.h"

namespace fw::qt {

class CanvasWidget : public QWidget {
    Q_OBJECT
public:
    CanvasWidget(Session& session, QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    Session& session_;
};

} // namespace fw::qt
