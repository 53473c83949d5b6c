// The main window `Form1`: menus, the tool strip, the canvas, the status bar and `Timer1`.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include <QHash>
#include <QMainWindow>
#include <QMargins>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QTimer>

#include "core/Session.h"
#include "gl/OpenGl.h"

class QAction;
class QActionGroup;
class QLabel;
class QMenu;
class QToolBar;

namespace fw::qt {

class CanvasWidget;
class GlPlanView;
class QtUi;

// What the window asks of the rest of the program at exit. Each may be left empty.
struct MainWindowHooks {
    // The exit flow with the window's state (0 normal, 1 minimised, 2 maximised) and size: false
    // when the user cancelled and the window stays.
    std::function<bool(int windowState, int width, int height)> exit;
    // End the program once the window has closed.
    std::function<void()> endProgram;
    // The OpenGL set-up of the load failed: tell, switch it off in the configuration.
    std::function<void()> openGLFailed;
};

// One entry of the tool strip: a button, or a separator (key empty).
struct ToolEntry {
    const char* key;
    const char* tip;
};

// The 23 entries of `Toolbar1`, index 1 first.
const std::array<ToolEntry, 23>& ToolStrip();

// Where the main window starts: its size (without the frame) and the top left of its frame.
struct StartGeometry {
    QSize size;
    QPoint framePos;
};
// The saved size held inside the available screen with the frame around it, and the window
// centred there. A width or height that isn't positive takes the default (640 by 480); one below
// the window's minimum takes the minimum; one too large for the screen takes what the screen has.
StartGeometry HeldStartGeometry(int savedWidth, int savedHeight, const QRect& available, const QMargins& frame,
                                const QSize& minimum);

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(Session& session, QtUi& ui, MainWindowHooks hooks = {});
    ~MainWindow() override;

    // The main window load: pop-ups hidden, size and state from the configuration, title, shown,
    // then the OpenGL context when it is on. False when that failed and the program must end.
    bool Load();
    // The number of OpenGL set-up steps that succeeded (3 for all); replaceable for tests.
    void setOpenGLCreator(std::function<int()> create) { createOpenGL_ = std::move(create); }

    // A menu command or tool button by its name ("MnuFopen", "MnuC2100", "poly", ...); null if none.
    QAction* action(const QString& name) const;
    // A menu by its name ("MnuFile", "MnuBshow", "MnuClick2", ...); null if none.
    QMenu* menu(const QString& name) const;
    // Tool strip entry 1..23; null for a separator.
    QAction* toolButton(int index) const;
    QToolBar* toolBar() const { return toolBar_; }
    CanvasWidget* canvas() const { return canvas_; }
    // Status bar panel 1..6.
    QLabel* panel(int number) const;
    QTimer& timer1() { return timer1_; }

    // Sets the title from the session's project.
    void UpdateTitle();
    // The recent-file labels of the File menu.
    void UpdateRecentLabels();
    // One tick of Timer1.
    void Tick();

    // Connects a menu command or tool button to work run inside a guard: a fault stops the command
    // with a message and the window goes on.
    void connectCommand(const QString& name, std::function<void()> work);
    void RunGuarded(const std::function<void()>& work);
    // False when the item sits in a disabled menu (a tool is running, or arrange mode).
    bool Reachable(const QAction* a) const;

    void setHooks(MainWindowHooks hooks) { hooks_ = std::move(hooks); }
    // The window state as the exit flow takes it: 0 normal, 1 minimised, 2 maximised.
    int windowState() const;
    // The tool strip back on its selection button.
    void SelectEditButton();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QMenu* addMenu(QMenu* parent, const char* name, const QString& title);
    QAction* addItem(QMenu* menu, const char* name, const QString& caption, const QKeySequence& key = {},
                     bool checkable = false);
    void buildMenus();
    void buildToolBar();
    void buildStatusBar();
    // The editor's commands, the tool buttons, the top menus' opening, Help and About.
    void wireCommands();
    void About();

    Session& session_;
    QtUi& ui_;
    MainWindowHooks hooks_;
    QHash<QString, QAction*> actions_;
    QHash<QString, QMenu*> menus_;
    std::array<QAction*, 24> tools_{};
    std::array<QLabel*, 7> panels_{};
    QToolBar* toolBar_ = nullptr;
    CanvasWidget* canvas_ = nullptr;
    QTimer timer1_;
    // The context and the GL view's set-up; false when the start failed.
    bool StartOpenGL();
    std::unique_ptr<HeadlessGlContext> gl_;
    std::unique_ptr<GlPlanView> glView_;
    std::function<int()> createOpenGL_;
    bool closing_ = false;
};

} // namespace fw::qt
