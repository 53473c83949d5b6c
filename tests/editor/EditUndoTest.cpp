// Deleting and inserting points, delete of records, undo by swap, copy and paste.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/Undo.h"
#include "editor/WorkEdit.h"

namespace fw::test {
namespace {

struct PointsFixture : EditorFixture {
    PointsFixture() : EditorFixture(1.0) {}
    void EditPoints(int shape, std::vector<std::uint16_t> points)
    {
        s().editor.selection.reset();
        SelectShape(shape);
        s().editor.selection.setState(2);
        s().editor.selection.resetPt();
        for (auto p : points)
            s().editor.selection.addPt(p);
    }
};

TEST(DeletePoints, MinimaAndTheTip)
{
    PointsFixture f;
    const PointList square{{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    f.AddShape(kPoly, square);
    f.EditPoints(0, {1, 2});
    f.Run({"command MnuEdelete"});
    EXPECT_EQ(f.Points(0), square) << "two would remain of a polygon";
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"tip"});
    EXPECT_EQ(f.ui().log[0].text, "You are trying to delete too many points...\n\nWhen deleting points, note "
                                  "that at least 3 points should remain for polygons, 2 points for other shapes.");
    EXPECT_EQ(f.s().dirty, 0);
    // "Don't show again": the flag goes to 0 and the next refusal is silent.
    f.Run({"answer tip dontshow", "command MnuEdelete"});
    EXPECT_EQ(f.s().config.MessageDelete, 0);
    f.Run({"command MnuEdelete"});
    EXPECT_EQ(f.ui().log.size(), 2u);

    f.EditPoints(0, {2});
    f.Run({"command MnuEdelete"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {0, 100}}));
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{1})) << "the point before";
    EXPECT_EQ(f.s().editor.selection.state(), 2);
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 100, 0, 100}));
    EXPECT_EQ(f.s().dirty, 1);
}

TEST(DeletePoints, LinesKeepTwoAndAllPointsDeleteTheShape)
{
    PointsFixture f;
    f.AddShape(kWideLine, {{0, 0}, {50, 0}, {100, 0}});
    f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}});
    f.EditPoints(0, {0});
    f.Run({"command MnuEdelete"});
    EXPECT_EQ(f.Points(0), (PointList{{50, 0}, {100, 0}}));
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{0}));
    f.EditPoints(1, {0, 1, 2});
    f.Run({"command MnuEdelete"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 1);
    EXPECT_TRUE(f.ui().log.empty());
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{0}));
}

TEST(DeleteRecords, FirstObjectIsSelectedAndItsFlagShown)
{
    PointsFixture f;
    f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}});
    f.AddObject(kSign, 5, 5);
    f.AddObject(kVor, 50, 50);
    f.s().showFlags.ShowNav = 0;
    f.s().showFlags.ShowSign = 0;
    f.SelectObject(0);
    f.Run({"command MnuEdelete"});
    ASSERT_EQ(f.s().stores.ObjectCount(), 1);
    EXPECT_EQ(f.s().stores.ObjectStore[0].oType, kVor);
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(f.s().showFlags.ShowNav, 1);
    f.Run({"command MnuEundo"});
    EXPECT_EQ(f.s().stores.ObjectCount(), 2);
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}))
        << "undo selects the deleted records";
    EXPECT_EQ(f.s().stores.ObjectStore[0].oType, kSign);
}

TEST(InsertPoint, PolygonClosesLineExtends)
{
    PointsFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.EditPoints(0, {2});
    f.Run({"key 45"});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {100, 0}, {100, 100}, {50, 50}}));
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{3}));
    EXPECT_EQ(f.s().canUndo, 1);

    f.AddShape(kDotLine, {{0, 0}, {100, 0}});
    f.EditPoints(1, {1});
    f.s().view.setZoom(0.25); // 10 pixels are 40 units: the new point is 20 beyond the end
    f.Run({"key 45"});
    EXPECT_EQ(f.Points(1), (PointList{{0, 0}, {100, 0}, {120, 0}}));
    f.AddShape(kDotLine, {{7, 7}, {7, 7}});
    f.EditPoints(2, {1});
    f.Run({"key 45"});
    EXPECT_EQ(f.Points(2), (PointList{{7, 7}, {7, 7}, {7, 7}}));
}

TEST(InsertPoint, LimitsByType)
{
    PointsFixture f;
    f.AddShape(kTexPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    f.EditPoints(0, {0});
    f.Run({"key 45"});
    EXPECT_EQ(f.Points(0).size(), 4u);
    EXPECT_EQ(f.s().canUndo, 0);
    // Outside edit points mode Insert only paints.
    f.s().editor.selection.setState(1);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.Run({"key 45"});
    EXPECT_EQ(f.Points(1).size(), 3u);
}

TEST(Undo, TwiceBringsTheChangeBackAndRestoresPoints)
{
    PointsFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    f.EditPoints(0, {1, 3});
    f.Run({"down L " + Px(100, 0), "move " + Px(110, 10), "up L " + Px(110, 10)});
    EXPECT_EQ(f.Points(0)[1], (Point{110, 10}));
    EXPECT_EQ(f.Points(0)[3], (Point{10, 110}));
    f.s().editor.selection.reset();
    f.Run({"command MnuEundo"});
    EXPECT_EQ(f.Points(0)[1], (Point{100, 0}));
    EXPECT_EQ(f.s().editor.selection.state(), 2);
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{1, 3}));
    EXPECT_EQ(f.s().editor.selection.getLimits(), (Limits{0, 100, 0, 100}));
    f.Run({"command MnuEundo"});
    EXPECT_EQ(f.Points(0)[1], (Point{110, 10}));
    EXPECT_EQ(f.s().canUndo, 1);
}

TEST(Undo, NeedsCanUndoAndLeavesTheClipboard)
{
    PointsFixture f;
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    Undo(f.s());
    EXPECT_EQ(f.s().stores.ShapeCount(), 1);
    MnuEcopy(f.s());
    f.Run({"command MnuEdelete", "command MnuEundo"});
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
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{1}));
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{1}));
    EXPECT_EQ(f.s().editor.selection.state(), 3);
    EXPECT_EQ(f.s().canUndo, 1);
    f.Run({"command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 3) << "the same clipboard pastes again";
}

TEST(Paste, ObjectsOnlyAndOverTheLimit)
{
    EditorFixture f(1.0);
    f.AddObject(kNdb, 0, 0);
    f.SelectObject(0);
    f.Run({"command MnuEcopy", "command MnuEpaste"});
    EXPECT_EQ(f.s().editor.selection.sizeShape(), -1);
    EXPECT_EQ(f.s().stores.ObjectCount(), 2);
    for (int i = 0; i < 798; ++i)
        f.AddObject(kNdb, i, 0);
    f.Run({"command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ObjectCount(), 800) << "799 + 1 is still below 801";
    const auto undoBefore = f.s().editor.UndoLast.stores.ObjectStore.size();
    f.Run({"command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ObjectCount(), 800);
    EXPECT_EQ(f.s().editor.UndoNext.stores.ObjectStore.size(), 800u) << "UndoPrepare has run";
    EXPECT_EQ(f.s().editor.UndoLast.stores.ObjectStore.size(), undoBefore);
    EXPECT_TRUE(f.ui().log.empty());
}

TEST(Paste, ASecondFlattenPolygonIsLeftOutWithTheToolsMessage)
{
    EditorFixture f(1.0);
    f.AddShape(kFlatten, {{0, 0}, {100, 0}, {100, 100}});
    f.AddShape(kPoly, {{200, 0}, {300, 0}, {300, 100}});
    f.SelectShape(0);
    f.SelectShape(1);
    f.Run({"command MnuEcopy", "command MnuEpaste"});
    // The polygon is pasted; the flatten polygon would be the second and is left out.
    ASSERT_EQ(f.s().stores.ShapeCount(), 3);
    EXPECT_EQ(f.s().stores.ShapeStore[2].gType, kPoly);
    EXPECT_EQ(f.s().stores.PointStore.size(), 3u);
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{2}));
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"message"});
    EXPECT_EQ(f.ui().log[0].text, "You already drew a flatten polygon...\n\nOnly one flatten polygon can be "
                                  "specified for every Fieldwright project.");
    EXPECT_EQ(f.s().dirty, 1);

    // A clipboard of the flatten polygon alone pastes nothing and changes nothing.
    f.s().editor.selection.reset();
    f.SelectShape(0);
    f.s().dirty = 0;
    f.Run({"command MnuEcopy", "command MnuEpaste"});
    EXPECT_EQ(f.s().stores.ShapeCount(), 3);
    EXPECT_EQ(f.ui().log.size(), 2u);
    EXPECT_EQ(f.s().dirty, 0);
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{0}));

    // Into a project without one, the first flatten polygon of the clipboard goes in.
    f.Run({"command MnuEdelete"});
    ASSERT_EQ(f.s().stores.ShapeCount(), 2);
    f.Run({"command MnuEpaste"});
    ASSERT_EQ(f.s().stores.ShapeCount(), 3);
    EXPECT_EQ(f.s().stores.ShapeStore[2].gType, kFlatten);
    EXPECT_EQ(f.ui().log.size(), 2u);
}

TEST(WorkingCopy, MovesFromTheBaseNotFromTheLastResult)
{
    WorkingCopy w;
    WorkBegin(w, {{{0, 0}, {10, 10}}}, {ShapeRecord{}}, {}, 0, -1, {0, 10, 0, 10});
    WorkMove(w, 5, 5);
    WorkMove(w, 5, 5);
    EXPECT_EQ(w.WorkPoints[0][1], (Point{15, 15}));
    EXPECT_EQ(w.WorkLimits, (Limits{5, 15, 5, 15}));
    EXPECT_EQ(w.WorkStartLimits, (Limits{0, 10, 0, 10}));
    WorkClear(w);
    EXPECT_EQ(w.WorkShapeCount(), 0);
    EXPECT_EQ(w.WorkObjectCount(), 0);
}

} // namespace
} // namespace fw::test
