// The state machine of the canvas: drawing, placing, rubber band, drags, keys and the image frame.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/CanvasEvents.h"
#include "editor/Commands.h"

namespace fw::test {
namespace {

TEST(Drawing, DoubleClickAddsTheLastPointAndOpensProperties)
{
    EditorFixture f;
    f.Run({"tool poly", "move " + Px(5, 5)});
    EXPECT_EQ(f.s().editor.EditState, 1);
    EXPECT_FALSE(f.s().editor.topMenuEnabled[0]);
    EXPECT_FALSE(f.s().editor.toolEnabled[0]);
    EXPECT_EQ(f.s().editor.draw.Coords.size(), 0u) << "moves draw nothing before the first point";
    f.Run({"down L " + Px(0, 0), "up L " + Px(0, 0), "move " + Px(100, 3), "down L " + Px(100, 0),
           "up L " + Px(100, 0), "answer ok", "dblclick " + Px(100, 100)});
    ASSERT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {100, 100}}));
    EXPECT_EQ(f.s().stores.ShapeStore[0].gType, kPoly);
    EXPECT_EQ(f.s().stores.ShapeStore[0].gKeep, 2);
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.Sel().SelShapes(), Ids{0});
    EXPECT_EQ(f.Sel().getLimits(), (Limits{0, 100, 0, 100}));
    EXPECT_EQ(f.Marked(), (std::pair{1, 1}));
    EXPECT_TRUE(f.s().editor.toolEnabled[0]);
    EXPECT_EQ(f.ui().log.back().kind, "shapeProperties");

    // Too few points for a polygon is a scenario script; a line needs only two.
    f.Run({"tool wideline", "down L " + Px(0, 0), "up L " + Px(0, 0), "dblclick " + Px(10, 0)});
    EXPECT_EQ(f.s().stores.ShapeCount(), 2);
    EXPECT_EQ(f.s().stores.ShapeStore[1].gLineWidth, 0.5);
}

// Ended on the fourth click in a scenario script; of three points it keeps the fourth pair unset.
TEST(Drawing, TexPolyOfThreePointsKeepsTheUnsetFourthPair)
{
    EditorFixture f;
    f.Run({"tool texpoly", "down L " + Px(0, 0), "up L " + Px(0, 0), "down L " + Px(0, 50), "up L " + Px(0, 50),
           "answer ok", "dblclick " + Px(100, 100)});
    EXPECT_EQ(f.s().stores.ShapeStore.at(0).mTexMap, (std::array<std::int32_t, 8>{0, 0, 0, 127, 255, 255, -100, -100}));
}

TEST(Drawing, FlattenEndsAtItsPointLimitWithoutADialogAndThereIsOnlyOne)
{
    EditorFixture f;
    f.Run({"tool flatten"});
    for (int i = 0; i < 9; ++i)
        f.Run({"down L " + Px(i * 10, (i % 2) * 10), "up L " + Px(i * 10, 0)});
    ASSERT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.Points(0).size(), 9u);
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_TRUE(f.ui().log.empty()) << "a flatten polygon opens no dialog";
    f.Run({"tool flatten"});
    EXPECT_EQ(f.s().editor.EditState, 0);
    ASSERT_EQ(f.ui().log.size(), 1u);
    EXPECT_EQ(f.ui().log[0].text, kOneFlatten);
}

TEST(Drawing, TheLimitOf800StopsSilently)
{
    EditorFixture f;
    for (int i = 0; i < 800; ++i) {
        f.AddShape(kPoly, {{i, 0}, {i, 5}, {i + 3, 5}});
        f.AddObject(kNdb, i, 0);
    }
    for (const char* tool : {"tool poly", "tool ndb"}) {
        f.Run({tool});
        EXPECT_EQ(f.s().editor.EditState, 0) << tool;
        EXPECT_TRUE(f.s().editor.toolEnabled[0]);
    }
    EXPECT_TRUE(f.ui().log.empty());
}

TEST(Drawing, AWorldPointBeyond16BitsAbandonsTheShape)
{
    // At 6.25 %, "Center here" on the right edge five times brings the edge past world X 32767.
    EditorFixture f;
    f.Run({"command MnuC2625"});
    for (int i = 0; i < 5; ++i)
        f.Run({"down R 799 300", "up R 799 300", "command MnuC2centerHere"});
    f.ui().log.clear();
    f.Run({"tool poly", "down L 400 300", "up L 400 300", "move 790 300", "down L 799 300"});
    // The message once; the tool ends, the menus and the tools come back, nothing is added.
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{"message"});
    EXPECT_EQ(f.ui().log[0].text, "This point lies too far from the reference point to be drawn.");
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.draw.PointIndex(), 0);
    EXPECT_EQ(f.s().stores.ShapeCount(), 0);
    EXPECT_EQ(f.s().editor.topMenuEnabled, (std::array<bool, 5>{true, true, true, true, true}));
    for (bool on : f.s().editor.toolEnabled)
        EXPECT_TRUE(on);
    EXPECT_EQ(f.ui().pointer, Pointer::Arrow);
    EXPECT_EQ(f.s().dirty, 0);
    // The next click is an ordinary click in idle: a pan, and no message.
    f.Run({"up L 799 300", "down L 799 300"});
    EXPECT_EQ(f.s().editor.EditState, 7);
    f.Run({"up L 799 300", "tool poly", "down L 400 300", "up L 400 300", "down L 420 300", "up L 420 300",
           "answer ok", "dblclick 420 320"});
    EXPECT_EQ(f.ui().log.size(), 2u) << "the message and the new shape's dialog";
    EXPECT_EQ(f.s().stores.ShapeCount(), 1);
}

TEST(Loading, AProjectOfObjectsOpensInTheSelectState)
{
    // Two NDBs: after the load the first is selected in the select state, so that a click on the
    // other's handle selects it instead of panning.
    const TempFolder dir("objects_only");
    EditorFixture f;
    f.AddObject(kNdb, 0, 0);
    f.AddObject(kNdb, 100, 0);
    f.Run({"save " + (dir / "objects.fwt"), "command MnuFnew", "open " + (dir / "objects.fwt")});
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
    EXPECT_EQ(f.Sel().state(), 1);
    f.Run({"command MnuC2100", "down L " + Px(100, 0)}); // the load resets the view; Px is at 100 %
    EXPECT_EQ(f.s().editor.EditState, 0) << "no pan";
    EXPECT_EQ(f.Sel().SelObjects(), Ids{1});
}

TEST(Placing, OkKeepsTheObjectCancelRemovesIt)
{
    EditorFixture f;
    f.AddObject(kVor, 0, 0);
    f.Run({"tool runway"});
    EXPECT_EQ(f.ui().pointer, Pointer::Custom103);
    EXPECT_EQ(f.s().showFlags.ShowRunway, 1);
    f.Run({"answer ok", "down L " + Px(40, 50), "up L " + Px(40, 50)});
    ASSERT_EQ(f.s().stores.ObjectCount(), 2);
    EXPECT_EQ(f.s().stores.ObjectStore[1].PosX, 40);
    EXPECT_EQ(f.Sel().state(), 3);
    EXPECT_EQ(f.s().canUndo, 1);
    f.Run({"tool exclude", "down L " + Px(-40, 50)}); // no answer: the dialog is closed
    EXPECT_EQ(f.s().stores.ObjectCount(), 2);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
    EXPECT_EQ(f.Sel().state(), 1);
    EXPECT_EQ(f.s().editor.EditState, 0);
}

TEST(RubberBand, ShiftAloneStartsItAndReleasingShiftDropsIt)
{
    EditorFixture f;
    f.AddObject(kNdb, 10, 10);
    f.Run({"down L " + Px(0, 0) + " shift+ctrl"});
    EXPECT_EQ(f.s().editor.EditState, 7) << "Shift with Ctrl is no rubber band";
    f.Run({"up L " + Px(0, 0), "down L " + Px(0, 0) + " shift", "move " + Px(20, 20) + " shift"});
    EXPECT_EQ(f.s().editor.EditState, 8);
    EXPECT_EQ(f.s().editor.selSquare.right(), 20);
    f.Run({"move " + Px(30, 30)});
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.selSquare.IsActive(), 0);
    f.Run({"up L " + Px(30, 30)});
    EXPECT_EQ(f.Sel().sizeObject(), -1);
    // Dragged the other way round: sorted, then selected.
    f.Run({"down L " + Px(20, 20) + " shift", "move " + Px(0, 0) + " shift", "up L " + Px(0, 0) + " shift"});
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
}

TEST(Dragging, SidewaysIsStoredButNotMarked)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    // Each move goes from where the drag began, not from the last move.
    f.Run({"command MnuSdragshape", "down L " + Px(0, 0), "move " + Px(10, 0), "move " + Px(30, 0)});
    EXPECT_EQ(f.s().editor.EditState, 9);
    EXPECT_EQ(f.s().editor.work.WorkPoints[0][0], (Point{30, 0}));
    EXPECT_EQ(f.Points(0)[0], (Point{0, 0})) << "the stores wait for the button";
    f.Run({"up L " + Px(30, 0)});
    EXPECT_EQ(f.Points(0)[0], (Point{30, 0}));
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{30, 130, 0, 100}));
    EXPECT_EQ(f.Sel().getLimits(), (Limits{30, 130, 0, 100}));
    EXPECT_EQ(f.Marked(), (std::pair{0, 0}));
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, -1);
    // A diagonal drag is marked.
    f.Run({"down M " + Px(30, 0), "move " + Px(40, 10), "up M " + Px(40, 10)});
    EXPECT_EQ(f.Points(0)[0], (Point{40, 10}));
    EXPECT_EQ(f.Marked(), (std::pair{1, 1}));
}

TEST(Dragging, PointsInEditMode)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}}));
    f.Run({"command MnuSeditpoints", "down L " + Px(100, 100), "move " + Px(150, 160)});
    EXPECT_EQ(f.s().editor.EditState, 15);
    EXPECT_EQ(f.Sel().SelPoints(), Ids{2});
    f.Run({"up L " + Px(150, 160)});
    EXPECT_EQ(f.Points(0)[2], (Point{150, 160}));
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 150, 0, 160}));
    EXPECT_EQ(f.s().canUndo, 1);
    f.Run({"down L " + Px(50, 50)});
    EXPECT_EQ(f.s().editor.EditState, 7) << "a click on no point pans";
}

TEST(Keys, ZoomKeysOnlyInIdleButButtonsAlwaysAndEnterSelects)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    f.Sel().setState(3);
    f.Run({"key 13"});
    EXPECT_EQ(f.Sel().state(), 1);
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

struct ImageFixture : EditorFixture {
    ImageFixture()
    {
        s().bitmap.loaded = true;
        s().bitmap.width = 100;
        s().bitmap.height = 50;
        s().showFlags.BackImagePath = "chart.bmp";
        s().showFlags.BackImageLeft = -10;
        s().showFlags.BackImageTop = -20;
        s().showFlags.BackImagescale = 2.0;
    }
};

TEST(ImageFrame, ScaleByTheHandleThenMoveThenLeaveAndTheScalesFloor)
{
    ImageFixture f;
    f.Run({"command MnuBedit"});
    EXPECT_EQ(f.s().editor.EditState, 16);
    EXPECT_EQ(f.s().showFlags.ShowBackPicture, 1);
    EXPECT_TRUE(ComputeMenuState(f.s()).items.at("MnuBedit").checked.value());
    EXPECT_EQ(f.s().bitmap.frame.current[2], (Point{190, 80}));
    // The handle sits in the middle of the right edge, world (190, 30): 5 pixels, exclusive.
    f.Run({"move " + Px(195, 30)});
    EXPECT_EQ(f.ui().pointer, Pointer::Arrow);
    f.Run({"move " + Px(194, 34)});
    EXPECT_EQ(f.ui().pointer, Pointer::SizeWE);
    f.Run({"down L " + Px(194, 34), "move " + Px(204, 0)});
    EXPECT_EQ(f.s().editor.EditState, 18);
    EXPECT_EQ(f.s().bitmap.frame.current[2], (Point{200, 85})); // 2.1 times 100 by 50
    f.Run({"up L " + Px(204, 0)});
    EXPECT_EQ(f.s().showFlags.BackImagescale, 2.1);
    EXPECT_EQ(f.s().editor.EditState, 16);

    f.Run({"down L " + Px(0, 0), "move " + Px(5, 7), "up L " + Px(5, 7)});
    EXPECT_EQ(f.s().showFlags.BackImageLeft, -5);
    EXPECT_EQ(f.s().showFlags.BackImageTop, -13);
    EXPECT_EQ(f.s().editor.EditState, 16);
    f.Run({"down L " + Px(300, 250)});
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().bitmap.ImageFrameActive, 0);

    // The scale stops at a hundredth; a tool ends the frame; without a path the command does nothing.
    f.Run({"up L " + Px(300, 250), "command MnuBedit", "down L " + Px(205, 39), "move " + Px(-300, 39),
           "up L " + Px(-300, 39)});
    EXPECT_EQ(f.s().showFlags.BackImagescale, 0.01);
    f.Run({"tool zoomIn"});
    EXPECT_EQ(f.s().bitmap.ImageFrameActive, 0);
    EXPECT_EQ(f.s().editor.EditState, 0);
    f.s().showFlags.BackImagePath.clear();
    f.Run({"command MnuBedit"});
    EXPECT_EQ(f.s().editor.EditState, 0);
}

// Edge cases played from scripts as a user would play them.
TEST(Scenario, TexPolyFourthClickAndTooFewPoints)
{
    Scenario sc("texpoly_fourth_click.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    ASSERT_EQ(sc.s().stores.ShapeCount(), 1);
    EXPECT_EQ(sc.s().stores.PointStore[0], (PointList{{0, 0}, {200, 0}, {200, 100}, {0, 100}}));
    // Width 200 is the larger side: 255 / 200 per unit, a double just below 1.275, so 100 units
    // give 127.4999... and round down.
    EXPECT_EQ(sc.s().stores.ShapeStore[0].mTexMap, (std::array<std::int32_t, 8>{0, 0, 255, 0, 255, 127, 0, 127}));
    EXPECT_EQ(sc.s().editor.EditState, 7) << "the fifth click lands on empty canvas and pans";

    Scenario few("too_few_points.txt");
    ASSERT_EQ(few.code, 0) << few.errors;
    EXPECT_EQ(few.s().stores.ShapeCount(), 0);
    EXPECT_EQ(few.s().editor.EditState, 1) << "the disabled mEdit button can't end the tool";
    EXPECT_EQ(few.s().editor.draw.PointIndex(), 2);
}

TEST(Scenario, RightClickWhileDrawingAndSidewaysDragIsNotUndoable)
{
    Scenario sc("flatten_right_click.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    EXPECT_EQ(sc.replay->ui.Popups(), std::vector<std::string>{"MnuClick2"});
    EXPECT_EQ(sc.s().editor.EditState, 6);
    EXPECT_EQ(sc.s().stores.ShapeCount(), 1) << "the line stays though its dialog was closed";

    Scenario drag("sideways_drag.txt");
    ASSERT_EQ(drag.code, 0) << drag.errors;
    EXPECT_NE(ReadFileText((drag.dir / "sideways.json").string()).find("[[50, 0], [150, 0]]"), std::string::npos);
    EXPECT_EQ(drag.s().stores.ShapeCount(), 0) << "undo took back the drawing, the older change";
}

TEST(Scenario, ArrangeWithEveryShapeSelected)
{
    Scenario sc("arrange_all_selected.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    ASSERT_EQ(sc.s().stores.ShapeCount(), 2);
    EXPECT_EQ(sc.s().stores.ShapeStore[0].gType, kPoly);
    EXPECT_EQ(sc.s().stores.ShapeStore[1].gType, kDotLine);
    EXPECT_EQ(sc.s().view.mMode(), 1);
    EXPECT_EQ(sc.s().config.MessageLayer, 0);
    EXPECT_EQ(sc.s().editor.selection.SelShapes(), (Ids{0, 1}));
}

} // namespace
} // namespace fw::test
