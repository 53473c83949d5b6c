// The canvas and the main window driven by Qt events as a user would: the stores and the pixels
// of the painted frame are what is checked.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QWheelEvent>

#include "QtTestSupport.h"
#include "editor/CanvasEvents.h"
#include "editor/Commands.h"
#include "qt/CanvasWidget.h"
#include "qt/GlPlanView.h"
#include "qt/MainWindow.h"
#include "qt/Startup.h"

namespace fw::qt {
namespace {

constexpr QRgb kWhitePx = 0xFFFFFF;
constexpr QRgb kBlackPx = 0x000000;
constexpr QRgb kRedPx = 0xFF0000;
constexpr QRgb kBluePx = 0x0000FF;
constexpr QRgb kGreyPx = 0x808080;

QRgb Px(const QImage& image, int x, int y) { return image.pixel(x, y) & 0xFFFFFF; }

// Black pixels of row y from x0 to x1: a dotted line has some, neither none nor all.
int DarkRun(const QImage& image, int y, int x0, int x1)
{
    int dark = 0;
    for (int x = x0; x < x1; ++x)
        dark += Px(image, x, y) == kBlackPx;
    return dark;
}

// The Qt Ui with its property dialogs answered at once and its pop-ups and pages recorded.
class AnsweringUi : public QtUi {
public:
    bool ShapeProperties(ShapeRecord&, const PointList*) override { return ++dialogs, true; }
    bool NewShapeProperties(ShapeRecord&, const PointList*) override { return ++dialogs, true; }
    bool ObjectProperties(ObjectRecord&) override { return ++dialogs, true; }
    int ShowTip(const std::string&, int flag) override { return flag; }
    void Message(const std::string& text, MessageStyle, const std::string&) override { messages.push_back(text); }
    void PopupMenu(const std::string& name) override { popups.push_back(name); }
    bool OpenExternal(const std::string& target) override
    {
        opened.push_back(target);
        return browserStarts;
    }

    bool browserStarts = true;
    int dialogs = 0;
    std::vector<std::string> messages, popups, opened;
};

// Mouse, wheel and keys as the window system delivers them; positions are in the drawable area's
// pixels (the widget's less its border); a wheel delta of 120 is one notch away from the user.
class Driver {
public:
    explicit Driver(QWidget* w) : w_(w) {}

    void Mouse(QEvent::Type type, double x, double y, Qt::MouseButton b, Qt::KeyboardModifiers m = {})
    {
        if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick)
            held_ |= b;
        else if (type == QEvent::MouseButtonRelease)
            held_ &= ~Qt::MouseButtons(b);
        QMouseEvent e(type, At(x, y), w_->mapToGlobal(At(x, y)), b, held_, m);
        QCoreApplication::sendEvent(w_, &e);
    }
    void Press(double x, double y, Qt::MouseButton b = Qt::LeftButton, Qt::KeyboardModifiers m = {})
    {
        Mouse(QEvent::MouseButtonPress, x, y, b, m);
    }
    void Release(double x, double y, Qt::MouseButton b = Qt::LeftButton, Qt::KeyboardModifiers m = {})
    {
        Mouse(QEvent::MouseButtonRelease, x, y, b, m);
    }
    void Move(double x, double y, Qt::KeyboardModifiers m = {}) { Mouse(QEvent::MouseMove, x, y, Qt::NoButton, m); }
    void Click(double x, double y, Qt::MouseButton b = Qt::LeftButton) { Press(x, y, b), Release(x, y, b); }
    // The window system's order: press, release, double click, release.
    void DoubleClick(double x, double y)
    {
        Click(x, y);
        Mouse(QEvent::MouseButtonDblClick, x, y, Qt::LeftButton);
        Release(x, y);
    }
    void Key(int key)
    {
        QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(w_, &e);
    }
    void Wheel(double x, double y, int delta)
    {
        QWheelEvent e(At(x, y), w_->mapToGlobal(At(x, y)), QPoint(), QPoint(0, delta), held_, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(w_, &e);
    }

private:
    static QPointF At(double x, double y) { return {x + CanvasWidget::kBorder, y + CanvasWidget::kBorder}; }
    QWidget* w_;
    Qt::MouseButtons held_ = Qt::NoButton;
};

// A canvas of 400 by 300 drawable pixels at 100%: world X = pixel X - 200, world Y = pixel Y - 150.
struct CanvasWidgetTest : ::testing::Test {
    CanvasWidgetTest()
    {
        ResetAtStart(session);
        ResetConfig(session.config, "/tmp/fw/");
        session.ui = &ui;
        session.showFlags.ShowGrid = 0;
        canvas = std::make_unique<CanvasWidget>(session);
        mouse = Driver(canvas.get());
        ui.setCanvas(canvas.get());
        canvas->resize(404, 304);
        canvas->show();
        session.view.reset();
        session.view.setZoom(1.0);
        session.windowReady = 1;
        canvas->PaintNow();
    }
    ~CanvasWidgetTest() override { ui.setCanvas(nullptr); }

    QImage Frame() const { return canvas->Frame(); }
    std::vector<Point> Points(int shape) const
    {
        const PointList& l = session.stores.PointStore.at(static_cast<std::size_t>(shape));
        return {l.begin(), l.end()};
    }

    Session session;
    AnsweringUi ui;
    std::unique_ptr<CanvasWidget> canvas;
    Driver mouse{nullptr};
};

TEST_F(CanvasWidgetTest, ResizeKeepsTheCentreAndPaintsOnlyOnceTheWindowIsReady)
{
    AddShape(session, {-50, -50, 50, -50, 0, 50}, kPoly);
    session.view.setOffX(30);
    session.windowReady = 0;
    canvas->resize(805, 604);
    EXPECT_EQ(session.view.sWidth(), 801) << "the widget less its border";
    EXPECT_EQ(session.view.sHeight(), 600);
    EXPECT_EQ(Frame().size(), QSize(801, 600));
    EXPECT_EQ(Px(Frame(), 400 + 30, 300 - 50), kWhitePx) << "nothing is painted before start-up ends";

    session.windowReady = 1;
    canvas->resize(807, 604);
    EXPECT_EQ(Px(Frame(), 402 + 30, 300 - 50), kBlackPx) << "the polygon's top edge, about the new centre";

    canvas->resize(3, 2);
    EXPECT_EQ(session.view.sWidth(), 0);
    EXPECT_EQ(session.view.sHeight(), 0);
}

TEST_F(CanvasWidgetTest, ClicksAndADoubleClickDrawAPolygonWithItsRubberLineOnTop)
{
    ASSERT_TRUE(ToolClick(session, "poly"));
    mouse.Move(100, 100);
    mouse.Click(210, 160);
    mouse.Click(290, 160);
    mouse.Move(250, 230);
    // The shape being drawn is an overlay in grey: both committed points and the moving end.
    EXPECT_EQ(Px(Frame(), 250, 160), kGreyPx);
    EXPECT_EQ(Px(Frame(), 270, 195), kGreyPx);
    mouse.Move(220, 230);
    EXPECT_EQ(Px(Frame(), 270, 195), kWhitePx) << "one copy of the stored frame wipes the last overlay";
    EXPECT_EQ(Px(Frame(), 255, 195), kGreyPx);

    mouse.DoubleClick(220, 230);
    EXPECT_EQ(Points(0), (std::vector<Point>{{10, 10}, {90, 10}, {20, 80}})) << "the pair's first click adds a point";
    EXPECT_EQ(ui.dialogs, 1);
    // Selected in select mode: red outline, a white handle with a red edge on the first point.
    EXPECT_EQ(Px(Frame(), 250, 160), kRedPx);
    EXPECT_EQ(Px(Frame(), 208, 158), kRedPx);
    EXPECT_EQ(Px(Frame(), 210, 160), kWhitePx);
}

TEST_F(CanvasWidgetTest, PositionsAreRoundedHalfToEvenBeforeTheyBecomeWorldPoints)
{
    for (const double x : {210.5, 211.5}) {
        ToolClick(session, "vor");
        mouse.Click(x, 160.5);
    }
    ASSERT_EQ(session.stores.ObjectCount(), 2);
    EXPECT_EQ(session.stores.ObjectStore[0].PosX, 10);
    EXPECT_EQ(session.stores.ObjectStore[0].PosY, 10);
    EXPECT_EQ(session.stores.ObjectStore[1].PosX, 12);
}

TEST_F(CanvasWidgetTest, PanningPreviewsTheViewAndMovesItOnlyAtButtonUp)
{
    AddShape(session, {0, -20, 40, -20, 40, 20}, kPoly);
    canvas->PaintNow();
    mouse.Press(100, 250);
    mouse.Move(130, 240);
    EXPECT_EQ(session.view.offX(), 0) << "the pan is a preview";
    EXPECT_EQ(Px(Frame(), 250, 120), kBlackPx);
    EXPECT_EQ(Px(Frame(), 220, 130), kWhitePx);
    mouse.Release(130, 240);
    EXPECT_EQ(session.view.offX(), 30);
    EXPECT_EQ(session.view.offY(), -10);
    EXPECT_EQ(Px(Frame(), 250, 120), kBlackPx);
}

TEST_F(CanvasWidgetTest, DraggingShowsAGhostThenMovesTheSelection)
{
    AddShape(session, {0, 0, 40, 0, 40, 40}, kPoly);
    mouse.Click(200, 150);
    ASSERT_EQ(session.editor.selection.firstShape(), 0);
    RunCommand(session, "MnuSdragshape");
    EXPECT_EQ(Px(Frame(), 220, 150), kBluePx) << "drag mode shows the selection in blue";

    mouse.Press(201, 151);
    mouse.Move(231, 171);
    EXPECT_EQ(Points(0).front(), (Point{0, 0})) << "the stores don't change while dragging";
    EXPECT_EQ(Px(Frame(), 250, 170), kGreyPx) << "the ghost follows the mouse";
    EXPECT_EQ(Px(Frame(), 220, 150), kBluePx) << "over the stored frame";
    mouse.Release(231, 171);
    EXPECT_EQ(Points(0), (std::vector<Point>{{30, 20}, {70, 20}, {70, 60}}));
    EXPECT_EQ(Px(Frame(), 250, 170), kBluePx);
    EXPECT_EQ(Px(Frame(), 220, 150), kWhitePx);

    RunCommand(session, "MnuEundo");
    EXPECT_EQ(Points(0).front(), (Point{0, 0}));
    EXPECT_EQ(Px(Frame(), 220, 150), kBluePx) << "undo repaints, with the selection it restored";
}

TEST_F(CanvasWidgetTest, ShiftDragIsADottedRubberBand)
{
    AddShape(session, {-20, -20, 0, -20, 0, 0}, kPoly);
    AddShape(session, {100, 100, 120, 100, 120, 120}, kPoly);
    canvas->PaintNow();
    mouse.Press(150, 100, Qt::LeftButton, Qt::ShiftModifier);
    mouse.Move(250, 200, Qt::ShiftModifier);
    const int dark = DarkRun(Frame(), 100, 150, 250); // three on, three off along the top edge
    EXPECT_GT(dark, 30);
    EXPECT_LT(dark, 70);
    mouse.Release(250, 200, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(session.editor.selection.SelShapes(), std::vector<std::uint16_t>{0});
}

// Which menu pops up is the editor's; the widget hands it the right button at its release.
TEST_F(CanvasWidgetTest, RightButtonUpPopsUpAMenuAndTheMiddleButtonActsAsTheLeft)
{
    mouse.Press(330, 60, Qt::RightButton);
    EXPECT_TRUE(ui.popups.empty());
    mouse.Release(330, 60, Qt::RightButton);
    EXPECT_EQ(ui.popups, std::vector<std::string>{"MnuClick2"});
    EXPECT_EQ(session.editor.memory.ContextPoint, (Point{130, -90}));

    // The middle button acts as the left, but its double click is a press: the left one would end the line.
    ToolClick(session, "treeline");
    mouse.Click(100, 100, Qt::MiddleButton);
    mouse.Press(150, 100, Qt::MiddleButton);
    mouse.Mouse(QEvent::MouseButtonDblClick, 150, 100, Qt::MiddleButton);
    EXPECT_EQ(session.editor.draw.PointIndex(), 3);
    EXPECT_EQ(session.stores.ShapeCount(), 0);
}

TEST_F(CanvasWidgetTest, KeysReachTheEditorAsTheirVirtualKeyCodes)
{
    const struct {
        int key;
        Qt::KeyboardModifiers mods;
        int code;
    } keys[] = {{Qt::Key_Insert, {}, 45}, {Qt::Key_Return, {}, 13},     {Qt::Key_Enter, Qt::KeypadModifier, 13},
                {Qt::Key_Left, {}, 37},   {Qt::Key_Down, {}, 40},       {Qt::Key_Equal, {}, 187},
                {Qt::Key_Plus, Qt::ShiftModifier, 187}, {Qt::Key_Plus, Qt::KeypadModifier, 107},
                {Qt::Key_Minus, {}, 189}, {Qt::Key_Minus, Qt::KeypadModifier, 109}};
    for (const auto& k : keys)
        EXPECT_EQ(CanvasWidget::KeyCode(k.key, k.mods), k.code) << k.key;
    EXPECT_EQ(CanvasWidget::ShiftState(Qt::ShiftModifier | Qt::AltModifier), 5);

    // Which codes zoom is the editor's; here, that the events reach it.
    mouse.Key(Qt::Key_Plus);
    EXPECT_EQ(session.view.zoom(), 2.0);
    mouse.Key(Qt::Key_Minus);
    mouse.Key(Qt::Key_Minus);
    EXPECT_EQ(session.view.zoom(), 0.5);
}

TEST_F(CanvasWidgetTest, TheWheelZoomsAboutThePointerAndAddsUpFineTurns)
{
    mouse.Wheel(300, 100, 120);
    EXPECT_EQ(session.view.zoom(), 2.0);
    EXPECT_EQ(ScreenToWorld(session.view, 300, 100).X, 100);
    EXPECT_EQ(ScreenToWorld(session.view, 300, 100).Y, -50);
    // Half notches add up to one step; a turn back starts afresh.
    mouse.Wheel(300, 100, 60);
    EXPECT_EQ(session.view.zoom(), 2.0);
    mouse.Wheel(300, 100, 60);
    EXPECT_EQ(session.view.zoom(), 3.0);
    mouse.Wheel(300, 100, 60);
    mouse.Wheel(300, 100, -60);
    EXPECT_EQ(session.view.zoom(), 3.0);
    mouse.Wheel(300, 100, -60);
    EXPECT_EQ(session.view.zoom(), 2.0);
    mouse.Wheel(300, 100, -240); // two notches toward the user in one event
    EXPECT_EQ(session.view.zoom(), 0.5);
}

// The main window around the canvas.
struct MainWindowCommands : ::testing::Test {
    MainWindowCommands()
    {
        ResetAtStart(session);
        ResetConfig(session.config, "/tmp/fw/");
        session.config.WinWidth = 800;
        session.config.WinHeight = 600;
        session.ui = &ui;
        session.homePage = HomePage();
        window = std::make_unique<MainWindow>(session, ui);
        window->Load();
        mouse = Driver(window->canvas());
    }
    void Trigger(const char* name)
    {
        QAction* a = window->action(name);
        ASSERT_NE(a, nullptr) << name;
        a->trigger();
    }
    bool Enabled(const char* menu) const { return window->menu(menu)->menuAction()->isEnabled(); }
    void SelectATriangle()
    {
        AddShape(session, {0, 0, 100, 0, 100, 100}, kPoly);
        session.editor.selection.addEntry(0, 0, 0, 100, 0, 100);
        window->Tick();
    }

    Session session;
    AnsweringUi ui;
    std::unique_ptr<MainWindow> window;
    Driver mouse{nullptr};
};

TEST_F(MainWindowCommands, AToolButtonShutsMenusAndToolsAtOnceUntilTheShapeEnds)
{
    Trigger("poly");
    EXPECT_EQ(session.editor.EditState, 1);
    EXPECT_FALSE(Enabled("MnuFile"));
    EXPECT_FALSE(Enabled("MnuHelp"));
    EXPECT_FALSE(window->action("zoomIn")->isEnabled());
    mouse.Click(100, 100);
    mouse.Click(150, 100);
    mouse.DoubleClick(150, 150);
    EXPECT_EQ(session.stores.ShapeCount(), 1);
    EXPECT_TRUE(Enabled("MnuFile"));
    EXPECT_TRUE(window->action("zoomIn")->isEnabled());
    EXPECT_TRUE(window->action("MnuEcopy")->isEnabled()) << "the new shape is selected";
}

TEST_F(MainWindowCommands, WheelAndMenuCommandsRunTheEditorAndShowTheirFlagsAtOnce)
{
    mouse.Wheel(100, 100, 120);
    EXPECT_EQ(session.view.zoom(), 0.5);
    EXPECT_EQ(window->panel(6)->text(), "50 %");
    EXPECT_TRUE(window->action("MnuC250")->isChecked());
    EXPECT_FALSE(window->action("MnuC225")->isChecked());
    Trigger("MnuC2100");
    EXPECT_EQ(session.view.zoom(), 1.0);
    EXPECT_TRUE(window->action("MnuC2100")->isChecked());
    EXPECT_FALSE(window->action("MnuC250")->isChecked());

    const std::uint8_t grid = session.showFlags.ShowGrid;
    Trigger("MnuBshowgrid");
    EXPECT_NE(session.showFlags.ShowGrid, grid);
    EXPECT_EQ(window->action("MnuBshowgrid")->isChecked(), session.showFlags.ShowGrid == 1);

    SelectATriangle();
    Trigger("MnuEcopy");
    Trigger("MnuEpaste");
    EXPECT_EQ(session.stores.ShapeCount(), 2);
    Trigger("MnuEundo");
    EXPECT_EQ(session.stores.ShapeCount(), 1);
}

TEST_F(MainWindowCommands, OpeningATopMenuEndsAFreeEdit)
{
    SelectATriangle();
    Trigger("MnuErotate");
    EXPECT_EQ(session.editor.EditState, 12);
    emit window->menu("MnuFile")->aboutToShow();
    EXPECT_EQ(session.editor.EditState, 12) << "the File menu leaves it";
    emit window->menu("MnuEdit")->aboutToShow();
    EXPECT_EQ(session.editor.EditState, 0);
}

TEST_F(MainWindowCommands, TheMouseWritesTheGeographicPositionAtOnce)
{
    session.project.LatitudeDegree = 45.0;
    session.project.LongitudeDegree = 7.0;
    mouse.Move(10, 10);
    EXPECT_TRUE(window->panel(4)->text().endsWith("N"));
    EXPECT_TRUE(window->panel(5)->text().endsWith("E"));
    const QString before = window->panel(5)->text();
    mouse.Move(700, 10);
    EXPECT_NE(window->panel(5)->text(), before);
}

TEST_F(MainWindowCommands, HelpOpensThePageOfTheProgramFolderAndTheHomePageOfTheBuild)
{
    QTemporaryDir dir;
    session.programFolder = dir.path().toStdString() + "/";
    ASSERT_TRUE(QFile(dir.filePath("Fieldwright.htm")).open(QIODevice::WriteOnly));
    ui.browserStarts = false;
    Trigger("MnuHhelp");
    EXPECT_EQ(ui.messages, std::vector<std::string>{"No browser could be started to show 'Fieldwright.htm'!"});
    Trigger("MnuHhomepage");
    EXPECT_EQ(ui.opened, (std::vector<std::string>{session.programFolder + "Fieldwright.htm", HomePage()}));
    EXPECT_EQ(HomePage().rfind("https://", 0), 0u);
}

TEST_F(MainWindowCommands, AboutIsAModalBox)
{
    QString title;
    OnModal<QMessageBox>([&](QMessageBox* box) {
        title = box->windowTitle();
        box->close();
    });
    Trigger("MnuHabout");
    EXPECT_EQ(title, "About Fieldwright");
}

// The OpenGL view in the canvas: filled shapes from the GL frame, the overlays painted over it.
struct GlCanvasTest : CanvasWidgetTest {
    GlCanvasTest()
    {
        std::string error;
        started = context.Create(error) == 3 && view.Setup(400, 300);
        session.openGLActive = 1;
        canvas->setGlView(&view);
        ui.setGlRebuild([this](bool full) { view.Rebuild(session, full); });
    }
    ~GlCanvasTest() override
    {
        ui.setGlRebuild({});
        canvas->setGlView(nullptr);
        view.Release();
    }
    HeadlessGlContext context;
    GlPlanView view{context};
    bool started = false;
};

TEST_F(GlCanvasTest, ShapesAreFilledAndDragAndRubberBandOverlaysLieOverThem)
{
    ASSERT_TRUE(started);
    AddShape(session, {0, 0, 40, 0, 40, 40, 0, 40}, kPoly);
    ShapeRecord& r = session.stores.ShapeStore[0];
    r.gIsColored = 1;
    r.cColor = RGB(255, 0, 0);
    r.cTransparency = 15;
    mouse.Click(200, 150);
    ASSERT_EQ(session.editor.selection.firstShape(), 0);
    EXPECT_EQ(Px(Frame(), 220, 170), kRedPx) << "filled";

    RunCommand(session, "MnuSdragshape");
    mouse.Press(201, 151);
    mouse.Move(261, 181);
    EXPECT_EQ(Px(Frame(), 280, 180), kGreyPx) << "the ghost over the GL frame";
    EXPECT_EQ(Px(Frame(), 220, 170), kRedPx);
    mouse.Release(261, 181);
    EXPECT_EQ(Px(Frame(), 280, 200), kRedPx) << "the list rebuilt with the moved shape";
    EXPECT_EQ(Px(Frame(), 210, 160), kWhitePx);

    RunCommand(session, "MnuSselectshape");
    mouse.Press(150, 100, Qt::LeftButton, Qt::ShiftModifier);
    mouse.Move(250, 200, Qt::ShiftModifier);
    EXPECT_GT(DarkRun(Frame(), 100, 150, 250), 30) << "the rubber band";
    mouse.Release(250, 200, Qt::LeftButton, Qt::ShiftModifier);

    HeadlessGlContext none;
    GlPlanView without(none);
    EXPECT_FALSE(without.Setup(100, 100)) << "a view without a context fails its set-up";
    EXPECT_FALSE(without.ready());
}

} // namespace
} // namespace fw::qt
