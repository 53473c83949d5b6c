// The view transform, hit testing and the selection's own rules.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/Commands.h"
#include "editor/Selection.h"

namespace fw::test {
namespace {

TEST(View, CentreRoundsHalfToEvenAndClampedOnlyWhenAsked)
{
    COffset v;
    v.setSWidth(801);
    v.setSHeight(600);
    v.reset();
    EXPECT_EQ(v.centX(), 400);
    EXPECT_EQ(ScreenToWorld(v, 400, 300).X, 0); // pixel 400 shows world X 0
    v.setSWidth(803);
    v.resize();
    EXPECT_EQ(v.centX(), 402);
    EXPECT_EQ(v.zoom(), 0.25);

    v.setSWidth(1400);
    v.reset();
    v.setZoom(0.0625);
    EXPECT_GT(ScreenToWorld(v, 1399, 0).X, 10000);
    EXPECT_EQ(ScreenToWorldClamped(v, 1399, 0).X, 10000);
}

TEST(View, ZoomStepsStopAtTheEnds)
{
    EditorFixture f(4.0);
    ZoomStep(f.s(), true);
    EXPECT_EQ(f.s().view.zoom(), 4.0);
    ZoomStep(f.s(), false);
    EXPECT_EQ(f.s().view.zoom(), 3.0);
    f.s().view.setZoom(0.0625);
    ZoomStep(f.s(), false);
    EXPECT_EQ(f.s().view.zoom(), 0.0625);
    ZoomStep(f.s(), true);
    EXPECT_EQ(f.s().view.zoom(), 0.125);
    f.s().view.setZoom(0.3); // no row: no step
    ZoomStep(f.s(), true);
    EXPECT_EQ(f.s().view.zoom(), 0.3);
    EXPECT_TRUE(f.ui().log.empty());
}

// The world point under a pixel, unrounded: what the wheel keeps in place.
double WorldXAt(const COffset& v, int px) { return (px - v.centX()) / v.zoom() - v.offX(); }
double WorldYAt(const COffset& v, int py) { return (py - v.centY()) / v.zoom() - v.offY(); }

TEST(View, WheelZoomsThroughTheLevelsAboutThePointUnderThePointer)
{
    EditorFixture f(0.25);
    COffset& v = f.s().view;
    v.setOffX(120);
    v.setOffY(-40);
    const int px = 700, py = 100;
    const double wx = WorldXAt(v, px), wy = WorldYAt(v, py);
    // Each call rounds the offset once: the point drifts by at most half a world unit a call.
    int calls = 0;
    WheelZoom(f.s(), 1, px, py);
    ++calls;
    EXPECT_EQ(v.zoom(), 0.5);
    EXPECT_NEAR(WorldXAt(v, px), wx, 0.5 * calls);
    EXPECT_NEAR(WorldYAt(v, py), wy, 0.5 * calls);
    EXPECT_EQ(v.offX(), 120 + (700 - 400) * (2 - 4)); // 1 / 0.5 - 1 / 0.25
    EXPECT_EQ(v.offY(), -40 + (100 - 300) * (2 - 4));
    // And it is painted where it was: the forward map of the world point lands on the pixel.
    EXPECT_NEAR(v.PixelX(wx), px, 1);
    EXPECT_NEAR(v.PixelY(wy), py, 1);

    // Three notches at once go three rows; the table ends at 400 %, the rest is dropped.
    WheelZoom(f.s(), 3, px, py);
    ++calls;
    EXPECT_EQ(v.zoom(), 3.0);
    EXPECT_NEAR(WorldXAt(v, px), wx, 0.5 * calls);
    WheelZoom(f.s(), 5, px, py);
    ++calls;
    EXPECT_EQ(v.zoom(), 4.0);
    EXPECT_NEAR(WorldXAt(v, px), wx, 0.5 * calls);
    EXPECT_NEAR(v.PixelX(wx), px, 0.5 * calls * 4 + 1);
    const std::int32_t ox = v.offX();
    WheelZoom(f.s(), 1, 10, 10); // at 400 %: nothing, not even the offset
    EXPECT_EQ(v.zoom(), 4.0);
    EXPECT_EQ(v.offX(), ox);

    // Back out through every level about the same pixel.
    for (double z : {3.0, 2.0, 1.0, 0.5, 0.25, 0.125, 0.0625}) {
        WheelZoom(f.s(), -1, px, py);
        ++calls;
        EXPECT_EQ(v.zoom(), z);
        EXPECT_NEAR(WorldXAt(v, px), wx, 0.5 * calls) << z;
        EXPECT_NEAR(WorldYAt(v, py), wy, 0.5 * calls) << z;
    }
    WheelZoom(f.s(), -1, px, py);
    EXPECT_EQ(v.zoom(), 0.0625);
    // At the centre pixel the offset stays: that is the zoom of the keys.
    v.setOffX(77);
    v.setOffY(-33);
    WheelZoom(f.s(), 2, 400, 300);
    EXPECT_EQ(v.zoom(), 0.25);
    EXPECT_EQ(v.offX(), 77);
    EXPECT_EQ(v.offY(), -33);
    EXPECT_TRUE(f.ui().log.empty());
}

TEST(View, WheelHoldsTheOffsetAsAPanDoesButNeverPullsItIn)
{
    EditorFixture f(0.0625);
    COffset& v = f.s().view;
    v.setOffX(-9000);
    // Zoom in at the right edge: the centre would go past the work area's east end.
    WheelZoom(f.s(), 1, 799, 300);
    EXPECT_EQ(v.zoom(), 0.125);
    EXPECT_EQ(v.offX(), -10000);
    // Beyond the work area after "Center here" (world -14000 at the centre): the wheel doesn't
    // jump back into the work area, and takes the view no further out.
    v.setOffX(14000);
    v.setOffY(0);
    WheelZoom(f.s(), 1, 400, 300);
    EXPECT_EQ(v.zoom(), 0.25);
    EXPECT_EQ(v.offX(), 14000);
    WheelZoom(f.s(), 1, 0, 300); // in about a point further west: the centre would follow it
    EXPECT_EQ(v.zoom(), 0.5);
    EXPECT_EQ(v.offX(), 14000);
    WheelZoom(f.s(), -1, 0, 300); // out about it: the centre goes east, toward the work area
    EXPECT_EQ(v.zoom(), 0.25);
    EXPECT_EQ(v.offX(), 14000 + (0 - 400) * (4 - 2));
}

TEST(View, WheelIsTheIdleCanvasOnlyAndChangesNothingElse)
{
    EditorFixture f(1.0);
    COffset& v = f.s().view;
    // A shape being drawn: the wheel leaves the view and the drawing alone.
    f.Run({"tool poly", "down L 400 300", "up L 400 300", "move 500 300"});
    const int state = f.s().editor.EditState;
    ASSERT_NE(state, 0);
    WheelZoom(f.s(), 1, 500, 300);
    EXPECT_EQ(v.zoom(), 1.0);
    EXPECT_EQ(v.offX(), 0);
    EXPECT_EQ(f.s().editor.EditState, state);

    // A zoom that is no row of the table steps nowhere, as the keys.
    EditorFixture g(1.0);
    g.s().view.setZoom(0.3);
    WheelZoom(g.s(), 1, 100, 100);
    EXPECT_EQ(g.s().view.zoom(), 0.3);
    EXPECT_EQ(g.s().view.offX(), 0);

    // Idle with a selection in drag mode: the selection, the stores and the undo stay as they were.
    EditorFixture h(1.0);
    const int shape = h.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    h.SelectShape(shape);
    h.s().editor.selection.setState(3);
    const auto dirty = h.s().dirty;
    const auto selected = h.s().editor.selection.SelShapeCount();
    WheelZoom(h.s(), -1, 600, 200);
    EXPECT_EQ(h.s().view.zoom(), 0.5);
    EXPECT_EQ(h.s().editor.selection.state(), 3);
    EXPECT_EQ(h.s().editor.selection.SelShapeCount(), selected);
    EXPECT_EQ(h.s().dirty, dirty);
    EXPECT_EQ(h.s().stores.PointStore[shape][1].X, 100);
    EXPECT_EQ(h.s().editor.EditState, 0);
}

TEST(View, ResizeKeepsTheCentreAndZoom)
{
    EditorFixture f(2.0);
    f.s().view.setOffX(-50);
    f.Run({"canvas 1000 700"});
    EXPECT_EQ(f.s().view.centX(), 500);
    EXPECT_EQ(f.s().view.offX(), -50);
    EXPECT_EQ(f.s().view.zoom(), 2.0);
}

TEST(View, PanIsClampedButCenterHereIsNot)
{
    EditorFixture f(0.0625);
    // Drag the empty canvas far to the right: the offset is held at the work area.
    f.Run({"down L 10 10", "move 790 10"});
    EXPECT_EQ(f.s().view.offX(), 0) << "a pan only previews while the button is held";
    f.Run({"up L 790 10"});
    EXPECT_EQ(f.s().view.offX(), 10000);
    EXPECT_EQ(f.s().editor.EditState, 0);
    // Right click on empty canvas far out, then "Center here".
    f.Run({"down R 0 0", "up R 0 0"});
    EXPECT_EQ(f.ui().Popups().back(), "MnuClick2");
    const Point ctx = f.s().editor.memory.ContextPoint;
    f.Run({"command MnuC2centerHere"});
    EXPECT_EQ(f.s().view.offX(), -ctx.X);
    EXPECT_GT(f.s().view.offX(), 10000); // past the work area by the distance to the click
}

TEST(Selection, ClickBoxIsHalfOpenForRecordsAndStrictForPoints)
{
    EditorFixture f(1.0);
    const int atLow = f.AddShape(kPoly, {{97, 100}, {150, 150}, {97, 200}});
    const int atHigh = f.AddShape(kPoly, {{103, 100}, {150, 150}, {103, 200}});
    EXPECT_EQ(SelectAt(f.s(), 100, 100, 100, 100, 1), atLow);
    EXPECT_EQ(f.s().editor.selection.firstShape(), atLow);

    // Points: 97 < X < 103, so a point at 97 isn't hit.
    f.s().editor.selection.reset();
    const int line = f.AddShape(kWideLine, {{97, 400}, {100, 400}, {103, 400}});
    f.SelectShape(line);
    EXPECT_EQ(SelectPointsAt(f.s(), 100, 100, 400, 400, 1), 0);
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{1}));
    // No hit keeps the points, and the query then says -1.
    EXPECT_EQ(SelectPointsAt(f.s(), 300, 300, 300, 300, 1), 0);
    EXPECT_EQ(f.s().editor.selection.SelPoints(), (std::vector<std::uint16_t>{1}));
    EXPECT_EQ(SelectPointsAt(f.s(), 300, 300, 300, 300, 0), -1);
    EXPECT_EQ(SelectPointsAt(f.s(), 100, 100, 400, 400, 0), 1);
    EXPECT_EQ(SelectPointsAt(f.s(), 97, 97, 400, 400, 0), 0); // first hit 97 is not selected
    // Points need exactly one shape selected.
    f.SelectShape(atHigh);
    EXPECT_EQ(SelectPointsAt(f.s(), 100, 100, 400, 400, 0), 0);
}

TEST(Selection, OutlineDoesNotHitAndEmptyClickPans)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {200, 0}, {200, 200}});
    f.Run({"down L " + Px(100, 0)});
    EXPECT_EQ(f.s().editor.EditState, 7);
    EXPECT_EQ(f.s().editor.selection.sizeShape(), -1);
    EXPECT_EQ(f.s().editor.selection.firstShape(), 65535);
}

TEST(Selection, TwoRecordsOnOnePointAsk)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{10, 10}, {50, 10}, {50, 50}}, "apron");
    f.AddShape(kWideLine, {{10, 10}, {80, 80}}, "[No comment]");
    f.AddObject(kVor, 11, 9);
    f.Answer("index 0");
    EXPECT_EQ(SelectAt(f.s(), 10, 10, 10, 10, 1), 0);
    ASSERT_EQ(f.ui().log.size(), 1u);
    EXPECT_EQ(f.ui().log[0].kind, "selection");
    EXPECT_EQ(f.ui().log[0].text, "apron - Poly|[No comment] - Line/Road|VOR");
    EXPECT_EQ(f.s().editor.selection.SelShapes(), (std::vector<std::uint16_t>{0}));
    // Nothing queued: the form closes on the entry it started on, the last: the object.
    EXPECT_EQ(SelectAt(f.s(), 10, 10, 10, 10, 1), 0);
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(f.s().editor.selection.sizeShape(), -1);
}

TEST(Selection, HiddenTypesCantBeHit)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{10, 10}, {50, 10}, {50, 50}});
    f.s().showFlags.ShowPoly = 0;
    EXPECT_EQ(SelectAt(f.s(), 10, 10, 10, 10, 1), -1);
    EXPECT_EQ(SelectAt(f.s(), 0, 100, 0, 100, 1), -1);
    f.s().showFlags.ShowPoly = 1;
    EXPECT_EQ(SelectAt(f.s(), 0, 100, 0, 100, 1), 0);
}

TEST(Selection, RubberBandReplacesOrKeeps)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{10, 10}, {50, 10}, {50, 50}});
    f.AddObject(kNdb, 30, 70);
    f.AddObject(kNdb, 300, 300);
    EXPECT_EQ(SelectAt(f.s(), 300, 300, 300, 300, 1), 1);
    // No hit: the old selection stays.
    EXPECT_EQ(SelectAt(f.s(), 500, 600, 500, 600, 1), -1);
    EXPECT_EQ(f.s().editor.selection.SelObjects(), (std::vector<std::uint16_t>{1}));
    // The right and lower bounds are open: the object at Y 70 needs yMax above 70.
    EXPECT_EQ(SelectAt(f.s(), 0, 100, 0, 70, 1), 0);
    EXPECT_EQ(f.s().editor.selection.sizeObject(), -1);
    EXPECT_EQ(SelectAt(f.s(), 0, 100, 0, 71, 1), 0);
    EXPECT_EQ(f.s().editor.selection.sizeObject(), 0);
    EXPECT_EQ(f.s().editor.selection.getLimits(), (Limits{10, 50, 10, 70}));
}

TEST(Selection, DragModeClickOnlyAsksRubberBandSelects)
{
    EditorFixture f(1.0);
    f.AddObject(kNdb, 0, 0);
    f.AddObject(kNdb, 100, 0);
    f.SelectObject(0);
    f.s().editor.selection.setState(3);
    EXPECT_EQ(SelectAt(f.s(), 100, 100, 0, 0, 0), 0);
    EXPECT_EQ(SelectAt(f.s(), 0, 0, 0, 0, 0), 1);
    EXPECT_EQ(f.s().editor.selection.state(), 3);
    SelectAt(f.s(), 50, 150, -10, 10, 1);
    EXPECT_EQ(f.s().editor.selection.state(), 1);
}

TEST(Selection, SquareBandsAreStrict)
{
    CSelection sel;
    sel.addEntry(0, 0, 0, 100, 0, 50); // min X, max X, min Y, max Y
    const int cases[][3] = {{0, 0, 5},  {0, 50, 7}, {2, 25, 1},  {3, 25, 0},  {100, 0, 6},  {100, 50, 8},
                            {98, 25, 2}, {50, -2, 3}, {50, 52, 4}, {-3, 25, 0}, {50, 25, 0}};
    for (const auto& [x, y, where] : cases)
        EXPECT_EQ(sel.squareIsWhere(x, y, 3), where) << x << ", " << y;
}

TEST(Selection, ResetLeavesPointZeroAndAddPtAppends)
{
    CSelection sel;
    EXPECT_EQ(sel.SelPoints(), (std::vector<std::uint16_t>{0}));
    sel.addPt(4);
    EXPECT_EQ(sel.SelPoints(), (std::vector<std::uint16_t>{0, 4}));
    sel.resetPt();
    sel.addPt(4);
    EXPECT_EQ(sel.SelPoints(), (std::vector<std::uint16_t>{4}));
    EXPECT_EQ(sel.simpleSelection(), 3);
    sel.addEntry(2, 0, 0, 0, 0, 0);
    EXPECT_EQ(sel.simpleSelection(), 2);
}

TEST(Selection, TypeInSelectionSearchesTheRightList)
{
    EditorFixture f(1.0);
    f.AddShape(kForest, {{0, 0}, {10, 0}, {10, 10}});
    f.AddObject(kSign, 5, 5);
    f.SelectShape(0);
    f.SelectObject(0);
    EXPECT_EQ(TypeInSelection(f.s(), kForest), 1);
    EXPECT_EQ(TypeInSelection(f.s(), kSign), 1);
    EXPECT_EQ(TypeInSelection(f.s(), kPoly), 0);
    EXPECT_EQ(TypeInSelection(f.s(), 14), 0);
}

} // namespace
} // namespace fw::test
