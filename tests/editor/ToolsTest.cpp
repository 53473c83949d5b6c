// The state machine of the canvas: drawing, placing, rubber band, drags and keys.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/CanvasEvents.h"
#include "files/ProjectFile.h"

namespace fw::test {
namespace {

TEST(Drawing, DoubleClickAddsTheLastPointAndOpensProperties)
{
    EditorFixture f(1.0);
    f.Run({"tool poly"});
    EXPECT_EQ(f.s().editor.EditState, 1);
    EXPECT_EQ(f.s().editor.topMenuEnabled[0], false);
    EXPECT_EQ(f.s().editor.toolEnabled[0], false);
    f.Run({"move " + Px(5, 5)});
    EXPECT_EQ(f.s().editor.draw.Coords.size(), 0u) << "moves draw nothing before the first point";
    f.Run({"down L " + Px(0, 0), "up L " + Px(0, 0), "move " + Px(100, 3), "down L " + Px(100, 0),
           "up L " + Px(100, 0), "answer ok", "dblclick " + Px(100, 100)});
    ASSERT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {100, 100}}));
    EXPECT_EQ(f.s().stores.ShapeStore[0].gType, kPoly);
    EXPECT_EQ(f.s().stores.ShapeStore[0].gKeep, 2);
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(f.s().editor.selection.getLimits(), (Limits{0, 100, 0, 100}));
    EXPECT_EQ(f.s().dirty, 1);
    EXPECT_EQ(f.s().canUndo, 1);
    EXPECT_TRUE(f.s().editor.toolEnabled[0]);
    EXPECT_EQ(f.ui().log.back().kind, "shapeProperties");
}

// Too few points for a polygon is a scenario script; a line needs only two.
TEST(Drawing, LineOfTwoPointsEndsOnTheDoubleClick)
{
    EditorFixture g(1.0);
    g.Run({"tool wideline", "down L " + Px(0, 0), "up L " + Px(0, 0), "dblclick " + Px(10, 0)});
    EXPECT_EQ(g.s().stores.ShapeCount(), 1);
    EXPECT_EQ(g.s().stores.ShapeStore[0].gLineWidth, 0.5);
}

// Ended on the fourth click in a scenario script; of three points it keeps the fourth pair unset.
TEST(Drawing, TexPolyOfThreePointsKeepsTheUnsetFourthPair)
{
    EditorFixture f(1.0);
    f.Run({"tool texpoly"});
    for (const auto& p : {Px(0, 0), Px(0, 50)})
        f.Run({"down L " + p, "up L " + p});
    f.Run({"answer ok", "dblclick " + Px(100, 100)});
    const auto& m = f.s().stores.ShapeStore.at(0).mTexMap;
    EXPECT_EQ(m, (std::array<std::int32_t, 8>{0, 0, 0, 127, 255, 255, -100, -100}));
}

TEST(Drawing, OnlyOneFlatten)
{
    EditorFixture f(1.0);
    f.Run({"tool flatten"});
    for (const auto& p : {Px(0, 0), Px(100, 0)})
        f.Run({"down L " + p, "up L " + p});
    f.Run({"dblclick " + Px(100, 100)});
    ASSERT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{}) << "a flatten polygon opens no dialog";
    f.Run({"tool flatten"});
    EXPECT_EQ(f.s().editor.EditState, 0);
    ASSERT_EQ(f.ui().log.size(), 1u);
    EXPECT_EQ(f.ui().log[0].text, "You already drew a flatten polygon...\n\nOnly one flatten polygon can be "
                                  "specified for every Fieldwright project.");
}

TEST(Drawing, PointLimitEndsTheShape)
{
    EditorFixture f(1.0);
    f.Run({"tool flatten"});
    for (int i = 0; i < 9; ++i)
        f.Run({"down L " + Px(i * 10, (i % 2) * 10), "up L " + Px(i * 10, 0)});
    ASSERT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.Points(0).size(), 9u);
    EXPECT_EQ(f.s().editor.EditState, 0);
}

TEST(Drawing, TheLimitOf800StopsSilently)
{
    EditorFixture f(1.0);
    for (int i = 0; i < 800; ++i)
        f.AddShape(kPoly, {{i, 0}, {i, 5}, {i + 3, 5}});
    f.Run({"tool poly"});
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_TRUE(f.s().editor.toolEnabled[0]);
    for (int i = 0; i < 800; ++i)
        f.AddObject(kNdb, i, 0);
    f.Run({"tool ndb"});
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_TRUE(f.ui().log.empty());
}

TEST(Drawing, AWorldPointBeyond16BitsAbandonsTheShape)
{
    // At 6.25 %, "Center here" on the right edge five times brings the edge past world X 32767.
    EditorFixture f(1.0);
    f.Run({"command MnuC2625"});
    for (int i = 0; i < 5; ++i)
        f.Run({"down R 799 300", "up R 799 300", "command MnuC2centerHere"});
    f.ui().log.clear();
    f.Run({"tool poly", "down L 400 300", "up L 400 300", "move 790 300", "down L 799 300"});
    // The message once, and the shape being drawn is abandoned: the tool ends, the menus and the
    // tools come back, nothing is added.
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{"message"});
    EXPECT_EQ(f.ui().log[0].text, "This point lies too far from the reference point to be drawn.");
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.draw.PointIndex(), 0);
    EXPECT_EQ(f.s().stores.ShapeCount(), 0);
    for (bool on : f.s().editor.topMenuEnabled)
        EXPECT_TRUE(on);
    for (bool on : f.s().editor.toolEnabled)
        EXPECT_TRUE(on);
    EXPECT_EQ(f.ui().pointer, Pointer::Arrow);
    EXPECT_EQ(f.s().dirty, 0);
    // The next click is an ordinary click in idle: a pan, and no message.
    f.Run({"up L 799 300", "down L 799 300"});
    EXPECT_EQ(f.s().editor.EditState, 7);
    f.Run({"up L 799 300"});
    EXPECT_EQ(f.ui().log.size(), 1u);
    // Drawing in range works as before.
    f.Run({"tool poly", "down L 400 300", "up L 400 300", "down L 420 300", "up L 420 300", "answer ok",
           "dblclick 420 320"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.s().editor.EditState, 0);
}

TEST(Loading, AProjectOfObjectsOpensInTheSelectState)
{
    // Two NDBs: after the load the first is selected in the select state, so that a click on the
    // other's handle selects it instead of panning.
    const TempFolder dir("objects_only");
    ProjectData data;
    ResetProject(data.project);
    for (int x : {0, 100}) {
        ObjectRecord o;
        ResetObject(o, kNdb, FW_PROGRAM_DIR);
        o.PosX = x;
        data.objects.push_back(o);
    }
    ASSERT_TRUE(WriteProjectFile(dir / "objects.fwt", data, nullptr));
    EditorFixture f(1.0);
    f.Run({"open " + (dir / "objects.fwt")});
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(f.s().editor.selection.state(), 1);
    f.Run({"command MnuC2100"}); // the load resets the view; Px is at 100 %
    f.Run({"down L " + Px(100, 0)});
    EXPECT_EQ(f.s().editor.EditState, 0) << "no pan";
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{1}));
    f.Run({"up L " + Px(100, 0)});
}

TEST(Placing, OkKeepsTheObjectCancelRemovesIt)
{
    EditorFixture f(1.0);
    f.AddObject(kVor, 0, 0);
    f.Run({"tool runway"});
    EXPECT_EQ(f.ui().pointer, Pointer::Custom103);
    EXPECT_EQ(f.s().showFlags.ShowRunway, 1);
    f.Run({"answer ok", "down L " + Px(40, 50), "up L " + Px(40, 50)});
    ASSERT_EQ(f.s().stores.ObjectCount(), 2);
    EXPECT_EQ(f.s().stores.ObjectStore[1].PosX, 40);
    EXPECT_EQ(f.s().stores.ObjectStore[1].Length(), 9000);
    EXPECT_EQ(f.s().editor.selection.state(), 3);
    EXPECT_EQ(f.s().canUndo, 1);

    f.Run({"tool exclude", "down L " + Px(-40, 50)}); // no answer: the dialog is closed
    EXPECT_EQ(f.s().stores.ObjectCount(), 2);
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(f.s().editor.selection.state(), 1);
    EXPECT_EQ(f.s().editor.EditState, 0);
}

TEST(RubberBand, ShiftAloneStartsItAndReleasingShiftDropsIt)
{
    EditorFixture f(1.0);
    f.AddObject(kNdb, 10, 10);
    f.Run({"down L " + Px(0, 0) + " shift+ctrl"});
    EXPECT_EQ(f.s().editor.EditState, 7) << "Shift with Ctrl is no rubber band";
    f.Run({"up L " + Px(0, 0)});
    f.Run({"down L " + Px(0, 0) + " shift", "move " + Px(20, 20) + " shift"});
    EXPECT_EQ(f.s().editor.EditState, 8);
    EXPECT_EQ(f.s().editor.selSquare.right(), 20);
    f.Run({"move " + Px(30, 30)});
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.selSquare.IsActive(), 0);
    f.Run({"up L " + Px(30, 30)});
    EXPECT_EQ(f.s().editor.selection.sizeObject(), -1);
    // Dragged the other way round: sorted, then selected.
    f.Run({"down L " + Px(20, 20) + " shift", "move " + Px(0, 0) + " shift", "up L " + Px(0, 0) + " shift"});
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
}

TEST(Dragging, SidewaysIsStoredButNotMarked)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    f.Run({"command MnuSdragshape", "down L " + Px(0, 0), "move " + Px(30, 0)});
    EXPECT_EQ(f.s().editor.EditState, 9);
    EXPECT_EQ(f.s().editor.work.WorkPoints[0][0], (Point{30, 0}));
    EXPECT_EQ(f.Points(0)[0], (Point{0, 0})) << "the stores wait for the button";
    f.Run({"up L " + Px(30, 0)});
    EXPECT_EQ(f.Points(0)[0], (Point{30, 0}));
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{30, 130, 0, 100}));
    EXPECT_EQ(f.s().editor.selection.getLimits(), (Limits{30, 130, 0, 100}));
    EXPECT_EQ(f.s().dirty, 0);
    EXPECT_EQ(f.s().canUndo, 0);
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, -1);
    // A diagonal drag is marked.
    f.Run({"down M " + Px(30, 0), "move " + Px(40, 10), "up M " + Px(40, 10)});
    EXPECT_EQ(f.Points(0)[0], (Point{40, 10}));
    EXPECT_EQ(f.s().dirty, 1);
    EXPECT_EQ(f.s().canUndo, 1);
}

TEST(Dragging, PointsInEditMode)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    f.SelectShape(0);
    f.Run({"command MnuSeditpoints", "down L " + Px(100, 100), "move " + Px(150, 160)});
    EXPECT_EQ(f.s().editor.EditState, 15);
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{2}));
    f.Run({"up L " + Px(150, 160)});
    EXPECT_EQ(f.Points(0)[2], (Point{150, 160}));
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 150, 0, 160}));
    EXPECT_EQ(f.s().canUndo, 1);
    // A click on no point pans.
    f.Run({"down L " + Px(50, 50)});
    EXPECT_EQ(f.s().editor.EditState, 7);
}

TEST(Keys, ZoomKeysOnlyInIdleButButtonsAlways)
{
    EditorFixture f(1.0);
    f.Run({"key 187"});
    EXPECT_EQ(f.s().view.zoom(), 2.0);
    f.Run({"key 189", "key 189"});
    EXPECT_EQ(f.s().view.zoom(), 0.5);
    f.Run({"tool poly", "key 187"});
    EXPECT_EQ(f.s().view.zoom(), 0.5);
    // The zoom button's first step ends any state (the harness bypasses the disabled strip).
    ToolClick(f.s(), "zoomIn");
    EXPECT_EQ(f.s().view.zoom(), 1.0);
    EXPECT_EQ(f.s().editor.EditState, 0);
}

TEST(Keys, EnterSelectsAndPreviewDoesNothingElse)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    f.s().editor.selection.setState(3);
    f.Run({"key 13"});
    EXPECT_EQ(f.s().editor.selection.state(), 1);
    f.s().view.setMMode(1);
    f.Run({"tool mPreview"});
    EXPECT_EQ(f.s().view.mMode(), 1);
}

} // namespace
} // namespace fw::test
