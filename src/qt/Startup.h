// The pieces of the program's start that need the host: locale, folders, the splash window.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QLocale>
#include <QTimer>
#include <QWidget>

#include "ports/Ui.h"

namespace fw::qt {

// The locale's decimal separator, "." or ","; otherwise tells the user why the program can't run
// and gives nothing.
std::optional<char> SystemDecimalSeparator(const QLocale& locale, Ui& ui);
// The same test on the separator text itself (empty: the locale gave no answer).
std::optional<char> CheckDecimalSeparator(const QString& separator, Ui& ui);

// The home page of the build ("Fieldwright on the net...").
std::string HomePage();

// The splash window. Its timer ticks every 500 ms: the main window comes at the second tick, the
// splash closes at the fourth.
class SplashWindow : public QWidget {
    Q_OBJECT
public:
    explicit SplashWindow(std::function<void()> showMainWindow, QWidget* parent = nullptr);

    int count() const { return count_; }
    QTimer& timer() { return timer_; }
    void tick();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::function<void()> showMainWindow_;
    QTimer timer_;
    int count_ = 0;
};

} // namespace fw::qt
