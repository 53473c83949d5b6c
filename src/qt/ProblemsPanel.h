// The "Problems" dock: the design check's list, refreshed after each change, a click going to the item.
#pragma once

#include <thread>
#include <vector>

#include <QDockWidget>
#include <QTimer>

#include "check/DesignCheck.h"
#include "core/Session.h"

class QLabel;
class QListWidget;

namespace fw::qt {

class MainWindow;

// Where the panel's shown state is remembered (QSettings of the desktop program).
inline constexpr const char* kProblemsShownKey = "ProblemsPanel/shown";

class ProblemsPanel : public QDockWidget {
    Q_OBJECT
public:
    ProblemsPanel(MainWindow& window, Session& session);
    ~ProblemsPanel() override;

    // Runs the check once the events of a change have passed, on a copy of the design in a thread
    // of its own, so that neither the frame nor the next event waits for it.
    void scheduleRefresh();
    // Runs the check now, in this thread.
    void refresh();
    // Selects the item of a row and centres the view on it.
    void goTo(int row);

    const std::vector<Problem>& problems() const { return problems_; }
    QListWidget* list() const { return list_; }
    QLabel* count() const { return count_; }

private:
    void startCheck();
    void showProblems(std::vector<Problem> problems);

    MainWindow& window_;
    Session& session_;
    QListWidget* list_ = nullptr;
    QLabel* count_ = nullptr;
    QTimer pending_;
    std::vector<Problem> problems_;
    std::thread worker_;
    bool running_ = false;
    bool again_ = false; // a change came while the check ran
};

// Docks the panel at the bottom, shown as the configuration says, adds "Problems" at the end of the
// View menu and the count to the status bar, and follows every command and canvas event.
ProblemsPanel* InstallProblemsPanel(MainWindow& window, Session& session);

// Before a compiler run: with export faults or set-up problems, says so and asks whether to go on.
bool ConfirmCompile(Session& session);

} // namespace fw::qt
