// The main window's frame: menus, tool strip, start geometry, closing, the tick and the file wiring.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>

#include "QtTestSupport.h"
#include "core/Numbers.h"
#include "editor/Commands.h"
#include "editor/Undo.h"
#include "osm/OsmImport.h"
#include "posix/PosixProcess.h"
#include "qt/MainWindow.h"
#include "qt/OsmImportMenu.h"
#include "qt/Startup.h"
#include "qt/Wiring.h"
#include "render/RenderTestSupport.h"

namespace fw::qt {
namespace {

using MainWindowFrame = QtSessionTest;

TEST_F(MainWindowFrame, MenusInOrderAndItemsWithTheirCaptionAndShortcut)
{
    MainWindow w(session, ui);
    QStringList titles, names;
    for (QAction* a : w.menuBar()->actions()) {
        titles << a->text();
        names << a->objectName();
    }
    EXPECT_EQ(titles, QStringList({"&File", "&Edit", "&Selection", "&View", "&?"}));
    EXPECT_EQ(names, QStringList({"MnuFile", "MnuEdit", "MnuSelection", "MnuBackground", "MnuHelp"}));
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
        QAction* a = w.action(item[0]);
        ASSERT_NE(a, nullptr) << item[0];
        EXPECT_EQ(a->text(), item[1]);
        EXPECT_EQ(a->shortcut().toString(QKeySequence::PortableText), item[2]) << item[0];
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
    for (int i = 1; i <= 23; ++i) {
        QAction* a = entries[i - 1];
        EXPECT_EQ(a->isSeparator(), i == 9 || i == 13 || i == 17 || i == 20) << "index " << i;
        EXPECT_EQ(w.toolButton(i), a->isSeparator() ? nullptr : a) << "index " << i;
        if (!a->isSeparator()) {
            keys << a->objectName();
            EXPECT_FALSE(a->icon().isNull());
        }
    }
    EXPECT_EQ(keys, QStringList({"poly", "texpoly", "wideline", "dotline", "treeline", "forest", "api", "sign",
                                 "runway", "vor", "ndb", "location", "flatten", "exclude", "zoomIn",
                                 "zoomOut", "mEdit", "mLayer", "mPreview"}));
    EXPECT_EQ(w.toolButton(2)->toolTip(), "Draw texture mapped polygon - TexPoly()");
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
    EXPECT_EQ(w.panel(6)->text(), "25 %");
}

TEST(StartGeometry, TheSavedSizeIsHeldInsideTheScreenWithItsFrameAndCentred)
{
    const QRect screen(0, 0, 1280, 1024);
    const QPoint unchecked(-1, -1);
    const struct {
        int width, height;
        QRect screen;
        QSize size;
        QPoint framePos;
    } cases[] = {
        {700, 500, screen, {700, 500}, {(1280 - 716) / 2, (1024 - 548) / 2}},
        // Larger than the screen: as large as the screen holds, frame and all, at its top left.
        {3000, 2500, screen, {1264, 976}, {0, 0}},
        // Damaged: nothing positive gives the default, a sliver gives the minimum.
        {-2000000000, 0, screen, {640, 480}, unchecked},
        {5, 2147483647, screen, {300, 976}, unchecked},
        // A screen that doesn't start at 0 (a panel on the left and on top).
        {5000, 300, QRect(64, 30, 1216, 994), {1200, 300}, {64, 30 + (994 - 348) / 2}},
        // A screen smaller than the window's minimum: the screen wins.
        {640, 480, QRect(0, 0, 200, 150), {184, 102}, unchecked},
    };
    for (const auto& c : cases) {
        const StartGeometry g = HeldStartGeometry(c.width, c.height, c.screen, QMargins(8, 40, 8, 8), QSize(300, 200));
        EXPECT_EQ(g.size, c.size) << c.width << " x " << c.height;
        if (c.framePos != unchecked)
            EXPECT_EQ(g.framePos, c.framePos) << c.width << " x " << c.height;
    }
}

TEST_F(MainWindowFrame, DamagedSizeAndStateKeepTheWholeWindowOnTheScreen)
{
    const int saved[][3] = {{5000, 4000, 0}, {-2000000000, 99999, 0}, {0, -5, 7}, {2147483647, 2147483647, -1}};
    for (const auto& [width, height, status] : saved) {
        session.config.WinWidth = width;
        session.config.WinHeight = height;
        session.config.WinStatus = status;
        MainWindow w(session, ui);
        w.Load();
        const QRect room = w.screen()->availableGeometry();
        auto onScreen = [&](const QWidget* part) {
            return room.contains(QRect(part->mapToGlobal(QPoint(0, 0)), part->size()));
        };
        EXPECT_TRUE(w.isVisible());
        EXPECT_FALSE(w.isMinimized() || w.isMaximized()) << status;
        EXPECT_TRUE(room.contains(w.frameGeometry())) << width << " x " << height;
        EXPECT_TRUE(onScreen(w.findChild<QWidget*>("StatusBar1")));
        EXPECT_TRUE(onScreen(w.menuBar()));
        w.hide();
    }
}

// A window with the file commands wired; loading it is the test's.
struct Exit : QtSessionTest {
    MainWindow& Window()
    {
        window = std::make_unique<MainWindow>(session, ui);
        WireFileCommands(*window, session, configPath, [this] { ++ended; });
        return *window;
    }
    std::string ConfigText() const
    {
        QFile f(QString::fromStdString(configPath));
        return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string();
    }
    std::string configPath = Temp("Fieldwright.cfg");
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
    EXPECT_TRUE(w.isVisible());
    EXPECT_TRUE(w.timer1().isActive());
    EXPECT_EQ(ended, 0);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(configPath)));

    w.resize(750, 560);
    scripted.answers = {Answer::No};
    EXPECT_TRUE(w.close());
    EXPECT_EQ(scripted.calls.size(), 2u);
    EXPECT_FALSE(w.isVisible());
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(session.config.WinWidth, 750);
    EXPECT_EQ(session.config.WinHeight, 560);
    EXPECT_EQ(session.config.WinStatus, 0);
    EXPECT_NE(ConfigText().find("750"), std::string::npos);
}

TEST_F(Exit, AMaximisedWindowClosesAsMaximised)
{
    session.config.WinStatus = 2;
    MainWindow& w = Window();
    w.Load();
    EXPECT_TRUE(w.isMaximized());
    EXPECT_TRUE(w.close());
    EXPECT_TRUE(scripted.calls.empty()) << "nothing changed: no question";
    EXPECT_EQ(session.config.WinStatus, 2);
    EXPECT_EQ(session.config.WinWidth, 640);
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

    Window().setOpenGLCreator([] { return 2; });
    EXPECT_FALSE(window->Load());
    EXPECT_EQ(scripted.Messages(),
              std::vector<std::string>{
                  "Fieldwright was unable to generate an OpenGL rendering context.\n\n"
                  "The application will shut down and be reset to normal rendering mode. Please\n"
                  "check your video card's OpenGL drivers if you want OpenGL rendering..."});
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
    const std::pair<int, bool> afterTick[] = {{0, true}, {1, true}, {1, true}, {1, false}};
    for (auto [count, visible] : afterTick) {
        splash.tick();
        EXPECT_EQ(shown, count);
        EXPECT_EQ(splash.isVisible(), visible);
    }
    EXPECT_FALSE(splash.timer().isActive());
}

using Timer1 = QtSessionTest;

TEST_F(Timer1, CommandFaultsStopWithAMessageAndTheWindowGoesOn)
{
    MainWindow w(session, ui);
    w.connectCommand("MnuEflipx", [] { throw OperationFault("Coordinates out of range"); });
    w.action("MnuEflipx")->setEnabled(true);
    w.action("MnuEflipx")->trigger();
    EXPECT_EQ(scripted.Messages(), std::vector<std::string>{"Coordinates out of range"});
    EXPECT_EQ(scripted.calls[0].style, MessageStyle::Critical);
}

TEST_F(Timer1, ShortcutsOfADisabledMenuRunNothing)
{
    MainWindow w(session, ui);
    int runs = 0;
    for (const char* name : {"MnuFsave", "MnuErescale", "MnuSselectshape"})
        w.connectCommand(name, [&] { ++runs; });
    auto trigger = [&](const char* name) {
        w.action(name)->setEnabled(true); // the item's own flag is on: the menu decides
        w.action(name)->trigger();
    };
    w.Tick();
    trigger("MnuFsave");
    EXPECT_EQ(runs, 1);
    // Arrange mode: everything but the Selection menu is shut.
    Menu_DisableLayer(session);
    w.Tick();
    trigger("MnuFsave");
    trigger("MnuErescale");
    EXPECT_EQ(runs, 1);
    trigger("MnuSselectshape");
    EXPECT_EQ(runs, 2);
    Menu_Enable(session);
    w.Tick();
    trigger("MnuFsave");
    EXPECT_EQ(runs, 3);
}

using FileCommands = QtSessionTest;

TEST_F(FileCommands, OpenSaveAsNewAndRecentFollowTheTitleAndTheRecentMenu)
{
    MainWindow w(session, ui);
    WireFileCommands(w, session, Temp("Fieldwright.cfg"), [] {});
    w.Load();
    scripted.files = {Temp("gone.fwt")};
    w.action("MnuFopen")->trigger();
    EXPECT_EQ(scripted.fileRequests.at(0).filter, "Fieldwright (*.fwt)|*.fwt");
    EXPECT_EQ(scripted.Messages(), std::vector<std::string>{"'" + Temp("gone.fwt") + "' does not exist!"});
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [Unsaved document]");

    scripted.files = {Temp("first.fwt")};
    w.action("MnuFsaveas")->trigger();
    ASSERT_TRUE(QFile::exists(dir.filePath("first.fwt")));
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [first.fwt]");
    emit w.menu("MnuFile")->aboutToShow();
    EXPECT_EQ(w.action("MnuFrecent1")->text(), "&1 - first.fwt");
    EXPECT_TRUE(w.action("MnuFrecent1")->isEnabled());
    EXPECT_FALSE(w.action("MnuFrecent2")->isEnabled());

    w.action("MnuFnew")->trigger();
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [Unsaved document]");
    w.action("MnuFrecent1")->trigger();
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [first.fwt]");
    EXPECT_TRUE(w.toolButton(21)->isChecked());
}

TEST_F(FileCommands, ExportAsksForItsFileAndSettingsOkMarksTheProjectChangedWithoutAnUndoStep)
{
    PosixProcess process;
    MainWindow w(session, ui);
    WireExportCommands(w, session, process);
    WireSettingsCommands(w, session);
    AppendShape(session.stores, ShapeRecord{}, PointList{});
    w.Tick();
    w.action("MnuFexport")->trigger();
    ASSERT_EQ(scripted.fileRequests.size(), 1u);
    EXPECT_TRUE(scripted.fileRequests[0].save);
    EXPECT_EQ(scripted.fileRequests[0].filter, "Text format (*.txt)|*.txt");

    w.action("MnuFsettings")->trigger();
    EXPECT_EQ(session.dirty, 1);
    EXPECT_EQ(session.canUndo, 0);
}

// A background image that is a folder costs the picture, not the project.
TEST_F(FileCommands, APictureThatIsAFolderIsDroppedAndTheProjectOpensWhole)
{
    const std::string folder = Temp("charts");
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder)));
    const std::string path = Temp("field.fwt");
    ASSERT_TRUE(test::WriteProjectNamingImage(path, folder));

    MainWindow w(session, ui);
    WireFileCommands(w, session, Temp("Fieldwright.cfg"), [] {});
    w.Load();
    scripted.files = {path};
    w.action("MnuFopen")->trigger();
    EXPECT_EQ(scripted.Messages(), std::vector<std::string>{"Unable to load Bitmap!\n'" + folder + "': Is a directory"});
    EXPECT_EQ(w.windowTitle(), "Fieldwright - [field.fwt]");
    EXPECT_EQ(session.projectPath, path);
    EXPECT_EQ(session.stores.ShapeStore.size(), 1u);
    EXPECT_TRUE(session.showFlags.BackImagePath.empty());
    EXPECT_EQ(session.showFlags.ShowBackPicture, 0);
}

TEST_F(FileCommands, OpenStreetMapImportComesAfterTheFileMenusOwnItemsAndImportsInOneUndoStep)
{
    MainWindow w(session, ui);
    const QList<QAction*> before = w.menu("MnuFile")->actions();
    AddOsmImport(w, session);
    const QList<QAction*> after = w.menu("MnuFile")->actions();
    ASSERT_EQ(after.size(), before.size() + 2); // a separator and the item
    EXPECT_EQ(after.mid(0, before.size()), before);
    EXPECT_TRUE(after[before.size()]->isSeparator());
    QAction* item = after.back();
    EXPECT_EQ(item->text(), "Import OpenStreetMap data...");

    std::ofstream(Temp("apron.osm")) << "<osm version=\"0.6\">\n"
                                        "<node id=\"1\" lat=\"50.0\" lon=\"8.0\"/><node id=\"2\" lat=\"50.001\" lon=\"8.0\"/>\n"
                                        "<node id=\"3\" lat=\"50.001\" lon=\"8.001\"/>\n"
                                        "<way id=\"9\"><nd ref=\"1\"/><nd ref=\"2\"/><nd ref=\"3\"/><nd ref=\"1\"/>\n"
                                        "<tag k=\"aeroway\" v=\"apron\"/></way>\n</osm>\n";
    scripted.files = {Temp("apron.osm")};
    scripted.answers = {Answer::Yes}; // no aerodrome in the data: take its centre as the reference point
    item->trigger();
    EXPECT_EQ(scripted.fileRequests.at(0).filter, kOsmFilter);
    EXPECT_EQ(scripted.calls.at(1).text.rfind(kOsmTakeCentre, 0), 0u);
    EXPECT_EQ(session.stores.ShapeCount(), 1);
    EXPECT_EQ(session.editor.selection.SelShapeCount(), 1);
    EXPECT_NEAR(session.project.LatitudeDegree, 50.0005, 1e-9);
    ASSERT_EQ(scripted.Messages().size(), 1u);
    EXPECT_EQ(scripted.Messages()[0].rfind("Imported: 0 runways, 0 taxiways, 1 apron, 0 forests.", 0), 0u);
    Undo(session);
    EXPECT_EQ(session.stores.ShapeCount(), 0);
}

} // namespace
} // namespace fw::qt
