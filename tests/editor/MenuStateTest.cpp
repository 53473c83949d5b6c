// The enabling and check rules of the menu tick, and the status panels.
#include <gtest/gtest.h>

#include "EditorTestSupport.h"
#include "editor/Commands.h"

namespace fw::test {
namespace {

// The flag the tick writes for an item; an item it leaves alone is a fault.
bool Flag(const MenuState& m, const std::string& item, std::optional<bool> MenuItemState::*flag)
{
    const auto it = m.items.find(item);
    if (it == m.items.end() || !(it->second.*flag))
        throw std::runtime_error(item + " not written");
    return *(it->second.*flag);
}
bool Enabled(const MenuState& m, const std::string& item) { return Flag(m, item, &MenuItemState::enabled); }
bool Checked(const MenuState& m, const std::string& item) { return Flag(m, item, &MenuItemState::checked); }
void ExpectEnabled(const MenuState& m, std::initializer_list<std::pair<const char*, bool>> items)
{
    for (const auto& [item, on] : items)
        EXPECT_EQ(Enabled(m, item), on) << item;
}

const char* const kEditItems[] = {"MnuEcopy",    "MnuEdelete", "MnuEflipx", "MnuEflipy",
                                  "MnuErescale", "MnuErotate", "MnuEdrot",  "MnuEdscale"};

TEST(MenuState, NothingSelected)
{
    EditorFixture f(0.25);
    MenuState m = ComputeMenuState(f.s());
    for (const char* item : kEditItems)
        EXPECT_FALSE(Enabled(m, item)) << item;
    ExpectEnabled(m, {{"MnuEundo", false}, {"MnuEpaste", false}, {"MnuFexport", false}, {"MnuFimportshape", true},
                      {"MnuFrecent1", false}, {"MnuBedit", false}});
    EXPECT_TRUE(Checked(m, "MnuSselectshape"));
    EXPECT_TRUE(Checked(m, "MnuC225"));
    EXPECT_FALSE(Checked(m, "MnuC2100"));
    EXPECT_TRUE(Checked(m, "MnuBshowgrid"));
    EXPECT_EQ(m.items.count("MnuFnew"), 0u) << "items the tick never writes";
    EXPECT_EQ(m.items.count("MnuBshowall"), 0u);
    EXPECT_EQ(m.panel6, "25 %");
    EXPECT_EQ(m.panel3, "");
    f.s().canUndo = 1;
    f.s().canPaste = 1;
    ExpectEnabled(ComputeMenuState(f.s()), {{"MnuEundo", true}, {"MnuEpaste", true}});
    f.s().view.setZoom(0.0625);
    EXPECT_EQ(ComputeMenuState(f.s()).panel6, "6.25 %");
}

TEST(MenuState, OneObjectHasABoxOfNoSize)
{
    EditorFixture f(1.0);
    f.AddObject(kRunway, 10, 10);
    f.SelectObject(0);
    const MenuState m = ComputeMenuState(f.s());
    for (const char* item : {"MnuEflipx", "MnuEflipy", "MnuErescale", "MnuErotate", "MnuEdrot", "MnuEdscale"})
        EXPECT_FALSE(Enabled(m, item)) << item;
    ExpectEnabled(m, {{"MnuEcopy", true}, {"MnuEdelete", true}, {"MnuSshapeproperties", true},
                      {"MnuSeditpoints", false}, {"MnuSconvertshapeto", false}, {"MnuBshowrunway", false},
                      {"MnuBshowpoly", true}, {"MnuFexport", true}});
    // A second object elsewhere gives the box a size.
    f.AddObject(kVor, 10, 40);
    f.SelectObject(1);
    ExpectEnabled(ComputeMenuState(f.s()),
                  {{"MnuEflipx", true}, {"MnuBshownavigation", false}, {"MnuSshapeproperties", false}});
}

TEST(MenuState, SelectedPolyLocksItsToggleAndFlattenHasNoProperties)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}});
    f.AddShape(kFlatten, {{0, 50}, {10, 50}, {10, 60}});
    f.Run({"down L " + Px(0, 0), "up L " + Px(0, 0)});
    ExpectEnabled(ComputeMenuState(f.s()), {{"MnuBshowpoly", false}, {"MnuBshowtexpoly", true},
                                            {"MnuSeditpoints", true}, {"MnuSshapeproperties", true}});
    f.Run({"down L " + Px(0, 50), "up L " + Px(0, 50)});
    ExpectEnabled(ComputeMenuState(f.s()),
                  {{"MnuBshowpoly", true}, {"MnuBshowexclude", false}, {"MnuSshapeproperties", false}});
    // A disabled item can't be chosen from the menu.
    f.Run({"command MnuBshowexclude"});
    EXPECT_EQ(f.s().showFlags.ShowExclude, 1);
}

TEST(MenuState, ArrangeModeWritesOnlyTheSelectionMenu)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {10, 0}, {10, 10}});
    f.SelectShape(0);
    f.s().config.MessageLayer = 0;
    f.Run({"tool mLayer"});
    const MenuState m = ComputeMenuState(f.s());
    for (const char* item : {"MnuSselectshape", "MnuSdragshape", "MnuSeditpoints", "MnuSshapeproperties",
                             "MnuSconvertshapeto"})
        EXPECT_FALSE(Enabled(m, item)) << item;
    ExpectEnabled(m, {{"MnuSback", true}, {"MnuSfront", true}});
    EXPECT_EQ(m.items.count("MnuFsaveselection"), 0u);
    EXPECT_EQ(m.items.count("MnuEcopy"), 0u);
    EXPECT_TRUE(m.items.at("MnuC2100").checked.value());
    EXPECT_FALSE(m.topMenus.at("MnuFile"));
    EXPECT_TRUE(m.topMenus.at("MnuSelection"));
    EXPECT_FALSE(m.toolButtons.at("poly"));
    EXPECT_TRUE(m.toolButtons.at("mEdit"));
}

TEST(MenuState, ShowAllLeavesForestsAndSigns)
{
    EditorFixture f(1.0);
    auto& flags = f.s().showFlags;
    flags.ShowPoly = flags.ShowForest = flags.ShowSign = flags.ShowNav = 0;
    f.Run({"command MnuBshowall"});
    EXPECT_EQ(flags.ShowPoly, 1);
    EXPECT_EQ(flags.ShowNav, 1);
    EXPECT_EQ(flags.ShowForest, 0);
    EXPECT_EQ(flags.ShowSign, 0);
    EXPECT_FALSE(Checked(ComputeMenuState(f.s()), "MnuBshowforest"));
}

TEST(Status, PositionInDegreesAndMinutes)
{
    EditorFixture f(1.0);
    f.s().project.LatitudeDegree = -33.5;
    f.s().project.LongitudeDegree = 151.25;
    f.Run({"move " + Px(0, 0)});
    MenuState m = ComputeMenuState(f.s());
    EXPECT_EQ(m.panel4, "33 30.00000'S");
    EXPECT_EQ(m.panel5, "151 15.00000'E");
    // Pixel (0,0) at 6.25 %: 3200 m west and 2400 m north of a reference at 0, 0.
    f.s().project.LatitudeDegree = 0;
    f.s().project.LongitudeDegree = 0;
    f.s().view.setZoom(0.0625);
    f.Run({"canvas 800 600", "move 0 0"});
    m = ComputeMenuState(f.s());
    // About 8.9946e-6 degrees a metre: 0.021587 and 0.028783 degrees after rounding to 6 places.
    EXPECT_EQ(m.panel4, "0 1.29522'N");
    EXPECT_EQ(m.panel5, "0 1.72698'W");
}

TEST(Status, LongitudeFactorAtThePole)
{
    EditorFixture f(1.0);
    f.s().project.LatitudeDegree = 90;
    f.Run({"move " + Px(20, 0)});
    // r = 10 m: 10 m east is asin(0.1) = 5.739170 degrees a metre, 57.391705 degrees.
    EXPECT_EQ(ComputeMenuState(f.s()).panel5, "57 23.50230'E");
}

} // namespace
} // namespace fw::test

namespace fw::test {
namespace {

TEST(Commands, PropertiesByDoubleClickAndHelpWithoutItsFile)
{
    EditorFixture f(1.0);
    f.AddShape(kFlatten, {{0, 0}, {10, 0}, {10, 10}});
    f.AddObject(kVor, 100, 100);
    f.SelectShape(0);
    f.Run({"dblclick " + Px(300, 200)});
    EXPECT_TRUE(f.ui().log.empty()) << "a flatten polygon has no properties";
    f.Run({"answer ok", "dblclick " + Px(100, 100)});
    ASSERT_EQ(f.Kinds(), std::vector<std::string>{"objectProperties"});
    EXPECT_EQ(f.s().dirty, 1);
    EXPECT_EQ(f.s().canUndo, 0) << "properties take no undo step";
    f.s().programFolder = "/nonexistent/";
    f.Run({"command MnuHhelp", "command MnuHhomepage"});
    ASSERT_EQ(f.ui().log.size(), 3u);
    EXPECT_EQ(f.ui().log[1].text, "Unable to find 'Fieldwright.htm'!");
    EXPECT_EQ(f.ui().log[2].kind, "open");
}

TEST(Commands, OpeningAMenuEndsAFreeEdit)
{
    EditorFixture f(1.0);
    f.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 100}});
    f.SelectShape(0);
    f.Run({"command MnuErotate"});
    EXPECT_EQ(f.s().editor.EditState, 12);
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, 0);
    OpenTopMenu(f.s(), "MnuHelp");
    EXPECT_EQ(f.s().editor.EditState, 0);
    EXPECT_EQ(f.s().editor.work.WorkShapeLast, -1);
}

} // namespace
} // namespace fw::test
