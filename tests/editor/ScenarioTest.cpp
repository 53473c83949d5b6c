// Edge cases of the canvas, played from scripts as a user would play them.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"

namespace fw::test {
namespace {

TEST(Scenario, TexPolyFourthClick)
{
    Scenario sc("texpoly_fourth_click.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    ASSERT_EQ(sc.s().stores.ShapeCount(), 1);
    EXPECT_EQ(sc.s().stores.PointStore[0], (PointList{{0, 0}, {200, 0}, {200, 100}, {0, 100}}));
    // Width 200 is the larger side: 255 / 200 per unit, a double just below 1.275, so 100 units
    // give 127.4999... and round down.
    EXPECT_EQ(sc.s().stores.ShapeStore[0].mTexMap, (std::array<std::int32_t, 8>{0, 0, 255, 0, 255, 127, 0, 127}));
    EXPECT_EQ(sc.s().editor.EditState, 7) << "the fifth click lands on empty canvas and pans";
}

TEST(Scenario, TooFewPoints)
{
    Scenario sc("too_few_points.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    EXPECT_EQ(sc.s().stores.ShapeCount(), 0);
    EXPECT_EQ(sc.s().editor.EditState, 1) << "the disabled mEdit button can't end the tool";
    EXPECT_EQ(sc.s().editor.draw.PointIndex(), 2);
}

TEST(Scenario, RightClickWhileDrawing)
{
    Scenario sc("flatten_right_click.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    EXPECT_EQ(sc.replay->ui.Popups(), std::vector<std::string>{"MnuClick2"});
    EXPECT_EQ(sc.s().editor.EditState, 6);
    EXPECT_EQ(sc.s().stores.ShapeCount(), 1) << "the line stays though its dialog was closed";
}

TEST(Scenario, SidewaysDragIsNotUndoable)
{
    Scenario sc("sideways_drag.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    EXPECT_NE(ReadFileText((sc.dir / "sideways.json").string()).find("[[50, 0], [150, 0]]"), std::string::npos);
    EXPECT_EQ(sc.s().stores.ShapeCount(), 0) << "undo took back the drawing, the older change";
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
    EXPECT_EQ(sc.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{0, 1}));
}

} // namespace
} // namespace fw::test
