#include "qt/MainWindow.h"

#include <algorithm>

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>

#include "core/Numbers.h"
#include "editor/CanvasEvents.h"
#include "editor/Commands.h"
#include "files/ProjectFlows.h"
#include "qt/CanvasWidget.h"
#include "qt/FormBase.h"
#include "qt/GlPlanView.h"
#include "qt/QtText.h"
#include "qt/QtUi.h"
#include "qt/ToolIcons.h"

#ifndef FW_VERSION
#define FW_VERSION ""
#endif

namespace fw::qt {

const std::array<ToolEntry, 23>& ToolStrip()
{
    static const std::array<ToolEntry, 23> strip = {{
        {"poly", "Draw textured polygon - Poly()"},
        {"texpoly", "Draw texture mapped polygon - TexPoly()"},
        {"wideline", "Draw line/road"},
        {"dotline", "Draw dotted line"},
        {"treeline", "Draw tree line"},
        {"forest", "Draw voluminous forest"},
        {"api", "Insert 3-D object (API macro)"},
        {"sign", "Insert taxiway sign"},
        {"", ""},
        {"runway", "Insert runway"},
        {"vor", "Insert VOR"},
        {"ndb", "Insert NDB"},
        {"", ""},
        {"location", "Insert initial location"},
        {"flatten", "Draw flatten polygon (only one available)"},
        {"exclude", "Insert exclude area"},
        {"", ""},
        {"zoomIn", "Zoom in"},
        {"zoomOut", "Zoom out"},
        {"", ""},
        {"mEdit", "Edit mode (use to draw and set properties)"},
        {"mLayer", "Arrange mode (order of appearance of polygons)"},
        {"mPreview", "Preview mode"},
    }};
    return strip;
}

StartGeometry HeldStartGeometry(int savedWidth, int savedHeight, const QRect& available, const QMargins& frame,
                                const QSize& minimum)
{
    const auto held = [](int saved, int fallback, int least, int room) {
        const int wanted = saved > 0 ? saved : fallback;
        // The screen wins over the minimum: a cramped window is still a reachable one.
        return std::max(1, std::min(std::max(wanted, least), room));
    };
    const int roomWidth = available.width() - frame.left() - frame.right();
    const int roomHeight = available.height() - frame.top() - frame.bottom();
    const QSize size(held(savedWidth, 640, minimum.width(), roomWidth),
                     held(savedHeight, 480, minimum.height(), roomHeight));
    const int outerWidth = size.width() + frame.left() + frame.right();
    const int outerHeight = size.height() + frame.top() + frame.bottom();
    const QPoint framePos(available.left() + std::max(0, (available.width() - outerWidth) / 2),
                          available.top() + std::max(0, (available.height() - outerHeight) / 2));
    return {size, framePos};
}

MainWindow::MainWindow(Session& session, QtUi& ui, MainWindowHooks hooks)
    : session_(session), ui_(ui), hooks_(std::move(hooks))
{
    setObjectName("Form1");
    gl_ = std::make_unique<HeadlessGlContext>();
    canvas_ = new CanvasWidget(session_, this);
    setCentralWidget(canvas_);
    ui_.setParent(this);
    ui_.setCanvas(canvas_);
    ui_.setMenuLookup([this](const QString& name) { return menu(name); });

    buildMenus();
    buildToolBar();
    buildStatusBar();
    wireCommands();

    timer1_.setObjectName("Timer1");
    timer1_.setInterval(100);
    connect(&timer1_, &QTimer::timeout, this, &MainWindow::Tick);
    timer1_.start();
    Tick();
}

MainWindow::~MainWindow()
{
    ui_.setParent(nullptr);
    ui_.setCanvas(nullptr);
    ui_.setMenuLookup({});
}

QMenu* MainWindow::addMenu(QMenu* parent, const char* name, const QString& title)
{
    QMenu* m = parent ? parent->addMenu(title) : menuBar()->addMenu(title);
    m->setObjectName(name);
    m->menuAction()->setObjectName(name);
    menus_.insert(name, m);
    return m;
}

QAction* MainWindow::addItem(QMenu* menu, const char* name, const QString& caption, const QKeySequence& key,
                             bool checkable)
{
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    if (!key.isEmpty())
        a->setShortcut(key);
    a->setCheckable(checkable);
    actions_.insert(name, a);
    return a;
}

void MainWindow::buildMenus()
{
    QMenu* file = addMenu(nullptr, "MnuFile", "&File");
    addItem(file, "MnuFnew", "&New...", QKeySequence(Qt::CTRL | Qt::Key_N));
    addItem(file, "MnuFopen", "&Open...", QKeySequence(Qt::CTRL | Qt::Key_O));
    addItem(file, "MnuFsave", "&Save");
    addItem(file, "MnuFsaveas", "S&ave as...");
    file->addSeparator();
    addItem(file, "MnuFsaveselection", "Save sel&ection as...");
    addItem(file, "MnuFimportshape", "&Import saved selection...");
    file->addSeparator();
    addItem(file, "MnuFexport", "&Generate SCASM files...");
    addItem(file, "MnuFbgl", "Genera&te scenery files...");
    file->addSeparator();
    addItem(file, "MnuFoptions", "&Preferences...");
    addItem(file, "MnuFsettings", "Proj&ect settings...");
    file->addSeparator();
    for (int i = 1; i <= 4; ++i) {
        const QByteArray name = "MnuFrecent" + QByteArray::number(i);
        addItem(file, name.constData(), QString("&%1 - Unavailable").arg(i));
    }
    file->addSeparator();
    addItem(file, "MnuFexit", "E&xit", QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(file, &QMenu::aboutToShow, this, &MainWindow::UpdateRecentLabels);
    connect(action("MnuFexit"), &QAction::triggered, this, &QWidget::close);

    QMenu* edit = addMenu(nullptr, "MnuEdit", "&Edit");
    addItem(edit, "MnuEundo", "&Undo", QKeySequence(Qt::CTRL | Qt::Key_Z));
    edit->addSeparator();
    addItem(edit, "MnuEcopy", "&Copy", QKeySequence(Qt::CTRL | Qt::Key_C));
    addItem(edit, "MnuEpaste", "&Paste", QKeySequence(Qt::CTRL | Qt::Key_V));
    addItem(edit, "MnuEdelete", "&Delete", QKeySequence(Qt::Key_Delete));
    edit->addSeparator();
    addItem(edit, "MnuEflipx", "Flip &vertical");
    addItem(edit, "MnuEflipy", "Flip &horizontal");
    edit->addSeparator();
    QMenu* freeEdit = addMenu(edit, "MnuEfree", "Free edit");
    addItem(freeEdit, "MnuErescale", "Rescale");
    addItem(freeEdit, "MnuErotate", "Rotate");
    addItem(edit, "MnuEdscale", "Rescale...");
    addItem(edit, "MnuEdrot", "Rotate...");

    QMenu* selection = addMenu(nullptr, "MnuSelection", "&Selection");
    addItem(selection, "MnuSselectshape", "&Selected", QKeySequence(Qt::CTRL | Qt::Key_S), true);
    addItem(selection, "MnuSeditpoints", "&Edit points", QKeySequence(Qt::CTRL | Qt::Key_E), true);
    addItem(selection, "MnuSdragshape", "&Drag", QKeySequence(Qt::CTRL | Qt::Key_D), true);
    selection->addSeparator();
    addItem(selection, "MnuSshapeproperties", "&Properties...", QKeySequence(Qt::CTRL | Qt::Key_P));
    addItem(selection, "MnuSconvertshapeto", "&Convert shape(s) to...");
    selection->addSeparator();
    addItem(selection, "MnuSback", "Send &back");
    addItem(selection, "MnuSfront", "Bring to &front");

    QMenu* view = addMenu(nullptr, "MnuBackground", "&View");
    QMenu* show = addMenu(view, "MnuBshow", "Show");
    addItem(show, "MnuBshowpoly", "&Polygons - Poly()", {}, true);
    addItem(show, "MnuBshowtexpoly", "Polygons - TexPoly()", {}, true);
    addItem(show, "MnuBshowline", "Lines", {}, true);
    addItem(show, "MnuBshowdotline", "Dotted lines", {}, true);
    addItem(show, "MnuBshowtreeline", "Tree lines", {}, true);
    addItem(show, "MnuBshowforest", "Forests", {}, true);
    addItem(show, "MnuBshow3d", "3-D objects (macros)", {}, true);
    addItem(show, "MnuBshowsign", "Taxiway signs", {}, true);
    addItem(show, "MnuBshowrunway", "Runways", {}, true);
    addItem(show, "MnuBshownavigation", "Navigation (VOR, NDB)", {}, true);
    addItem(show, "MnuBshowexclude", "Exclude, flatten and init", {}, true);
    show->addSeparator();
    addItem(show, "MnuBshowall", "All");
    view->addSeparator();
    addItem(view, "MnuBloadremove", "&Load background image...");
    addItem(view, "MnuBremove", "Remove background image...");
    addItem(view, "MnuBedit", "Move and scale image", {}, true);
    addItem(view, "MnuBshowbackground", "Show image", QKeySequence(Qt::CTRL | Qt::Key_B), true);
    view->addSeparator();
    addItem(view, "MnuBshowgrid", "Show gr&id", QKeySequence(Qt::CTRL | Qt::Key_G), true);

    QMenu* help = addMenu(nullptr, "MnuHelp", "&?");
    addItem(help, "MnuHhelp", "&Help...");
    addItem(help, "MnuHhomepage", "Fieldwright on the net...");
    help->addSeparator();
    addItem(help, "MnuHconverter", "Unit converter...");
    help->addSeparator();
    addItem(help, "MnuHabout", "&About...");

    // The canvas menus: not in the menu bar, they only pop up.
    QMenu* click2 = new QMenu(this);
    click2->setObjectName("MnuClick2");
    click2->menuAction()->setObjectName("MnuClick2");
    menus_.insert("MnuClick2", click2);
    addItem(click2, "MnuC2centerHere", "Center here");
    click2->addSeparator();
    static const std::array<std::pair<const char*, const char*>, 8> zooms = {{
        {"MnuC2625", "6.25%"}, {"MnuC2125", "12.5%"}, {"MnuC225", "25%"}, {"MnuC250", "50%"},
        {"MnuC2100", "100%"}, {"MnuC2200", "200%"}, {"MnuC2300", "300%"}, {"MnuC2400", "400%"},
    }};
    for (const auto& [name, caption] : zooms)
        addItem(click2, name, caption, {}, true);

    QMenu* click3 = new QMenu(this);
    click3->setObjectName("MnuClick3");
    click3->menuAction()->setObjectName("MnuClick3");
    menus_.insert("MnuClick3", click3);
    addItem(click3, "MnuC3", "Send &back");
    addItem(click3, "MnuC3bringtofront", "Bring to &front");
}

void MainWindow::buildToolBar()
{
    toolBar_ = addToolBar("Toolbar1");
    toolBar_->setObjectName("Toolbar1");
    toolBar_->setMovable(false);
    toolBar_->setFloatable(false);
    toolBar_->setIconSize(QSize(18, 18));
    toolBar_->setContextMenuPolicy(Qt::PreventContextMenu);
    auto* modes = new QActionGroup(this);
    modes->setExclusive(true);
    const auto& strip = ToolStrip();
    for (std::size_t i = 0; i < strip.size(); ++i) {
        const QString key = strip[i].key;
        if (key.isEmpty()) {
            toolBar_->addSeparator();
            continue;
        }
        QAction* a = toolBar_->addAction(ToolIcon(key), strip[i].tip);
        a->setObjectName(key);
        a->setToolTip(strip[i].tip);
        a->setProperty("toolIndex", static_cast<int>(i + 1));
        if (key.startsWith('m')) {
            a->setCheckable(true);
            modes->addAction(a);
        }
        tools_[i + 1] = a;
        actions_.insert(key, a);
    }
    tools_[21]->setChecked(true);
}

void MainWindow::wireCommands()
{
    // Commands whose work is the editor's; the File menu, the settings, the converter and the
    // export are wired by their own modules.
    static const char* const editorCommands[] = {
        "MnuEundo", "MnuEcopy", "MnuEpaste", "MnuEdelete", "MnuEflipx", "MnuEflipy", "MnuErescale",
        "MnuErotate", "MnuEdscale", "MnuEdrot",
        "MnuSselectshape", "MnuSeditpoints", "MnuSdragshape", "MnuSshapeproperties", "MnuSconvertshapeto",
        "MnuSback", "MnuSfront",
        "MnuBshowpoly", "MnuBshowtexpoly", "MnuBshowline", "MnuBshowdotline", "MnuBshowtreeline",
        "MnuBshowforest", "MnuBshow3d", "MnuBshowsign", "MnuBshowrunway", "MnuBshownavigation",
        "MnuBshowexclude", "MnuBshowall", "MnuBedit", "MnuBshowbackground", "MnuBshowgrid",
        "MnuHhelp", "MnuHhomepage",
        "MnuC2centerHere", "MnuC2625", "MnuC2125", "MnuC225", "MnuC250", "MnuC2100", "MnuC2200", "MnuC2300",
        "MnuC2400", "MnuC3", "MnuC3bringtofront",
    };
    for (const char* name : editorCommands) {
        const std::string command = name;
        connectCommand(name, [this, command] {
            RunCommand(session_, command);
            // The flags a command changed show at once, not a tick later.
            Tick();
        });
    }
    connectCommand("MnuHabout", [this] { About(); });

    for (std::size_t i = 1; i < tools_.size(); ++i) {
        QAction* a = tools_[i];
        if (!a)
            continue;
        const std::string key = a->objectName().toStdString();
        connect(a, &QAction::triggered, this, [this, key] {
            RunGuarded([this, &key] { ToolClick(session_, key); });
            // A tool shuts the menus and the tool strip at once.
            Tick();
        });
    }

    // Opening a top menu ends a free edit or an image edit before the menu drops.
    for (const char* name : kTopMenuNames) {
        QMenu* m = menu(name);
        if (!m)
            continue;
        const std::string menuName = name;
        connect(m, &QMenu::aboutToShow, this, [this, menuName] {
            RunGuarded([this, &menuName] { OpenTopMenu(session_, menuName); });
        });
    }

    canvas_->setGuard([this](const std::function<void()>& work) { RunGuarded(work); });
    connect(canvas_, &CanvasWidget::positionChanged, this, [this] {
        panels_[4]->setText(ToQt(session_.editor.statusLatitude));
        panels_[5]->setText(ToQt(session_.editor.statusLongitude));
    });
    connect(canvas_, &CanvasWidget::eventHandled, this, &MainWindow::Tick);
}

void MainWindow::About()
{
    QMessageBox box(QMessageBox::Information, "About Fieldwright",
                    QString("<b>Fieldwright</b> %1<br><br>"
                            "Airport scenery design for Microsoft Flight Simulator 2000.<br>"
                            "Draw ground shapes and place airport objects on a plan, then generate "
                            "SCASM source and scenery files.")
                        .arg(FW_VERSION),
                    QMessageBox::Ok, this);
    box.setObjectName("FormAbout");
    box.setTextFormat(Qt::RichText);
    box.exec();
}

void MainWindow::buildStatusBar()
{
    static const std::array<int, 7> widths = {0, 120, 60, 140, 150, 150, 70};
    QStatusBar* bar = statusBar();
    bar->setObjectName("StatusBar1");
    bar->setSizeGripEnabled(true);
    for (int n = 1; n <= 6; ++n) {
        auto* label = new QLabel(this);
        label->setObjectName(QString("Panel%1").arg(n));
        label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        label->setMinimumWidth(widths[static_cast<std::size_t>(n)]);
        label->setContentsMargins(4, 0, 4, 0);
        bar->addWidget(label, n == 2 ? 1 : 0);
        panels_[static_cast<std::size_t>(n)] = label;
    }
    panels_[1]->setText("Ready");
}

QAction* MainWindow::action(const QString& name) const { return actions_.value(name, nullptr); }

QMenu* MainWindow::menu(const QString& name) const { return menus_.value(name, nullptr); }

QAction* MainWindow::toolButton(int index) const
{
    if (index < 1 || index > 23)
        return nullptr;
    return tools_[static_cast<std::size_t>(index)];
}

QLabel* MainWindow::panel(int number) const
{
    if (number < 1 || number > 6)
        return nullptr;
    return panels_[static_cast<std::size_t>(number)];
}

bool MainWindow::Load()
{
    menus_.value("MnuClick2")->menuAction()->setVisible(false);
    menus_.value("MnuClick3")->menuAction()->setVisible(false);
    // A damaged or outgrown size can't put the window, its menus or its status bar off the screen.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const StartGeometry start =
        HeldStartGeometry(session_.config.WinWidth, session_.config.WinHeight,
                          screen ? screen->availableGeometry() : QRect(0, 0, 640, 480), FrameAllowance(*this),
                          minimumSizeHint().expandedTo(minimumSize()));
    resize(start.size);
    move(start.framePos);
    UpdateTitle();
    switch (session_.config.WinStatus) {
    case 2: showMaximized(); break;
    case 1: showMinimized(); break;
    default: showNormal(); break;
    }
    session_.windowReady = 1;
    canvas_->PaintNow();

    if (session_.openGLActive == 1 && !StartOpenGL()) {
        gl_->Release();
        if (hooks_.openGLFailed)
            hooks_.openGLFailed();
        // The user starts again; the next start runs without OpenGL.
        closing_ = true;
        timer1_.stop();
        close();
        if (hooks_.endProgram)
            hooks_.endProgram();
        return false;
    }
    return true;
}

bool MainWindow::StartOpenGL()
{
    if (createOpenGL_)
        return createOpenGL_() == 3;
    std::string error;
    if (gl_->Create(error) != 3)
        return false;
    // The state, the tessellator and the framebuffer belong to the set-up: any of them failing
    // fails the start as a context would.
    glView_ = std::make_unique<GlPlanView>(*gl_);
    if (!glView_->Setup(session_.view.sWidth(), session_.view.sHeight())) {
        glView_.reset();
        return false;
    }
    canvas_->setGlView(glView_.get());
    ui_.setGlRebuild([this](bool full) { glView_->Rebuild(session_, full); });
    canvas_->PaintNow();
    return true;
}

void MainWindow::UpdateTitle() { setWindowTitle(ToQt(Title(session_))); }

void MainWindow::UpdateRecentLabels()
{
    for (int i = 0; i < 4; ++i) {
        QAction* a = action(QString("MnuFrecent%1").arg(i + 1));
        a->setText(ToQt(RecentMenuLabel(session_, i)));
        a->setEnabled(RecentMenuEnabled(session_, i));
    }
}

void MainWindow::Tick()
{
    // The tick only writes flags and texts; it never paints.
    const MenuState state = ComputeMenuState(session_);
    for (const auto& [name, item] : state.items) {
        QAction* a = action(QString::fromStdString(name));
        if (!a)
            continue;
        if (item.enabled)
            a->setEnabled(*item.enabled);
        if (item.checked) {
            a->setCheckable(true);
            a->setChecked(*item.checked);
        }
    }
    for (const auto& [name, enabled] : state.topMenus)
        if (QMenu* m = menu(QString::fromStdString(name)))
            m->menuAction()->setEnabled(enabled);
    for (const auto& [key, enabled] : state.toolButtons)
        if (QAction* a = action(QString::fromStdString(key)))
            a->setEnabled(enabled);
    panels_[3]->setText(ToQt(state.panel3));
    panels_[4]->setText(ToQt(state.panel4));
    panels_[5]->setText(ToQt(state.panel5));
    panels_[6]->setText(ToQt(state.panel6));
}

void MainWindow::connectCommand(const QString& name, std::function<void()> work)
{
    QAction* a = action(name);
    if (!a)
        return;
    connect(a, &QAction::triggered, this, [this, a, work = std::move(work)] {
        if (Reachable(a))
            RunGuarded(work);
    });
}

bool MainWindow::Reachable(const QAction* a) const
{
    // A shortcut still fires when its top menu is disabled; the command must not run then.
    for (QMenu* m : menus_) {
        if (!m->actions().contains(const_cast<QAction*>(a)))
            continue;
        // The canvas pop-ups are hidden, which Qt counts as disabled; they are reached by the
        // mouse alone.
        if (m == menus_.value("MnuClick2") || m == menus_.value("MnuClick3"))
            return true;
        if (!m->menuAction()->isEnabled())
            return false;
        return Reachable(m->menuAction());
    }
    return true;
}

void MainWindow::RunGuarded(const std::function<void()>& work)
{
    Ui& ui = session_.ui ? *session_.ui : static_cast<Ui&>(ui_);
    try {
        work();
    } catch (const std::exception& e) {
        // OperationFault and anything else: the command stops, the window goes on.
        ui.SetWaitCursor(false);
        ui.Message(e.what(), MessageStyle::Critical);
    }
}

int MainWindow::windowState() const
{
    if (isMinimized())
        return 1;
    if (isMaximized())
        return 2;
    return 0;
}

void MainWindow::SelectEditButton() { tools_[21]->setChecked(true); }

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (closing_) {
        event->accept();
        return;
    }
    if (hooks_.exit && !hooks_.exit(windowState(), width(), height())) {
        event->ignore();
        return;
    }
    // Release the renderer: the OpenGL context when there is one, else the image; the canvas's
    // resources go with the widget.
    if (gl_->active()) {
        ui_.setGlRebuild({});
        canvas_->setGlView(nullptr);
        glView_.reset();
        gl_->Release();
    }
    else
        session_.bitmap = CBitmapState{};
    timer1_.stop();
    closing_ = true;
    event->accept();
    if (hooks_.endProgram)
        hooks_.endProgram();
}

} // namespace fw::qt
