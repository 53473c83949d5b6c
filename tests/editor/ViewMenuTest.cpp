// The view transform and zoom, hit testing, the selection's own rules, the menu tick and the status.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/Commands.h"
#include "editor/Selection.h"

namespace fw::test {
namespace {

TEST(View, CentreRoundsHalfToEvenResizeKeepsItAndClampedOnlyWhenAsked)
{
    COffset v;
    v.setSWidth(801);
    v.setSHeight(600);
    v.reset();
    EXPECT_EQ(v.centX(), 400);
    EXPECT_EQ(ScreenToWorld(v, 400, 300).X, 0);
    v.setSWidth(803);
    v.setZoom(2.0);
    v.setOffX(-50);
    v.resize();
    EXPECT_EQ(v.centX(), 402);
    EXPECT_EQ(v.offX(), -50);
    EXPECT_EQ(v.zoom(), 2.0);
    v.setSWidth(1400);
    v.reset();
    EXPECT_EQ(v.zoom(), 0.25);
    v.setZoom(0.0625);
    EXPECT_GT(ScreenToWorld(v, 1399, 0).X, 10000);
    EXPECT_EQ(ScreenToWorldClamped(v, 1399, 0).X, 10000);
}

TEST(View, ZoomStepsStopAtTheEndsAndOffTheTable)
{
    EditorFixture f(4.0);
    const std::tuple<double, bool, double> steps[] = {
        {4.0, true, 4.0}, {4.0, false, 3.0}, {0.0625, false, 0.0625}, {0.0625, true, 0.125}, {0.3, true, 0.3}};
    for (const auto& [from, in, to] : steps) {
        f.s().view.setZoom(from);
        ZoomStep(f.s(), in);
        EXPECT_EQ(f.s().view.zoom(), to) << from << (in ? " in" : " out");
        // The wheel steps through the same table, and off it nowhere.
        f.s().view.setZoom(from);
        WheelZoom(f.s(), in ? 1 : -1, 400, 300);
        EXPECT_EQ(f.s().view.zoom(), to) << from << (in ? " in" : " out");
    }
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
    WheelZoom(f.s(), 1, px, py);
    EXPECT_EQ(v.zoom(), 0.5);
    EXPECT_EQ(v.offX(), 120 + (700 - 400) * (2 - 4)); // 1 / 0.5 - 1 / 0.25
    EXPECT_EQ(v.offY(), -40 + (100 - 300) * (2 - 4));
    EXPECT_NEAR(v.PixelX(wx), px, 1) << "painted where it was";
    EXPECT_NEAR(v.PixelY(wy), py, 1);
    // Three notches go three rows; the table ends at 400 % and the rest is dropped; then back out
    // through every level. Each call rounds the offset once: a drift of half a unit a call at most.
    const std::pair<int, double> steps[] = {{3, 3.0},  {5, 4.0},   {-1, 3.0},   {-1, 2.0},   {-1, 1.0},
                                            {-1, 0.5}, {-1, 0.25}, {-1, 0.125}, {-1, 0.0625}};
    int calls = 1;
    for (const auto& [notches, zoom] : steps) {
        WheelZoom(f.s(), notches, px, py);
        ++calls;
        EXPECT_EQ(v.zoom(), zoom);
        EXPECT_NEAR(WorldXAt(v, px), wx, 0.5 * calls) << zoom;
        EXPECT_NEAR(WorldYAt(v, py), wy, 0.5 * calls) << zoom;
        if (zoom == 4.0) {
            const std::int32_t ox = v.offX();
            WheelZoom(f.s(), 1, 10, 10);
            EXPECT_EQ(v.offX(), ox) << "at 400 % nothing changes, not even the offset";
        }
    }
    // At the centre pixel the offset stays: that is the zoom of the keys.
    v.setOffX(77);
    v.setOffY(-33);
    WheelZoom(f.s(), 2, 400, 300);
    EXPECT_EQ(v.zoom(), 0.25);
    EXPECT_EQ(v.offX(), 77);
    EXPECT_EQ(v.offY(), -33);
}

TEST(View, WheelHoldsTheOffsetAsAPanDoesButNeverPullsItIn)
{
    EditorFixture f(0.0625);
    COffset& v = f.s().view;
    v.setOffX(-9000);
    // Zoom in at the right edge: the centre would go past the work area's east end.
    WheelZoom(f.s(), 1, 799, 300);
    EXPECT_EQ(v.offX(), -10000);
    // Beyond the work area after "Center here": the wheel doesn't jump back into the work area,
    // and takes the view no further out.
    v.setOffX(14000);
    WheelZoom(f.s(), 1, 400, 300);
    EXPECT_EQ(v.offX(), 14000);
    WheelZoom(f.s(), 1, 0, 300); // in about a point further west: the centre would follow it
    EXPECT_EQ(v.zoom(), 0.5);
    EXPECT_EQ(v.offX(), 14000);
    WheelZoom(f.s(), -1, 0, 300); // out about it: the centre goes east, toward the work area
    EXPECT_EQ(v.offX(), 14000 + (0 - 400) * (4 - 2));
}

TEST(View, WheelIsTheIdleCanvasOnlyAndChangesNothingElse)
{
    EditorFixture f;
    f.Run({"tool poly", "down L 400 300", "up L 400 300", "move 500 300"});
    WheelZoom(f.s(), 1, 500, 300);
    EXPECT_EQ(f.s().view.zoom(), 1.0) << "not while a shape is drawn";
    EXPECT_EQ(f.s().editor.EditState, 1);
    // Idle with a selection in drag mode: the selection, the stores and the undo stay as they were.
    EditorFixture h;
    h.SelectShape(h.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    h.Sel().setState(3);
    WheelZoom(h.s(), -1, 600, 200);
    EXPECT_EQ(h.s().view.zoom(), 0.5);
    EXPECT_EQ(h.Sel().state(), 3);
    EXPECT_EQ(h.Sel().SelShapes(), Ids{0});
    EXPECT_EQ(h.Marked(), (std::pair{0, 0}));
    EXPECT_EQ(h.Points(0)[1].X, 100);
}

TEST(View, PanIsClampedButCenterHereIsNot)
{
    EditorFixture f(0.0625);
    f.Run({"down L 10 10", "move 790 10"});
    EXPECT_EQ(f.s().view.offX(), 0) << "a pan only previews while the button is held";
    f.Run({"up L 790 10"});
    EXPECT_EQ(f.s().view.offX(), 10000);
    EXPECT_EQ(f.s().editor.EditState, 0);
    f.Run({"down R 0 0", "up R 0 0"});
    EXPECT_EQ(f.ui().Popups().back(), "MnuClick2");
    const Point ctx = f.s().editor.memory.ContextPoint;
    f.Run({"command MnuC2centerHere"});
    EXPECT_EQ(f.s().view.offX(), -ctx.X);
    EXPECT_GT(f.s().view.offX(), 10000); // past the work area by the distance to the click
}

TEST(Selection, ClickBoxIsHalfOpenForRecordsAndStrictForPoints)
{
    EditorFixture f;
    const int atLow = f.AddShape(kPoly, {{97, 100}, {150, 150}, {97, 200}});
    const int atHigh = f.AddShape(kPoly, {{103, 100}, {150, 150}, {103, 200}});
    EXPECT_EQ(SelectAt(f.s(), 100, 100, 100, 100, 1), atLow);
    EXPECT_EQ(f.Sel().firstShape(), atLow);
    // Points: 97 < X < 103, so a point at 97 isn't hit.
    f.Sel().reset();
    const int line = f.AddShape(kWideLine, {{97, 400}, {100, 400}, {103, 400}});
    f.SelectShape(line);
    EXPECT_EQ(SelectPointsAt(f.s(), 100, 100, 400, 400, 1), 0);
    EXPECT_EQ(f.Sel().SelPoints(), Ids{1});
    // No hit keeps the points, and the query then says -1.
    EXPECT_EQ(SelectPointsAt(f.s(), 300, 300, 300, 300, 1), 0);
    EXPECT_EQ(f.Sel().SelPoints(), Ids{1});
    EXPECT_EQ(SelectPointsAt(f.s(), 300, 300, 300, 300, 0), -1);
    EXPECT_EQ(SelectPointsAt(f.s(), 100, 100, 400, 400, 0), 1);
    EXPECT_EQ(SelectPointsAt(f.s(), 97, 97, 400, 400, 0), 0); // first hit 97 is not selected
    // Points need exactly one shape selected.
    f.SelectShape(atHigh);
    EXPECT_EQ(SelectPointsAt(f.s(), 100, 100, 400, 400, 0), 0);
}

TEST(Selection, OutlineAndHiddenTypesDontHit)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {200, 0}, {200, 200}});
    f.Run({"down L " + Px(100, 0)});
    EXPECT_EQ(f.s().editor.EditState, 7) << "an empty click pans";
    EXPECT_EQ(f.Sel().sizeShape(), -1);
    EXPECT_EQ(f.Sel().firstShape(), 65535);
    f.s().showFlags.ShowPoly = 0;
    EXPECT_EQ(SelectAt(f.s(), 0, 0, 0, 0, 1), -1);
    EXPECT_EQ(SelectAt(f.s(), -10, 300, -10, 300, 1), -1);
    f.s().showFlags.ShowPoly = 1;
    EXPECT_EQ(SelectAt(f.s(), -10, 300, -10, 300, 1), 0);
}

TEST(Selection, TwoRecordsOnOnePointAsk)
{
    EditorFixture f;
    f.AddShape(kPoly, {{10, 10}, {50, 10}, {50, 50}}, "apron");
    f.AddShape(kWideLine, {{10, 10}, {80, 80}}, "[No comment]");
    f.AddObject(kVor, 11, 9);
    f.Run({"answer index 0"});
    EXPECT_EQ(SelectAt(f.s(), 10, 10, 10, 10, 1), 0);
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"selection"});
    EXPECT_EQ(f.ui().log[0].text, "apron - Poly|[No comment] - Line/Road|VOR");
    EXPECT_EQ(f.Sel().SelShapes(), Ids{0});
    // Nothing queued: the form closes on the entry it started on, the last: the object.
    EXPECT_EQ(SelectAt(f.s(), 10, 10, 10, 10, 1), 0);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
    EXPECT_EQ(f.Sel().sizeShape(), -1);
}

TEST(Selection, RubberBandReplacesOrKeepsAndDragModeClicksOnlyAsk)
{
    EditorFixture f;
    f.AddShape(kPoly, {{10, 10}, {50, 10}, {50, 50}});
    f.AddObject(kNdb, 30, 70);
    f.AddObject(kNdb, 300, 300);
    EXPECT_EQ(SelectAt(f.s(), 300, 300, 300, 300, 1), 1);
    EXPECT_EQ(SelectAt(f.s(), 500, 600, 500, 600, 1), -1);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{1}) << "no hit: the old selection stays";
    // The right and lower bounds are open: the object at Y 70 needs yMax above 70.
    EXPECT_EQ(SelectAt(f.s(), 0, 100, 0, 70, 1), 0);
    EXPECT_EQ(f.Sel().sizeObject(), -1);
    EXPECT_EQ(SelectAt(f.s(), 0, 100, 0, 71, 1), 0);
    EXPECT_EQ(f.Sel().sizeObject(), 0);
    EXPECT_EQ(f.Sel().getLimits(), (Limits{10, 50, 10, 70}));
    // In drag mode a click only asks whether it hits the selection; a rubber band selects and
    // leaves drag mode.
    f.Sel().setState(3);
    EXPECT_EQ(SelectAt(f.s(), 300, 300, 300, 300, 0), 0);
    EXPECT_EQ(SelectAt(f.s(), 30, 30, 70, 70, 0), 1);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{0});
    EXPECT_EQ(f.Sel().state(), 3);
    SelectAt(f.s(), 250, 350, 250, 350, 1);
    EXPECT_EQ(f.Sel().SelObjects(), Ids{1});
    EXPECT_EQ(f.Sel().state(), 1);
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

// The flag the tick writes for an item; an item it leaves alone is a fault.
bool Flag(const MenuState& m, const std::string& item, std::optional<bool> MenuItemState::*flag)
{
    const auto it = m.items.find(item);
    if (it == m.items.end() || !(it->second.*flag))
        throw std::runtime_error(item + " not written");
    return *(it->second.*flag);
}
void ExpectFlags(const MenuState& m, std::initializer_list<std::pair<const char*, bool>> items,
                 std::optional<bool> MenuItemState::*flag = &MenuItemState::enabled)
{
    for (const auto& [item, on] : items)
        EXPECT_EQ(Flag(m, item, flag), on) << item;
}

TEST(MenuState, NothingSelected)
{
    EditorFixture f(0.25);
    MenuState m = ComputeMenuState(f.s());
    for (const char* item : {"MnuEcopy", "MnuEdelete", "MnuEflipx", "MnuEflipy", "MnuErescale", "MnuErotate", "MnuEdrot",
                             "MnuEdscale", "MnuEundo", "MnuEpaste", "MnuFexport", "MnuFrecent1", "MnuBedit"})
        EXPECT_FALSE(Flag(m, item, &MenuItemState::enabled)) << item;
    ExpectFlags(m, {{"MnuFimportshape", true}});
    ExpectFlags(m, {{"MnuSselectshape", true}, {"MnuC225", true}, {"MnuC2100", false}, {"MnuBshowgrid", true}},
                &MenuItemState::checked);
    EXPECT_EQ(m.items.count("MnuFnew"), 0u) << "items the tick never writes";
    EXPECT_EQ(m.items.count("MnuBshowall"), 0u);
    EXPECT_EQ(m.panel6, "25 %");
    EXPECT_EQ(m.panel3, "");
    f.s().canUndo = 1;
    f.s().canPaste = 1;
    ExpectFlags(ComputeMenuState(f.s()), {{"MnuEundo", true}, {"MnuEpaste", true}});
    f.s().view.setZoom(0.0625);
    EXPECT_EQ(ComputeMenuState(f.s()).panel6, "6.25 %");
}

TEST(MenuState, OneObjectHasABoxOfNoSize)
{
    EditorFixture f;
    f.SelectObject(f.AddObject(kRunway, 10, 10));
    ExpectFlags(ComputeMenuState(f.s()),
                {{"MnuEflipx", false}, {"MnuEflipy", false}, {"MnuErescale", false}, {"MnuErotate", false},
                 {"MnuEdrot", false}, {"MnuEdscale", false}, {"MnuEcopy", true}, {"MnuEdelete", true},
                 {"MnuSshapeproperties", true}, {"MnuSeditpoints", false}, {"MnuSconvertshapeto", false},
                 {"MnuBshowrunway", false}, {"MnuBshowpoly", true}, {"MnuFexport", true}});
    // A second object elsewhere gives the box a size.
    f.SelectObject(f.AddObject(kVor, 10, 40));
    ExpectFlags(ComputeMenuState(f.s()),
                {{"MnuEflipx", true}, {"MnuBshownavigation", false}, {"MnuSshapeproperties", false}});
}

TEST(MenuState, SelectedPolyLocksItsToggleAndFlattenHasNoProperties)
{
    EditorFixture f;
    f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}});
    f.AddShape(kFlatten, {{0, 50}, {10, 50}, {10, 60}});
    f.Run({"down L " + Px(0, 0), "up L " + Px(0, 0)});
    ExpectFlags(ComputeMenuState(f.s()), {{"MnuBshowpoly", false}, {"MnuBshowtexpoly", true},
                                          {"MnuSeditpoints", true}, {"MnuSshapeproperties", true}});
    f.Run({"down L " + Px(0, 50), "up L " + Px(0, 50)});
    ExpectFlags(ComputeMenuState(f.s()),
                {{"MnuBshowpoly", true}, {"MnuBshowexclude", false}, {"MnuSshapeproperties", false}});
    f.Run({"command MnuBshowexclude"});
    EXPECT_EQ(f.s().showFlags.ShowExclude, 1) << "a disabled item can't be chosen from the menu";
}

TEST(MenuState, ArrangeModeWritesOnlyTheSelectionMenu)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}}));
    f.s().config.MessageLayer = 0;
    f.Run({"tool mLayer"});
    const MenuState m = ComputeMenuState(f.s());
    ExpectFlags(m, {{"MnuSselectshape", false}, {"MnuSdragshape", false}, {"MnuSeditpoints", false},
                    {"MnuSshapeproperties", false}, {"MnuSconvertshapeto", false}, {"MnuSback", true},
                    {"MnuSfront", true}});
    EXPECT_EQ(m.items.count("MnuFsaveselection"), 0u);
    EXPECT_EQ(m.items.count("MnuEcopy"), 0u);
    ExpectFlags(m, {{"MnuC2100", true}}, &MenuItemState::checked);
    EXPECT_FALSE(m.topMenus.at("MnuFile"));
    EXPECT_TRUE(m.topMenus.at("MnuSelection"));
    EXPECT_FALSE(m.toolButtons.at("poly"));
    EXPECT_TRUE(m.toolButtons.at("mEdit"));
}

TEST(MenuState, ShowAllLeavesForestsAndSigns)
{
    EditorFixture f;
    auto& flags = f.s().showFlags;
    flags.ShowPoly = flags.ShowForest = flags.ShowSign = flags.ShowNav = 0;
    f.Run({"command MnuBshowall"});
    EXPECT_EQ((std::array{flags.ShowPoly, flags.ShowNav, flags.ShowForest, flags.ShowSign}),
              (std::array<decltype(flags.ShowPoly), 4>{1, 1, 0, 0}));
    ExpectFlags(ComputeMenuState(f.s()), {{"MnuBshowforest", false}}, &MenuItemState::checked);
}

TEST(Status, PositionInDegreesAndMinutes)
{
    // Reference, zoom, pixel, panels. At 6.25 % pixel (0,0) is 3200 m west and 2400 m north of the
    // reference, about 8.9946e-6 degrees a metre: 0.021587 and 0.028783 degrees rounded to 6 places.
    // At the pole r = 10 m: 10 m east is asin(0.1) = 5.739170 degrees a metre, 57.391705 degrees.
    const struct {
        double lat, lon, zoom;
        std::string pixel, panel4, panel5;
    } cases[] = {{-33.5, 151.25, 1.0, Px(0, 0), "33 30.00000'S", "151 15.00000'E"},
                 {0, 0, 0.0625, "0 0", "0 1.29522'N", "0 1.72698'W"},
                 {90, 0, 1.0, Px(20, 0), "90 0.00000'N", "57 23.50230'E"}};
    for (const auto& c : cases) {
        EditorFixture f(c.zoom);
        f.s().project.LatitudeDegree = c.lat;
        f.s().project.LongitudeDegree = c.lon;
        f.Run({"move " + c.pixel});
        const MenuState m = ComputeMenuState(f.s());
        EXPECT_EQ(m.panel4, c.panel4);
        EXPECT_EQ(m.panel5, c.panel5);
    }
}

TEST(Commands, PropertiesByDoubleClickAndHelpWithoutItsFile)
{
    EditorFixture f;
    f.AddShape(kFlatten, {{0, 0}, {10, 0}, {10, 10}});
    f.AddObject(kVor, 100, 100);
    f.SelectShape(0);
    f.Run({"dblclick " + Px(300, 200)});
    EXPECT_TRUE(f.ui().log.empty()) << "a flatten polygon has no properties";
    f.Run({"answer ok", "dblclick " + Px(100, 100)});
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"objectProperties"});
    EXPECT_EQ(f.Marked(), (std::pair{1, 0})) << "properties take no undo step";
    f.s().programFolder = "/nonexistent/";
    f.Run({"command MnuHhelp", "command MnuHhomepage"});
    ASSERT_EQ(f.ui().log.size(), 3u);
    EXPECT_EQ(f.ui().log[1].text, "Unable to find 'Fieldwright.htm'!");
    EXPECT_EQ(f.ui().log[2].kind, "open");
}

TEST(Commands, OpeningAMenuEndsAFreeEdit)
{
    EditorFixture f;
    f.SelectShape(f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}}));
    f.Run({"command MnuErotate"});
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, 0);
    OpenTopMenu(f.s(), "MnuHelp");
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, -1);
}

} // namespace
} // namespace fw::test
