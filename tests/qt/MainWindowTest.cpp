#include <gtest/gtest.h>

#include <memory>

#include <QAction>
#include <QFile>
#include <QTemporaryDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>

#include "core/Config.h"
#include "core/Numbers.h"
#include "core/Session.h"
#include "editor/Commands.h"
#include "posix/PosixProcess.h"
#include "support/ScriptedUi.h"
#include "qt/CanvasWidget.h"
#include "qt/MainWindow.h"
#include "qt/QtUi.h"
#include "qt/Startup.h"
#include "qt/Wiring.h"

namespace fw::qt {
namespace {

struct Fixture : ::testing::Test {
    Fixture()
    {
        ResetAtStart(session);
        ResetConfig(session.config, "/tmp/fw/");
    }
    Session session;
    QtUi ui;
};

using MainWindowFrame = Fixture;

TEST_F(MainWindowFrame, MenusInOrderAndItemsWithTheirCaptionAndShortcut)
{
    MainWindow w(session, ui);
    QStringList titles;
    QStringList names;
    for (QAction* a : w.menuBar()->actions()) {
        titles << a->text();
        names << a->objectName();
    }
    EXPECT_EQ(titles, QStringList({"&File", "&Edit", "&Selection", "&View", "&?"}));
    EXPECT_EQ(names, QStringList({"MnuFile", "MnuEdit", "MnuSelection", "MnuBackground", "MnuHelp"}));
    ASSERT_NE(w.menu("MnuBshow"), nullptr);
    EXPECT_TRUE(w.menu("MnuBackground")->actions().contains(w.menu("MnuBshow")->menuAction()));
    // Every shortcut, and the captions easily mixed up.
    static const char* const items[][3] = {
        {"MnuFnew", "&New...", "Ctrl+N"}, {"MnuFopen", "&Open...", "Ctrl+O"}, {"MnuFexit", "E&xit", "Ctrl+Q"},
        {"MnuEundo", "&Undo", "Ctrl+Z"}, {"MnuEcopy", "&Copy", "Ctrl+C"}, {"MnuEpaste", "&Paste", "Ctrl+V"},
        {"MnuEdelete", "&Delete", "Del"}, {"MnuEflipx", "Flip &vertical", ""},
        {"MnuEflipy", "Flip &horizontal", ""}, {"MnuErescale", "Rescale", ""}, {"MnuEdscale", "Rescale...", ""},
        {"MnuSselectshape", "&Selected", "Ctrl+S"}, {"MnuSeditpoints", "&Edit points", "Ctrl+E"},
        {"MnuSdragshape", "&Drag", "Ctrl+D"}, {"MnuSshapeproperties", "&Properties...", "Ctrl+P"},
        {"MnuBshowbackground", "Show image", "Ctrl+B"}, {"MnuBshowgrid", "Show gr&id", "Ctrl+G"},
        {"MnuC2625", "6.25%", ""}, {"MnuC3", "Send &back", ""}, {"MnuC3bringtofront", "Bring to &front", ""},
    };
    for (const auto& item : items) {
        SCOPED_TRACE(item[0]);
        QAction* a = w.action(item[0]);
        ASSERT_NE(a, nullptr);
        EXPECT_EQ(a->text(), item[1]);
        EXPECT_EQ(a->shortcut().toString(QKeySequence::PortableText), item[2]);
    }
    // The two free edit commands sit under "Free edit" in the Edit menu.
    QMenu* freeEdit = nullptr;
    for (QAction* a : w.menu("MnuEdit")->actions())
        if (a->menu() && a->text() == "Free edit")
            freeEdit = a->menu();
    ASSERT_NE(freeEdit, nullptr);
    EXPECT_EQ(freeEdit->actions(), QList<QAction*>({w.action("MnuErescale"), w.action("MnuErotate")}));
}

TEST_F(MainWindowFrame, ToolStripHasNineteenButtonsInFiveGroups)
{
    MainWindow w(session, ui);
    const QList<QAction*> entries = w.toolBar()->actions();
    ASSERT_EQ(entries.size(), 23);
    QStringList keys;
    int buttons = 0;
    for (int i = 0; i < 23; ++i) {
        QAction* a = entries[i];
        const bool separatorSlot = i + 1 == 9 || i + 1 == 13 || i + 1 == 17 || i + 1 == 20;
        EXPECT_EQ(a->isSeparator(), separatorSlot) << "index " << i + 1;
        if (a->isSeparator()) {
            EXPECT_EQ(w.toolButton(i + 1), nullptr);
            continue;
        }
        ++buttons;
        keys << a->objectName();
        EXPECT_EQ(w.toolButton(i + 1), a);
        EXPECT_FALSE(a->icon().isNull());
    }
    EXPECT_EQ(buttons, 19);
    EXPECT_EQ(keys, QStringList({"poly", "texpoly", "wideline", "dotline", "treeline", "forest", "api", "sign",
                                 "runway", "vor", "ndb", "location", "flatten", "exclude", "zoomIn",
                                 "zoomOut", "mEdit", "mLayer", "mPreview"}));
    EXPECT_EQ(w.toolButton(2)->toolTip(), "Draw texture mapped polygon - TexPoly()");
    EXPECT_EQ(w.toolButton(15)->toolTip(), "Draw flatten polygon (only one available)");
    EXPECT_EQ(w.toolButton(22)->toolTip(), "Arrange mode (order of appearance of polygons)");
    EXPECT_EQ(w.toolButton(23)->toolTip(), "Preview mode");
    EXPECT_TRUE(w.toolButton(21)->isChecked());
}

TEST_F(MainWindowFrame, LoadSetsSizeTitlePopupsPanelsAndReadiness)
{
    session.config.WinWidth = 700;
    session.config.WinHeight = 500;
    MainWindow w(session, ui);
    EXPECT_EQ(session.windowReady, 0);
    w.Load();
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(w.size(), QSize(700, 500));
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [Unsaved document]");
    EXPECT_FALSE(w.menu("MnuClick2")->menuAction()->isVisible());
    EXPECT_FALSE(w.menu("MnuClick3")->menuAction()->isVisible());
    EXPECT_EQ(session.windowReady, 1);
    EXPECT_TRUE(w.timer1().isActive());
    EXPECT_EQ(w.panel(1)->text(), "Ready");
    EXPECT_EQ(w.panel(2)->text(), "");
    EXPECT_EQ(w.panel(6)->text(), "25 %");

    session.projectPath = "/data/My field.fwt";
    session.hasName = 1;
    w.UpdateTitle();
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [My field.fwt]");
}

TEST(StartGeometry, TheSavedSizeIsHeldInsideTheScreenWithItsFrameAndCentred)
{
    const QRect screen(0, 0, 1280, 1024);
    const struct {
        int width, height;
        QRect screen;
        QSize size;
        QPoint framePos; // (-1, -1): not checked
    } cases[] = {
        {700, 500, screen, {700, 500}, {(1280 - 716) / 2, (1024 - 548) / 2}},
        // Larger than the screen: as large as the screen holds, frame and all, at its top left.
        {3000, 2500, screen, {1264, 976}, {0, 0}},
        // Damaged: nothing positive gives the default, a sliver gives the minimum.
        {-2000000000, 0, screen, {640, 480}, {-1, -1}},
        {5, 2147483647, screen, {300, 976}, {-1, -1}},
        // A screen that doesn't start at 0 (a panel on the left and on top).
        {5000, 300, QRect(64, 30, 1216, 994), {1200, 300}, {64, 30 + (994 - 348) / 2}},
        // A screen smaller than the window's minimum: the screen wins.
        {640, 480, QRect(0, 0, 200, 150), {184, 102}, {-1, -1}},
    };
    for (const auto& c : cases) {
        const StartGeometry g = HeldStartGeometry(c.width, c.height, c.screen, QMargins(8, 40, 8, 8), QSize(300, 200));
        EXPECT_EQ(g.size, c.size) << c.width << " x " << c.height;
        if (c.framePos != QPoint(-1, -1)) {
            EXPECT_EQ(g.framePos, c.framePos) << c.width << " x " << c.height;
        }
    }
}

TEST_F(MainWindowFrame, DamagedSizeAndStateKeepTheWholeWindowOnTheScreen)
{
    struct Saved {
        int width, height, status;
    };
    for (const Saved saved : {Saved{5000, 4000, 0}, Saved{-2000000000, 99999, 0}, Saved{0, -5, 7},
                              Saved{2147483647, 2147483647, -1}}) {
        session.config.WinWidth = saved.width;
        session.config.WinHeight = saved.height;
        session.config.WinStatus = saved.status;
        MainWindow w(session, ui);
        w.Load();
        const QRect room = w.screen()->availableGeometry();
        EXPECT_TRUE(w.isVisible());
        EXPECT_FALSE(w.isMinimized()) << saved.status;
        EXPECT_FALSE(w.isMaximized()) << saved.status;
        EXPECT_TRUE(room.contains(w.frameGeometry())) << saved.width << " x " << saved.height;
        const QWidget* bar = w.findChild<QWidget*>("StatusBar1");
        ASSERT_NE(bar, nullptr);
        EXPECT_TRUE(room.contains(QRect(bar->mapToGlobal(QPoint(0, 0)), bar->size())));
        EXPECT_TRUE(room.contains(QRect(w.menuBar()->mapToGlobal(QPoint(0, 0)), w.menuBar()->size())));
        w.hide();
    }
}

struct Exit : Fixture {
    Exit()
    {
        session.ui = &scripted;
        configPath = dir.filePath("Fieldwright.cfg").toStdString();
    }
    // A window with the file commands wired; loading it is the test's.
    MainWindow& Window()
    {
        window = std::make_unique<MainWindow>(session, ui);
        WireFileCommands(*window, session, configPath, [this] { ++ended; });
        return *window;
    }
    std::string ConfigText() const
    {
        QFile f(QString::fromStdString(configPath));
        if (!f.open(QIODevice::ReadOnly))
            return {};
        return f.readAll().toStdString();
    }
    ScriptedUi scripted;
    QTemporaryDir dir;
    std::string configPath;
    int ended = 0;
    std::unique_ptr<MainWindow> window;
};

TEST_F(Exit, CancelAtTheSavePromptKeepsTheWindowAndNoClosesWritingTheWindowSize)
{
    MainWindow& w = Window();
    w.Load();
    session.dirty = 1;
    scripted.answers = {Answer::Cancel};
    w.action("MnuFexit")->trigger();
    ASSERT_EQ(scripted.calls.size(), 1u);
    EXPECT_EQ(scripted.calls[0].kind, "yesnocancel");
    EXPECT_EQ(scripted.calls[0].text, "Save New project.fwt?");
    EXPECT_TRUE(w.isVisible());
    EXPECT_TRUE(w.timer1().isActive());
    EXPECT_EQ(ended, 0);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(configPath)));
    EXPECT_EQ(session.dirty, 1);

    w.resize(750, 560);
    session.hasName = 1;
    session.projectPath = dir.filePath("field.fwt").toStdString();
    scripted.answers = {Answer::No};
    EXPECT_TRUE(w.close());
    ASSERT_EQ(scripted.calls.size(), 2u);
    EXPECT_EQ(scripted.calls[1].text, "Save changes to field.fwt?");
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(session.config.WinWidth, 750);
    EXPECT_EQ(session.config.WinHeight, 560);
    EXPECT_EQ(session.config.WinStatus, 0);
    const std::string text = ConfigText();
    EXPECT_NE(text.find("WinWidth"), std::string::npos);
    EXPECT_NE(text.find("750"), std::string::npos);
    EXPECT_FALSE(QFile::exists(dir.filePath("field.fwt")));
}

TEST_F(Exit, UnchangedProjectClosesWithoutAQuestionAndAMaximisedWindowStores640By480)
{
    session.config.WinStatus = 2;
    MainWindow& w = Window();
    w.Load();
    EXPECT_TRUE(w.isMaximized());
    EXPECT_TRUE(w.close());
    EXPECT_TRUE(scripted.calls.empty());
    EXPECT_EQ(session.config.WinStatus, 2);
    EXPECT_EQ(session.config.WinWidth, 640);
    EXPECT_EQ(session.config.WinHeight, 480);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(configPath)));
}

TEST_F(Exit, OpenGLStartNeedsAllThreeStepsElseItTellsSwitchesItOffAndEnds)
{
    session.config.EnableOpenGL = 1;
    session.openGLActive = 1;
    Window().setOpenGLCreator([] { return 3; });
    EXPECT_TRUE(window->Load());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(scripted.calls.empty());
    EXPECT_EQ(ended, 0);

    Window().setOpenGLCreator([] { return 2; });
    EXPECT_FALSE(window->Load());
    ASSERT_EQ(scripted.Messages().size(), 1u);
    EXPECT_EQ(scripted.Messages()[0],
              "Fieldwright was unable to generate an OpenGL rendering context.\n\n"
              "The application will shut down and be reset to normal rendering mode. Please\n"
              "check your video card's OpenGL drivers if you want OpenGL rendering...");
    EXPECT_EQ(session.config.EnableOpenGL, 0);
    EXPECT_NE(ConfigText().find("EnableOpenGL"), std::string::npos);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(ended, 1);
}

TEST(Splash, MainWindowAtTheSecondTickAndClosedAtTheFourth)
{
    int shown = 0;
    SplashWindow splash([&] { ++shown; });
    splash.show();
    EXPECT_EQ(splash.timer().interval(), 500);
    EXPECT_TRUE(splash.timer().isActive());
    const std::pair<int, bool> afterTick[] = {{0, true}, {1, true}, {1, true}, {1, false}};
    for (auto [count, visible] : afterTick) {
        splash.tick();
        EXPECT_EQ(shown, count);
        EXPECT_EQ(splash.isVisible(), visible);
    }
    EXPECT_FALSE(splash.timer().isActive());
}

using Timer1 = Fixture;

TEST_F(Timer1, TickWritesTheEnablingAndTheZoomMarksOfTheMenus)
{
    MainWindow w(session, ui);
    w.Load();
    w.Tick();
    // Nothing selected, nothing drawn; the editor's menu-state tests hold the rest of the table.
    EXPECT_FALSE(w.action("MnuEcopy")->isEnabled());
    EXPECT_FALSE(w.action("MnuEundo")->isEnabled());
    EXPECT_FALSE(w.action("MnuFexport")->isEnabled());
    EXPECT_TRUE(w.action("MnuFimportshape")->isEnabled());
    EXPECT_TRUE(w.action("MnuC225")->isChecked());

    session.canUndo = 1;
    AppendShape(session.stores, ShapeRecord{}, PointList{});
    session.view.setZoom(1.0);
    w.Tick();
    EXPECT_TRUE(w.action("MnuEundo")->isEnabled());
    EXPECT_TRUE(w.action("MnuFexport")->isEnabled());
    EXPECT_TRUE(w.action("MnuC2100")->isChecked());
    EXPECT_FALSE(w.action("MnuC225")->isChecked());
}

TEST_F(Timer1, CommandFaultsStopWithAMessageAndTheWindowGoesOn)
{
    ScriptedUi scripted;
    session.ui = &scripted;
    MainWindow w(session, ui);
    w.connectCommand("MnuEflipx", [] { throw OperationFault("Coordinates out of range"); });
    w.action("MnuEflipx")->setEnabled(true);
    w.action("MnuEflipx")->trigger();
    ASSERT_EQ(scripted.Messages().size(), 1u);
    EXPECT_EQ(scripted.Messages()[0], "Coordinates out of range");
    EXPECT_EQ(scripted.calls[0].style, MessageStyle::Critical);
}

TEST_F(Timer1, ShortcutsOfADisabledMenuRunNothing)
{
    MainWindow w(session, ui);
    int runs = 0;
    w.connectCommand("MnuFsave", [&] { ++runs; });
    w.connectCommand("MnuErescale", [&] { ++runs; });
    w.connectCommand("MnuSselectshape", [&] { ++runs; });
    w.Tick();
    w.action("MnuFsave")->trigger();
    EXPECT_EQ(runs, 1);
    // Arrange mode: everything but the Selection menu is shut, the items keep their own flags.
    Menu_DisableLayer(session);
    w.Tick();
    EXPECT_TRUE(w.action("MnuFsave")->isEnabled());
    w.action("MnuFsave")->trigger();
    w.action("MnuErescale")->setEnabled(true);
    w.action("MnuErescale")->trigger();
    EXPECT_EQ(runs, 1);
    w.action("MnuSselectshape")->setEnabled(true);
    w.action("MnuSselectshape")->trigger();
    EXPECT_EQ(runs, 2);
    Menu_Enable(session);
    w.Tick();
    w.action("MnuFsave")->trigger();
    EXPECT_EQ(runs, 3);
}

TEST_F(Timer1, ExportCommandsAskForTheirFiles)
{
    ScriptedUi scripted;
    session.ui = &scripted;
    PosixProcess process;
    MainWindow w(session, ui);
    WireExportCommands(w, session, process);
    AppendShape(session.stores, ShapeRecord{}, PointList{});
    w.Tick();
    w.action("MnuFexport")->trigger();
    ASSERT_EQ(scripted.fileRequests.size(), 1u);
    EXPECT_TRUE(scripted.fileRequests[0].save);
    EXPECT_EQ(scripted.fileRequests[0].filter, "Text format (*.txt)|*.txt");
}

struct FileCommands : Fixture {
    FileCommands() { session.ui = &scripted; }
    ScriptedUi scripted;
    QTemporaryDir dir;
};

TEST_F(FileCommands, OpenSaveAsNewAndRecentFollowTheTitleAndTheRecentMenu)
{
    MainWindow w(session, ui);
    WireFileCommands(w, session, dir.filePath("Fieldwright.cfg").toStdString(), [] {});
    w.Load();
    // A missing file: the message, and the project as it was.
    scripted.files = {dir.filePath("gone.fwt").toStdString()};
    w.action("MnuFopen")->trigger();
    ASSERT_EQ(scripted.fileRequests.size(), 1u);
    EXPECT_EQ(scripted.fileRequests[0].filter, "Fieldwright (*.fwt)|*.fwt");
    ASSERT_EQ(scripted.Messages().size(), 1u);
    const std::string message = scripted.Messages()[0];
    EXPECT_EQ(message.front(), '\'');
    EXPECT_NE(message.find("gone.fwt' does not exist!"), std::string::npos);
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [Unsaved document]");

    const std::string path = dir.filePath("first.fwt").toStdString();
    scripted.files = {path};
    w.action("MnuFsaveas")->trigger();
    ASSERT_TRUE(QFile::exists(QString::fromStdString(path)));
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [first.fwt]");
    emit w.menu("MnuFile")->aboutToShow();
    EXPECT_EQ(w.action("MnuFrecent1")->text(), "&1 - first.fwt");
    EXPECT_TRUE(w.action("MnuFrecent1")->isEnabled());
    EXPECT_EQ(w.action("MnuFrecent2")->text(), "&2 - Unavailable");
    EXPECT_FALSE(w.action("MnuFrecent2")->isEnabled());

    w.action("MnuFnew")->trigger();
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [Unsaved document]");
    EXPECT_EQ(session.hasName, 0);

    w.action("MnuFrecent1")->trigger();
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [first.fwt]");
    EXPECT_EQ(session.hasName, 1);
    EXPECT_TRUE(w.toolButton(21)->isChecked());
}

TEST_F(FileCommands, ProjectSettingsOkMarksTheProjectChangedWithoutAnUndoStep)
{
    MainWindow w(session, ui);
    WireSettingsCommands(w, session);
    w.action("MnuFsettings")->trigger();
    EXPECT_EQ(session.dirty, 1);
    EXPECT_EQ(session.canUndo, 0);
}

} // namespace
} // namespace fw::qt
