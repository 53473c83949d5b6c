#include "platform/qt/CanvasWidget.h"

#include <QPainter>
#include <QResizeEvent>

namespace fw::qt {

CanvasWidget::CanvasWidget(Session& session, QWidget* parent) : QWidget(parent), session_(session)
{
    setObjectName("Picture1");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent, true);
    setMinimumSize(4, 4);
}

void CanvasWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    // The drawable area is the control less its 2-pixel border on each side.
    session_.view.setSWidth(std::max(0, width() - 4));
    session_.view.setSHeight(std::max(0, height() - 4));
    session_.view.resize();
}

void CanvasWidget::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), palette().color(QPalette::Mid));
    p.fillRect(rect().adjusted(2, 2, -2, -2), Qt::white);
}

} // namespace fw::qt
