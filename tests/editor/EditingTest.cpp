// Points and records deleted and inserted, undo, copy and paste, the transforms and arrange.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/Arrange.h"
#include "editor/Undo.h"

namespace fw::test {
namespace {

// Selects the points of a shape in edit points mode and runs the lines.
void EditPoints(EditorFixture& f, int shape, std::vector<std::uint16_t> points, const std::vector<std::string>& lines)
{
    f.Sel().reset();
    f.SelectShape(shape);
    f.Sel().setState(2);
    f.Sel().resetPt();
    for (auto p : points)
        f.Sel().addPt(p);
    f.Run(lines);
}

TEST(DeletePoints, MinimaTheTipAndAllPointsDeleteTheShape)
{
    EditorFixture f;
    const PointList square{{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    f.AddShape(kPoly, square);
    EditPoints(f, 0, {1, 2}, {"command MnuEdelete"});
    EXPECT_EQ(f.Points(0), square) << "two would remain of a polygon";
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"tip"});
    EXPECT_EQ(f.ui().log[0].text, "You are trying to delete too many points...\n\nWhen deleting points, note "
                                  "that at least 3 points should remain for polygons, 2 points for other shapes.");
    EXPECT_EQ(f.s().dirty, 0);
    // "Don't show again": the flag goes to 0 and the next refusal is silent.
    f.Run({"answer tip dontshow", "command MnuEdelete", "command MnuEdelete"});
    EXPECT_EQ(f.s().config.MessageDelete, 0);
    EXPECT_EQ(f.ui().log.size(), 2u);

    EditPoints(f, 0, {2}, {"command MnuEdelete"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {0, 100}}));
    EXPECT_EQ(f.Sel().SelPoints(), Ids{1}) << "the point before";
    EXPECT_EQ(f.Sel().state(), 2);
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 100, 0, 100}));
    EXPECT_EQ(f.s().dirty, 1);

    // A line keeps two; the first point deleted selects the new first.
    f.AddShape(kWideLine, {{0, 0}, {50, 0}, {100, 0}});
    EditPoints(f, 1, {0}, {"command MnuEdelete"});
    EXPECT_EQ(f.Points(1), (PointList{{50, 0}, {100, 0}}));
    EXPECT_EQ(f.Sel().SelPoints(), Ids{0});
    EditPoints(f, 0, {0, 1, 2}, {"command MnuEdelete"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_EQ(f.ui().log.size(), 2u);
    EXPECT_EQ(f.Sel().SelShapes(), Ids{0});
}

TEST(DeleteRecords, FirstObjectIsSelectedAndItsFlagShown)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}});
    f.AddObject(kSign, 5, 5);
    f.AddObject(kVor, 50, 50);
    f.s().showFlags.ShowNav = 0;
    f.s().showFlags.ShowSign = 0;
    f.SelectObject(0);
    f.Run({"command MnuEdelete"});
    ASSERT_EQ(f.s().stores.ObjectCount(), 1);
    EXPECT_EQ(f.s().stores.ObjectStore[0].oType, kVor);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
    EXPECT_EQ(f.s().showFlags.ShowNav, 1);
    f.Run({"command MnuEundo"});
    EXPECT_EQ(f.s().stores.ObjectStore[0].oType, kSign);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0}) << "undo selects the deleted records";
}

TEST(InsertPoint, PolygonClosesLineExtendsAndTexPolyHasFour)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    EditPoints(f, 0, {2}, {"key 45"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {100, 100}, {50, 50}}));
    EXPECT_EQ(f.Sel().SelPoints(), Ids{3});
    EXPECT_EQ(f.s().canUndo, 1);

    f.AddShape(kDotLine, {{0, 0}, {100, 0}});
    f.s().view.setZoom(0.25); // 10 pixels are 40 units: the new point is 20 beyond the end
    EditPoints(f, 1, {1}, {"key 45"});
    EXPECT_EQ(f.Points(1), (PointList{{0, 0}, {100, 0}, {120, 0}}));
    f.AddShape(kDotLine, {{7, 7}, {7, 7}});
    EditPoints(f, 2, {1}, {"key 45"});
    EXPECT_EQ(f.Points(2), (PointList{{7, 7}, {7, 7}, {7, 7}}));

    f.s().canUndo = 0;
    f.AddShape(kTexPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    EditPoints(f, 3, {0}, {"key 45"});
    EXPECT_EQ(f.Points(3).size(), 4u);
    EXPECT_EQ(f.s().canUndo, 0);
    // Outside edit points mode Insert only paints.
    EditPoints(f, 0, {0}, {});
    f.Sel().setState(1);
    f.Run({"key 45"});
    EXPECT_EQ(f.Points(0).size(), 4u);
}

TEST(Undo, TwiceBringsTheChangeBackAndRestoresPointsButNotTheClipboard)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    Undo(f.s());
    EXPECT_EQ(f.s().stores.ShapeCount(), 1) << "nothing to undo";
    EditPoints(f, 0, {1, 3}, {"down L " + Px(100, 0), "move " + Px(110, 10), "up L " + Px(110, 10)});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {110, 10}, {100, 100}, {10, 110}}));
    f.Sel().reset();
    f.Run({"command MnuEundo"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {100, 100}, {0, 100}}));
    EXPECT_EQ(f.Sel().state(), 2);
    EXPECT_EQ(f.Sel().SelPoints(), (Ids{1, 3}));
    EXPECT_EQ(f.Sel().getLimits(), (Limits{0, 100, 0, 100}));
    f.Run({"command MnuEundo"});
    EXPECT_EQ(f.Points(0)[1], (Point{110, 10}));
    EXPECT_EQ(f.s().canUndo, 1);

    f.Sel().reset();
    f.SelectShape(0);
    f.Run({"command MnuEcopy", "command MnuEdelete", "command MnuEundo"});
    EXPECT_EQ(f.s().canPaste, 1);
    EXPECT_EQ(f.s().editor.clipboard.shapeLast, 0);
}

TEST(Paste, LandsAtTheViewsTopLeftWithItsWorldSize)
{
    EditorFixture f(4.0);
    f.AddShape(kPoly, {{100, 100}, {140, 100}, {140, 120}}, "kept");
    f.AddObject(kApi, 150, 130, 45);
    f.SelectShape(0);
    f.SelectObject(0);
    f.Run({"command MnuEcopy"});
    EXPECT_EQ(f.s().dirty, 0);
    f.s().view.setZoom(0.0625);
    f.Run({"command MnuEpaste"});
    const Point base = ScreenToWorldClamped(f.s().view, 5, 5);
    ASSERT_EQ(f.s().stores.ShapeCount(), 2);
    EXPECT_EQ(f.Points(1)[0], base);
    EXPECT_EQ(f.Points(1)[1], (Point{base.X + 40, base.Y}));
    EXPECT_EQ(f.s().stores.ShapeStore[1].gComment, "kept");
    EXPECT_EQ(f.s().stores.ObjectStore[1].PosX, base.X + 50);
    EXPECT_EQ(f.s().stores.ObjectStore[1].Rotation, 45);
    EXPECT_EQ(f.Sel().SelShapes(), Ids{1});
    EXPECT_EQ(f.Sel().SelObjects(), Ids{1});
    EXPECT_EQ(f.Sel().state(), 3);
    EXPECT_EQ(f.s().canUndo, 1);
    f.Run({"command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 3) << "the same clipboard pastes again";
}

TEST(Paste, ObjectsOnlyAndOverTheLimit)
{
    EditorFixture f;
    f.SelectObject(f.AddObject(kNdb, 0, 0));
    f.Run({"command MnuEcopy", "command MnuEpaste"});
    EXPECT_EQ(f.Sel().sizeShape(), -1);
    for (int i = 0; i < 798; ++i)
        f.AddObject(kNdb, i, 0);
    f.Run({"command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ObjectCount(), 800) << "799 + 1 is still below 801";
    f.Run({"command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ObjectCount(), 800);
    EXPECT_TRUE(f.ui().log.empty());
}

TEST(Paste, ASecondFlattenPolygonIsLeftOutWithTheToolsMessage)
{
    EditorFixture f;
    f.AddShape(kFlatten, {{0, 0}, {100, 0}, {100, 100}});
    f.AddShape(kPoly, {{200, 0}, {300, 0}, {300, 100}});
    f.SelectShape(0);
    f.SelectShape(1);
    f.Run({"command MnuEcopy", "command MnuEpaste"});
    ASSERT_EQ(f.s().stores.ShapeCount(), 3);
    EXPECT_EQ(f.s().stores.ShapeStore[2].gType, kPoly);
    EXPECT_EQ(f.s().stores.PointStore.size(), 3u);
    EXPECT_EQ(f.Sel().SelShapes(), Ids{2});
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"message"});
    EXPECT_EQ(f.ui().log[0].text, kOneFlatten);
    EXPECT_EQ(f.s().dirty, 1);

    // A clipboard of the flatten polygon alone pastes nothing and changes nothing.
    f.Sel().reset();
    f.SelectShape(0);
    f.s().dirty = 0;
    f.Run({"command MnuEcopy", "command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 3);
    EXPECT_EQ(f.ui().log.size(), 2u);
    EXPECT_EQ(f.s().dirty, 0);
    EXPECT_EQ(f.Sel().SelShapes(), Ids{0});
    // Into a project without one, the first flatten polygon of the clipboard goes in.
    f.Run({"command MnuEdelete", "command MnuEpaste"});
    ASSERT_EQ(f.s().stores.ShapeCount(), 3);
    EXPECT_EQ(f.s().stores.ShapeStore[2].gType, kFlatten);
    EXPECT_EQ(f.ui().log.size(), 2u);
}

TEST(Rotate, NinetyAndBackAboutTheRoundedCentre)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {101, 0}, {101, 51}});
    f.AddObject(kApi, 101, 51, 300);
    f.AddObject(kInit, 0, 51, -5);
    f.SelectShape(0);
    f.SelectObject(0);
    f.SelectObject(1);
    f.Run({"answer text 90", "command MnuEdrot"});
    // Centre (50, 26): round(50.5) and round(25.5) go to the even neighbours.
    EXPECT_EQ(f.Points(0), (PointList{{76, -24}, {76, 77}, {25, 77}}));
    EXPECT_EQ(f.s().stores.ObjectStore[0].Rotation, 30) << "300 + 90 wraps";
    EXPECT_EQ(f.s().stores.ObjectStore[1].Rotation, -5) << "a negative heading stays";
    EXPECT_EQ(f.Sel().getLimits(), (Limits{25, 76, -24, 77}));
    EXPECT_EQ(f.s().canUndo, 1);
    f.Run({"answer text -90", "command MnuEdrot"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {101, 0}, {101, 51}})) << "back within a unit of the start";
    EXPECT_EQ(f.s().editor.LastRotation, -90);
}

TEST(Rotate, DialogRefusesOutOfRangeAndZeroOrClosedDoNothing)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    f.Run({"answer text 400", "answer text 12.3456", "command MnuEdrot"});
    ASSERT_EQ(f.Kinds(), (std::vector<std::string>{"form", "message", "form"}));
    EXPECT_EQ(f.ui().log[1].text, "You entered a wrong value for the rotation!");
    EXPECT_EQ(f.s().editor.LastRotation, 12.346);
    f.s().dirty = f.s().canUndo = 0;
    const PointList before = f.Points(0);
    f.Run({"answer text 0", "command MnuEdrot", "command MnuEdrot"});
    EXPECT_EQ(f.Marked(), (std::pair{0, 0}));
    EXPECT_EQ(f.Points(0), before);
}

TEST(Rotate, FreeRotateByDragShowsTheAngleAndTheTip)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}}));
    f.Run({"command MnuErotate", "move " + Px(100, 50)});
    EXPECT_EQ(f.s().editor.EditState, 12);
    EXPECT_EQ(f.ui().pointer, Pointer::Custom108);
    // The span is the canvas width in world units, 800: a drag of 200 is a quarter turn.
    f.Run({"down L " + Px(100, 50), "move " + Px(300, 50)});
    EXPECT_EQ(f.s().editor.EditState, 13);
    EXPECT_EQ(f.s().editor.memory.RotateAngle, 90);
    EXPECT_NE(f.replay->StateJson().find("\"panel3\": \"Rot: 90\\u00B0\""), std::string::npos);
    f.Run({"up L " + Px(300, 50)});
    EXPECT_EQ(f.Points(0), (PointList{{100, 0}, {100, 100}, {0, 100}, {0, 0}}));
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{"tip"});
    EXPECT_EQ(f.s().canUndo, 1) << "only the X distance counts for the mark";
}

TEST(Rescale, CornerPastTheOppositeCornerMirrorsAndAnEdgeKeepsTheOtherAxis)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    f.Run({"command MnuErescale", "move " + Px(101, 102)});
    EXPECT_EQ(f.ui().pointer, Pointer::SizeNWSE);
    f.Run({"down L " + Px(100, 100), "move " + Px(-50, -50)});
    EXPECT_EQ(f.s().editor.EditState, 11);
    EXPECT_EQ(f.s().editor.memory.ScaleHandle, 8);
    f.Run({"answer tip dontshow", "up L " + Px(-50, -50)});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {-50, 0}, {-50, -50}}));
    EXPECT_EQ(f.s().config.MessageScale, 0);
    EXPECT_EQ(f.s().canUndo, 1);

    // The left edge of (-50..0): anchored at the right, twice as wide, Y untouched.
    f.Run({"command MnuErescale", "down L " + Px(-51, -25), "move " + Px(-101, 80), "up L " + Px(-101, 80)});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {-100, 0}, {-100, -50}}));
    // A click off the box pans and drops the ghost.
    f.Run({"command MnuErescale", "down L " + Px(300, 250)});
    EXPECT_EQ(f.s().editor.EditState, 7);
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, -1);
}

TEST(Rescale, DialogZeroIsHeldToTwoUnitsAndHundredDoesNothing)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    // Maintain ratio uses the horizontal factor.
    f.Run({"answer text 200 50 ratio", "command MnuEdscale"});
    EXPECT_EQ(f.Points(0), (PointList{{-50, -50}, {150, -50}, {150, 150}}));
    f.Run({"answer text 50 50 ratio", "command MnuEdscale"});
    ASSERT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {100, 100}}));
    f.s().dirty = 0;
    f.Run({"answer text 100 100", "command MnuEdscale"});
    EXPECT_EQ(f.s().dirty, 0);
    f.Run({"answer text 0 100 noratio", "command MnuEdscale"});
    EXPECT_EQ(f.Points(0), (PointList{{49, 0}, {51, 0}, {51, 100}}));
    EXPECT_EQ(f.s().config.keepAspect, 0);
    f.Run({"answer text 500 100", "command MnuEdscale"});
    const auto& log = f.ui().log;
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[log.size() - 2].text, "You entered a wrong value for the horizontal scaling!");
    EXPECT_FALSE(log.back().queued) << "the refused form waits, then closes without an answer";
    EXPECT_EQ(f.Points(0), (PointList{{49, 0}, {51, 0}, {51, 100}}));
}

TEST(Flip, MirrorsAboutTheCentreAndKeepsHeadings)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 40}});
    f.AddObject(kSign, 0, 40, 33);
    f.SelectShape(0);
    f.SelectObject(0);
    f.Run({"command MnuEflipx"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 40}, {100, 40}, {100, 0}}));
    EXPECT_EQ(f.s().stores.ObjectStore[0].PosY, 0);
    EXPECT_EQ(f.s().stores.ObjectStore[0].Rotation, 33);
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 100, 0, 40}));
    f.Run({"command MnuEflipy"});
    EXPECT_EQ(f.Points(0), (PointList{{100, 40}, {0, 40}, {0, 0}}));
}

TEST(Convert, ReplacesRecordsWithoutUndoStep)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {50, 10}, {50, 100}}, "concave");
    f.AddShape(kWideLine, {{0, 200}, {100, 200}});
    ASSERT_EQ(f.s().stores.ShapeStore[0].gIsConcave, 1);
    f.SelectShape(0);
    f.Run({"answer ok", "command MnuSconvertshapeto"});
    EXPECT_EQ(f.s().stores.ShapeStore[0].gIsConcave, 0) << "the default's value, not recomputed";
    EXPECT_EQ(f.s().stores.ShapeStore[0].gComment, "[No comment]");
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 100, 0, 100}));
    EXPECT_EQ(f.Marked(), (std::pair{1, 0}));
    f.SelectShape(1);
    f.Run({"answer index 4", "command MnuSconvertshapeto"});
    EXPECT_EQ(f.s().stores.ShapeStore[0].gType, kForest);
    EXPECT_EQ(f.s().stores.ShapeStore[1].gType, kForest);
    EXPECT_EQ(f.Kinds().back(), "tip");
    f.Run({"command MnuSconvertshapeto"}); // closed: nothing
    EXPECT_EQ(f.s().stores.ShapeStore[1].gType, kForest);
}

struct ArrangeFixture : EditorFixture {
    ArrangeFixture()
    {
        for (int i = 0; i < 4; ++i)
            AddShape(kPoly, {{i * 10, 0}, {i * 10 + 5, 0}, {i * 10, 5}}, "s" + std::to_string(i));
        AddObject(kNdb, 0, 50);
    }
    std::string Order()
    {
        std::string o;
        for (const auto& r : s().stores.ShapeStore)
            o += r.gComment;
        return o;
    }
};

// Every shape selected is a scenario script.
TEST(Arrange, SelectionOrderWinsObjectsDontCountAndNothingIsMarked)
{
    ArrangeFixture f;
    f.SelectObject(0);
    SendToBack(f.s());
    EXPECT_EQ(f.Order(), "s0s1s2s3");
    f.SelectShape(2);
    f.SelectShape(0);
    f.Run({"command MnuSfront"});
    EXPECT_EQ(f.Order(), "s1s3s2s0");
    EXPECT_EQ(f.Sel().SelShapes(), (Ids{2, 3}));
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
    f.Run({"command MnuSfront"});
    EXPECT_EQ(f.Order(), "s1s3s2s0");
    f.Run({"command MnuSback"});
    EXPECT_EQ(f.Order(), "s2s0s1s3");
    EXPECT_EQ(f.Marked(), (std::pair{0, 0}));
}

TEST(Arrange, ModeButtons)
{
    ArrangeFixture f;
    f.SelectShape(1);
    f.Sel().setState(3);
    f.Run({"tool mLayer"});
    EXPECT_EQ(f.s().view.mMode(), 1);
    EXPECT_EQ(f.Sel().state(), 1);
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{"tip"});
    // The right button over a hit opens the arrange menu.
    f.Run({"down R " + Px(10, 0), "up R " + Px(10, 0)});
    EXPECT_EQ(f.ui().Popups(), std::vector<std::string>{"MnuClick3"});
    f.Run({"command MnuC3bringtofront"});
    EXPECT_EQ(f.Order(), "s0s2s3s1");
    f.Run({"tool mEdit"});
    EXPECT_EQ(f.s().view.mMode(), 0);
    EXPECT_EQ(f.Sel().SelShapes(), Ids{3});
    EXPECT_TRUE(f.s().editor.toolEnabled[0]);
    // With the tip switched off the mode comes straight.
    f.s().config.MessageLayer = 0;
    f.Run({"tool mLayer"});
    EXPECT_EQ(f.Kinds().size(), 2u); // the tip and the popup
}

} // namespace
} // namespace fw::test
