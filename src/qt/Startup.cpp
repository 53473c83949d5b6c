#include "qt/Startup.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>


namespace fw::qt {

std::optional<char> CheckDecimalSeparator(const QString& separator, Ui& ui)
{
    if (separator.isEmpty()) {
        ui.Message("Unable to determine country settings!", MessageStyle::Critical);
        return std::nullopt;
    }
    QString text = separator;
    const qsizetype nul = text.indexOf(QChar(0));
    if (nul >= 0)
        text.truncate(nul);
    if (text != "," && text != ".") {
        ui.Message("Your system uses an unknown type of decimal separator!\n"
                   "Only ' . ' or ' , ' are allowed in Fieldwright...",
                   MessageStyle::Critical);
        return std::nullopt;
    }
    return static_cast<char>(text.at(0).unicode());
}

// The address is the build's configuration (CMake cache entry FW_HOME_PAGE).
#ifndef FW_HOME_PAGE
#error "FW_HOME_PAGE must be defined by the build"
#endif

std::string HomePage() { return FW_HOME_PAGE; }

std::optional<char> SystemDecimalSeparator(const QLocale& locale, Ui& ui)
{
    return CheckDecimalSeparator(locale.decimalPoint(), ui);
}

SplashWindow::SplashWindow(std::function<void()> showMainWindow, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      showMainWindow_(std::move(showMainWindow))
{
    setObjectName("FormSplash");
    setAttribute(Qt::WA_DeleteOnClose, false);
    setFixedSize(420, 240);
    if (QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    timer_.setInterval(500);
    connect(&timer_, &QTimer::timeout, this, &SplashWindow::tick);
    timer_.start();
}

void SplashWindow::tick()
{
    ++count_;
    if (count_ == 2) {
        if (showMainWindow_)
            showMainWindow_();
        raise();
        activateWindow();
    }
    if (count_ >= 4) {
        timer_.stop();
        close();
    }
}

void SplashWindow::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);
    const QRect r = rect();
    QLinearGradient sky(0, 0, 0, r.height());
    sky.setColorAt(0.0, QColor(70, 120, 190));
    sky.setColorAt(1.0, QColor(175, 205, 235));
    p.fillRect(r, sky);

    // A runway seen from the approach, and the ground around it.
    const int horizon = r.height() * 3 / 5;
    p.fillRect(QRect(0, horizon, r.width(), r.height() - horizon), QColor(95, 140, 80));
    const int cx = r.width() * 3 / 4;
    QPolygon strip({{cx - 6, horizon}, {cx + 6, horizon}, {cx + 60, r.height()}, {cx - 60, r.height()}});
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(70, 70, 70));
    p.drawPolygon(strip);
    p.setPen(QPen(Qt::white, 2, Qt::DashLine));
    p.drawLine(cx, horizon + 4, cx, r.height());

    p.setPen(Qt::white);
    QFont title = font();
    title.setPointSize(28);
    title.setBold(true);
    p.setFont(title);
    p.drawText(QRect(24, 30, r.width() - 48, 50), Qt::AlignLeft | Qt::AlignVCenter, "Fieldwright");
    QFont small = font();
    small.setPointSize(10);
    p.setFont(small);
    p.drawText(QRect(26, 82, r.width() - 52, 24), Qt::AlignLeft | Qt::AlignVCenter,
               "Airport scenery design for Flight Simulator 2000");
    p.drawText(QRect(26, r.height() - 30, r.width() / 2, 20), Qt::AlignLeft | Qt::AlignVCenter, "Loading...");
    p.setPen(QPen(QColor(30, 50, 80), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(r.adjusted(0, 0, -1, -1));
}

} // namespace fw::qt
