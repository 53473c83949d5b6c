#include "qt/ProblemsPanel.h"

#include <QSettings>

#include <memory>
#include <utility>

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QStatusBar>

#include "editor/EditorCommon.h"
#include "editor/GoToItem.h"
#include "export/Compile.h"
#include "ports/Ui.h"
#include "qt/CanvasWidget.h"
#include "qt/MainWindow.h"
#include "qt/QtText.h"

namespace fw::qt {

namespace {

// A typing or dragging user makes many events; the check waits for a pause.
constexpr int kRefreshDelayMs = 150;

std::vector<Problem> CheckNow(const Session& s)
{
    return CheckDesign(s, ProbeCompilerSetup(s.programFolder, CompilerFromEnvironment()));
}

// The list asks for about four wrapped lines, so that the plan keeps most of a small window.
class ProblemList : public QListWidget {
public:
    using QListWidget::QListWidget;
    QSize sizeHint() const override
    {
        return {QListWidget::sizeHint().width(), fontMetrics().lineSpacing() * 4 + 2 * frameWidth()};
    }
};

QString CountText(std::size_t n)
{
    if (n == 0)
        return "No problems";
    return n == 1 ? QString("1 problem") : QString("%1 problems").arg(n);
}

} // namespace

ProblemsPanel::ProblemsPanel(MainWindow& window, Session& session)
    : QDockWidget("Problems", &window), window_(window), session_(session)
{
    setObjectName("DockProblems");
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    list_ = new ProblemList(this);
    list_->setObjectName("ListProblems");
    list_->setWordWrap(true);
    setWidget(list_);
    count_ = new QLabel(this);
    count_->setObjectName("PanelProblems");
    count_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    count_->setContentsMargins(4, 0, 4, 0);
    pending_.setSingleShot(true);
    pending_.setInterval(kRefreshDelayMs);
    connect(&pending_, &QTimer::timeout, this, &ProblemsPanel::startCheck);
    connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { goTo(list_->row(item)); });
    connect(list_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { goTo(list_->row(item)); });
}

ProblemsPanel::~ProblemsPanel()
{
    // The result it posts goes with this object.
    if (worker_.joinable())
        worker_.join();
}

void ProblemsPanel::scheduleRefresh() { pending_.start(); }

void ProblemsPanel::startCheck()
{
    if (running_) {
        again_ = true;
        return;
    }
    running_ = true;
    worker_ = std::thread([this, design = CheckSnapshot(session_)] {
        std::vector<Problem> found = CheckNow(*design);
        QMetaObject::invokeMethod(
            this,
            [this, found = std::move(found)]() mutable {
                worker_.join();
                running_ = false;
                showProblems(std::move(found));
                if (std::exchange(again_, false))
                    scheduleRefresh();
            },
            Qt::QueuedConnection);
    });
}

void ProblemsPanel::refresh()
{
    pending_.stop();
    showProblems(CheckNow(session_));
}

void ProblemsPanel::showProblems(std::vector<Problem> problems)
{
    problems_ = std::move(problems);
    list_->clear();
    for (const Problem& p : problems_) {
        auto* item = new QListWidgetItem(ToQt(p.message), list_);
        item->setToolTip(QString("%1 (%2)").arg(QString::fromStdString(p.rule), ProblemKindName(p.kind)));
    }
    count_->setText(CountText(problems_.size()));
}

void ProblemsPanel::goTo(int row)
{
    if (row < 0 || static_cast<std::size_t>(row) >= problems_.size())
        return;
    const Problem& p = problems_[static_cast<std::size_t>(row)];
    if (p.kind != ProblemKind::Shape && p.kind != ProblemKind::Object)
        return;
    window_.RunGuarded([&] { GoToItem(session_, p.kind == ProblemKind::Shape, p.index); });
    window_.Tick();
}

ProblemsPanel* InstallProblemsPanel(MainWindow& window, Session& session)
{
    auto* panel = new ProblemsPanel(window, session);
    window.addDockWidget(Qt::BottomDockWidgetArea, panel);
    // Ours, not the system's: kept in the desktop's own settings, so the configuration file stays
    // as the system writes it.
    QSettings settings;
    panel->setVisible(settings.value(kProblemsShownKey, true).toBool());
    window.statusBar()->addPermanentWidget(panel->count());

    QAction* toggle = panel->toggleViewAction();
    toggle->setObjectName("MnuBproblems");
    toggle->setText("&Problems");
    if (QMenu* view = window.menu("MnuBackground")) {
        view->addSeparator();
        view->addAction(toggle);
    }
    QObject::connect(toggle, &QAction::toggled, panel, [](bool on) { QSettings().setValue(kProblemsShownKey, on); });

    // Every change comes through a command or a canvas event (dialogs open from both).
    for (QAction* a : window.findChildren<QAction*>())
        if (a != toggle)
            QObject::connect(a, &QAction::triggered, panel, &ProblemsPanel::scheduleRefresh);
    QObject::connect(window.canvas(), &CanvasWidget::eventHandled, panel, &ProblemsPanel::scheduleRefresh);
    panel->refresh();
    return panel;
}

bool ConfirmCompile(Session& session)
{
    const std::string warning = CompileWarning(CheckNow(session));
    return warning.empty() || UiOf(session).AskYesNo(warning, "Problems") == Answer::Yes;
}

} // namespace fw::qt
