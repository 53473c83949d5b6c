// Flips, rotate, rescale, convert, and the arrange commands.
#include <gtest/gtest.h>

#include <cstdlib>

#include "EditorTestSupport.h"
#include "editor/Arrange.h"
#include "editor/Transforms.h"

namespace fw::test {
namespace {

TEST(Rotate, NinetyAndBackAboutTheRoundedCentre)
{
    EditorFixture f(1.0);
    const PointList start{{0, 0}, {101, 0}, {101, 51}};
    f.AddShape(kPoly, start);
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
    EXPECT_EQ(f.s().editor.selection.getLimits(), (Limits{25, 76, -24, 77}));
    EXPECT_EQ(f.s().canUndo, 1);
    f.Run({"answer text -90", "command MnuEdrot"});
    for (std::size_t i = 0; i < start.size(); ++i) {
        EXPECT_LE(std::abs(f.Points(0)[i].X - start[i].X), 1);
        EXPECT_LE(std::abs(f.Points(0)[i].Y - start[i].Y), 1);
    }
    EXPECT_EQ(f.s().editor.LastRotation, -90);
}

TEST(Rotate, DialogRefusesOutOfRangeAndZeroDoesNothing)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    f.Run({"answer text 400", "answer text 12.3456", "command MnuEdrot"});
    ASSERT_EQ(f.Kinds(), (std::vector<std::string>{"form", "message", "form"}));
    EXPECT_EQ(f.ui().log[1].text, "You entered a wrong value for the rotation!");
    EXPECT_EQ(f.s().editor.LastRotation, 12.346);
    f.s().dirty = 0;
    f.s().canUndo = 0;
    f.Run({"answer text 0", "command MnuEdrot"});
    EXPECT_EQ(f.s().dirty, 0);
    EXPECT_EQ(f.s().canUndo, 0);
    // No answer: the dialog is closed, nothing runs.
    const PointList before = f.Points(0);
    f.Run({"command MnuEdrot"});
    EXPECT_EQ(f.Points(0), before);
}

TEST(Rotate, FreeRotateByDragShowsTheAngleAndTheTip)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    f.SelectShape(0);
    f.Run({"command MnuErotate"});
    EXPECT_EQ(f.s().editor.EditState, 12);
    f.Run({"move " + Px(100, 50)});
    EXPECT_EQ(f.ui().pointer, Pointer::Custom108);
    // The span is the canvas width in world units, 800: a drag of 200 is a quarter turn.
    f.Run({"down L " + Px(100, 50), "move " + Px(300, 50)});
    EXPECT_EQ(f.s().editor.EditState, 13);
    EXPECT_EQ(f.s().editor.memory.RotateAngle, 90);
    EXPECT_EQ(f.replay->StateJson().find("\"panel3\": \"Rot: 90\\u00B0\"") != std::string::npos, true);
    f.Run({"up L " + Px(300, 50)});
    EXPECT_EQ(f.Points(0), (PointList{{100, 0}, {100, 100}, {0, 100}, {0, 0}}));
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{"tip"});
    EXPECT_EQ(f.s().canUndo, 1) << "only the X distance counts for the mark";
}

TEST(Rescale, CornerPastTheOppositeCornerMirrors)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    f.Run({"command MnuErescale", "move " + Px(101, 102)});
    EXPECT_EQ(f.ui().pointer, Pointer::SizeNWSE);
    f.Run({"down L " + Px(100, 100), "move " + Px(-50, -50)});
    EXPECT_EQ(f.s().editor.EditState, 11);
    EXPECT_EQ(f.s().editor.memory.ScaleHandle, 8);
    f.Run({"answer tip dontshow", "up L " + Px(-50, -50)});
    EXPECT_EQ(f.Points(0), (PointList{{0, 0}, {-50, 0}, {-50, -50}}));
    EXPECT_EQ(f.s().config.MessageScale, 0);
    EXPECT_EQ(f.s().canUndo, 1);
}

TEST(Rescale, EdgeHandleKeepsTheOtherAxis)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    f.Run({"command MnuErescale", "down L " + Px(-1, 50), "move " + Px(-101, 80), "up L " + Px(-101, 80)});
    // Left edge: anchored at the right, twice as wide, Y untouched.
    EXPECT_EQ(f.Points(0), (PointList{{-100, 0}, {100, 0}, {100, 100}}));
    // A click off the box pans and drops the ghost.
    f.Run({"command MnuErescale", "down L " + Px(300, 250)});
    EXPECT_EQ(f.s().editor.EditState, 7);
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, -1);
}

TEST(Rescale, DialogZeroIsHeldToTwoUnitsAndHundredDoesNothing)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
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
    EditorFixture f(1.0);
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
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {50, 10}, {50, 100}}, "concave");
    f.AddShape(kWideLine, {{0, 200}, {100, 200}});
    ASSERT_EQ(f.s().stores.ShapeStore[0].gIsConcave, 1);
    f.SelectShape(0);
    f.Run({"answer ok", "command MnuSconvertshapeto"});
    EXPECT_EQ(f.s().stores.ShapeStore[0].gIsConcave, 0) << "the default's value, not recomputed";
    EXPECT_EQ(f.s().stores.ShapeStore[0].gComment, "[No comment]");
    EXPECT_EQ(f.s().stores.ShapeStore[0].gLimits, (Limits{0, 100, 0, 100}));
    EXPECT_EQ(f.s().dirty, 1);
    EXPECT_EQ(f.s().canUndo, 0);
    f.SelectShape(1);
    f.Run({"answer index 4", "command MnuSconvertshapeto"});
    EXPECT_EQ(f.s().stores.ShapeStore[0].gType, kForest);
    EXPECT_EQ(f.s().stores.ShapeStore[1].gType, kForest);
    EXPECT_EQ(f.Kinds().back(), "tip");
    f.Run({"command MnuSconvertshapeto"}); // closed: nothing
    EXPECT_EQ(f.s().stores.ShapeStore[1].gType, kForest);
}

struct ArrangeFixture : EditorFixture {
    ArrangeFixture() : EditorFixture(1.0)
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

TEST(Arrange, SelectionOrderWinsAndNothingIsMarked)
{
    ArrangeFixture f;
    f.SelectShape(2);
    f.SelectShape(0);
    f.SelectObject(0);
    f.Run({"command MnuSfront"});
    EXPECT_EQ(f.Order(), "s1s3s2s0");
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{2, 3}));
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    f.Run({"command MnuSfront"});
    EXPECT_EQ(f.Order(), "s1s3s2s0");
    f.Run({"command MnuSback"});
    EXPECT_EQ(f.Order(), "s2s0s1s3");
    EXPECT_EQ(f.s().dirty, 0);
    EXPECT_EQ(f.s().canUndo, 0);
}

// Every shape selected is a scenario script; objects alone change nothing either.
TEST(Arrange, ObjectsOnlyChangeNothing)
{
    ArrangeFixture f;
    f.SelectObject(0);
    SendToBack(f.s());
    EXPECT_EQ(f.Order(), "s0s1s2s3");
}

TEST(Arrange, ModeButtons)
{
    ArrangeFixture f;
    f.SelectShape(1);
    f.s().editor.selection.setState(3);
    f.Run({"tool mLayer"});
    EXPECT_EQ(f.s().view.mMode(), 1);
    EXPECT_EQ(f.s().editor.selection.state(), 1);
    EXPECT_EQ(f.Kinds(), std::vector<std::string>{"tip"});
    EXPECT_EQ(f.s().editor.topMenuEnabled, (std::array<bool, 5>{false, false, true, false, false}));
    EXPECT_FALSE(f.s().editor.toolEnabled[0]);
    EXPECT_TRUE(f.s().editor.toolEnabled[14]);
    // The right button over a hit opens the arrange menu.
    f.Run({"down R " + Px(10, 0), "up R " + Px(10, 0)});
    EXPECT_EQ(f.ui().Popups(), std::vector<std::string>{"MnuClick3"});
    f.Run({"command MnuC3bringtofront"});
    EXPECT_EQ(f.Order(), "s0s2s3s1");
    f.Run({"tool mEdit"});
    EXPECT_EQ(f.s().view.mMode(), 0);
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{3}));
    EXPECT_TRUE(f.s().editor.toolEnabled[0]);
    // With the tip switched off the mode comes straight.
    f.s().config.MessageLayer = 0;
    f.Run({"tool mLayer"});
    EXPECT_EQ(f.Kinds().size(), 2u); // the tip and the popup
}

} // namespace
} // namespace fw::test
