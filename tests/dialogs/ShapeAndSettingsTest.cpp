#include <gtest/gtest.h>

#include <tuple>

#include "core/Config.h"
#include "core/Records.h"
#include "dialogs/FormShape.h"
#include "dialogs/SettingsForms.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

ShapeRecord Fresh(int type)
{
    ShapeRecord s;
    s.gType = static_cast<std::uint8_t>(type);
    ResetShape(s, type);
    return s;
}

struct Forms : ::testing::Test {
    ScriptedUi ui;
    ValueContext ctx{'.', &ui};
};

TEST_F(Forms, ShapeRangeAndValueChecksByType)
{
    const std::vector<std::pair<int, std::string>> cases{{kWideLine, "the line width"},
                                                         {kDotLine, "the dot spacing"},
                                                         {kTreeLine, "the band height"},
                                                         {kForest, "the forest height"}};
    for (const auto& [type, name] : cases) {
        ui.calls.clear();
        ShapeRecord r = Fresh(type);
        FormShape f;
        f.Show_(r, 3, false, '.');
        f.values["Range"] = "9";
        f.values["Value"] = "0";
        EXPECT_EQ(f.Ok(ctx, r), OkResult::Refused);
        f.values["Range"] = "32001";
        EXPECT_EQ(f.Ok(ctx, r), OkResult::Refused);
        f.values["Range"] = "10";
        EXPECT_EQ(f.Ok(ctx, r), OkResult::Refused);
        EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"You entered a wrong value for the visibility range!",
                                                           "You entered a wrong value for the visibility range!",
                                                           "You entered a wrong value for " + name + "!"}));
        f.values["Value"] = "2";
        ASSERT_EQ(f.Ok(ctx, r), OkResult::Stored) << type;
        EXPECT_EQ(r.vRange, 10);
    }
}

TEST_F(Forms, ShapeStoresTimeBitsAndDotSpacingAsWholeNumber)
{
    ShapeRecord r = Fresh(kDotLine);
    FormShape f;
    f.Show_(r, 5, false, '.');
    EXPECT_EQ(f.values.Text("Value"), "30");
    f.values["Value"] = "2.5";
    f.values.SetTick("Day", false);
    f.values.SetTick("NightTime", false);
    f.values.SetTick("Dusk", false);
    f.values.SetTick("DotsAtPoints", true);
    ASSERT_EQ(f.Ok(ctx, r), OkResult::Stored);
    EXPECT_EQ(r.gDotSpacing(), 2.0);
    EXPECT_EQ(r.vTime, 0);
    EXPECT_EQ(r.DotLineType, 1);
}

TEST_F(Forms, ANewShapeIsLeftOnlyByOkAndColoredSwitchesColourAgainstTexture)
{
    ShapeRecord r = Fresh(kPoly);
    FormShape f;
    f.Show_(r, 3, true, '.');
    EXPECT_FALSE(f.CanClose());
    EXPECT_FALSE(f.CancelVisible());
    f.Show_(r, 3, false, '.');
    EXPECT_TRUE(f.CanClose());
    EXPECT_FALSE(f.ColorEnabled());
    EXPECT_TRUE(f.TextureEnabled());
    f.values.SetTick("Colored", true);
    EXPECT_TRUE(f.ColorEnabled());
    EXPECT_FALSE(f.TextureEnabled());
}

TEST_F(Forms, TexPolyMapCornersHitDragAndDefault)
{
    ShapeRecord r = Fresh(kTexPoly);
    FormShape f;
    f.Show_(r, 2, false, '.'); // three vertices
    const PointList tri{{0, 0}, {510, 0}, {0, 255}};
    f.DefaultTexMap(tri);
    EXPECT_EQ(f.corners[0], (Point{0, 0}));
    EXPECT_EQ(f.corners[1], (Point{255, 0}));
    EXPECT_EQ(f.corners[2], (Point{0, 128})); // 127.5 rounds half to even
    EXPECT_EQ(f.mTPselect(253, 2), 1);
    EXPECT_EQ(f.mTPselect(252, 0), -1); // strictly inside the box
    f.DragCorner(1, 300, -20);
    EXPECT_EQ(f.corners[1], (Point{256, 0}));
    ASSERT_EQ(f.Ok(ctx, r), OkResult::Stored);
    EXPECT_EQ(r.mTexMap[2], 256);
    EXPECT_EQ(r.mTexMap[5], 128);
    EXPECT_EQ(r.mTexMap[6], -100); // the fourth corner stays as it was
    EXPECT_EQ(r.mTexMap[7], -100);
}

TEST_F(Forms, TreeLineBands)
{
    ShapeRecord r = Fresh(kTreeLine);
    FormShape f;
    f.Show_(r, 3, false, '.');
    EXPECT_EQ(f.NumBands(), 8);
    EXPECT_EQ(f.mTLselect(100, 5 * 30 + 1), 5);
    EXPECT_EQ(f.mTLselect(15, 10), -1);
    EXPECT_EQ(f.mTLselect(225, 10), -1); // the test is on x against the height less 16
    f.corners[0].Y = 5;
    f.SetBandOption(0);
    EXPECT_EQ(f.corners[0].Y, 3);
    f.SetBandOption(1);
    EXPECT_EQ(f.corners[0].Y, 3) << "back to 8 bands the band stays where it was held";
    f.SetBandOption(0);
    EXPECT_EQ(f.mTLselect(100, 231), 3);
    EXPECT_EQ(f.mTLselect(100, 232), -1);
    f.BandKey(1);
    EXPECT_EQ(f.corners[0].Y, 3);
    f.BandKey(-1);
    ASSERT_EQ(f.Ok(ctx, r), OkResult::Stored);
    EXPECT_EQ(r.mNumBands, 4);
    EXPECT_EQ(r.mSelectedBand(), 2);
    EXPECT_EQ(BandFrames(2, 4)[0], (std::array<int, 4>{18, 118, 238, 168}));
}

TEST(ShapeHelpers, WheelColourAndTextureList)
{
    const std::pair<int, std::int32_t> wheel[] = {{0, RGB(255, 0, 0)},     {41, RGB(255, 246, 0)}, {42, RGB(255, 255, 0)},
                                                  {85, RGB(0, 255, 0)},    {127, RGB(0, 255, 255)}, {170, RGB(0, 0, 255)},
                                                  {255, RGB(255, 0, 0)}};
    for (const auto& [slider, colour] : wheel)
        EXPECT_EQ(WheelColor(slider), colour) << slider;
    EXPECT_EQ(FindTextureInList({"a.bmp", "b.r8"}, "b.r8"), 1);
    EXPECT_EQ(FindTextureInList({"a.bmp"}, ""), -1);
    EXPECT_EQ(FindTextureInList({"a.bmp"}, "A.bmp"), -1);
    EXPECT_EQ(TextureFolderLabel(std::string(70, 'x')), std::string(64, 'x') + "...");
}

TEST_F(Forms, ProjectSettingsChecksAndScales)
{
    ProjectRecord p;
    ResetProject(p);
    FormSettings f;
    f.Show_(p, true, '.');
    EXPECT_FALSE(f.CanClose());
    EXPECT_FALSE(f.CancelEnabled());
    EXPECT_EQ(f.values.Int("Combo4"), 0); // <automatic>
    f.values["Text9"] = "41";
    f.values["Text8"] = "8001";
    f.values["Text3"] = "91";
    f.values["Text5"] = "180";
    for (const char* c : {"Text9", "Text8", "Text3", "Text5"}) {
        EXPECT_EQ(f.Ok(ctx, p), OkResult::Refused);
        f.values[c] = "0";
    }
    EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"You entered a wrong value for the magnetic variation!",
                                                       "You entered a wrong value for the altitude!",
                                                       "You entered a wrong value for the latitude (degrees)!",
                                                       "You entered a wrong value for the longitude (degrees)!"}));
    f.values["Text5"] = "179";
    f.values.SetInt("Combo3", 3);
    ASSERT_EQ(f.Ok(ctx, p), OkResult::Stored);
    EXPECT_EQ(p.LongitudeDegree, 179.0);
    EXPECT_EQ(p.PolyScale, 0.125);
    EXPECT_EQ(p.LineScale, 0.0);

    p.PolyScale = 0.3; // not in the list: no selection, and the value stays
    f.Show_(p, false, '.');
    EXPECT_EQ(f.values.Int("Combo3"), -1);
    ASSERT_EQ(f.Ok(ctx, p), OkResult::Stored);
    EXPECT_EQ(p.PolyScale, 0.3);
}

TEST_F(Forms, OptimizeStepsAndPickedTextures)
{
    ProjectRecord p;
    ResetProject(p);
    FormOptimize f;
    f.Show_(p);
    // Break every step, then mend them one at a time: each OK names the next.
    const char* const order[][3] = {{"Text5", "2001", "2000"}, {"Text6", "-1", "2000"}, {"Text7", "x", "10"}};
    for (const auto& [field, bad, good] : order)
        f.values[field] = bad;
    for (const auto& [field, bad, good] : order) {
        EXPECT_EQ(f.Ok(ctx, p), OkResult::Refused) << field;
        f.values[field] = good;
    }
    f.values["Text6"] = "2001";
    EXPECT_EQ(f.Ok(ctx, p), OkResult::Refused);
    f.values["Text6"] = "2000";
    EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"You entered a wrong value for visibility step 2!",
                                                       "You entered a wrong value for visibility step 3!",
                                                       "You entered a wrong value for visibility step 4!",
                                                       "You entered a wrong value for visibility step 3!"}));
    f.TakePickedTexture(0, "grass.bmp" + std::string("         4210752"));
    f.TakePickedTexture(1, "road.r8" + std::string("NoTex           "));
    ASSERT_EQ(f.Ok(ctx, p), OkResult::Stored);
    EXPECT_EQ(p.Distance, (std::array<std::int16_t, 3>{2000, 2000, 10}));
    EXPECT_EQ(p.Texture[0], "grass.bmp");
    EXPECT_EQ(p.Color[0], 4210752);
    EXPECT_EQ(p.Texture[1], "road.r8");
    EXPECT_EQ(p.Color[1], 0);
}

TEST(Converter, DistancesAndAngles)
{
    // Value, from, to, decimal mark, result.
    const std::tuple<const char*, int, int, char, const char*> distances[] = {
        {"1000", 0, 2, '.', "3280.8"}, {"100001", 1, 0, '.', "Unable to convert value!"},
        {"abc", 1, 0, '.', "Unable to convert value!"}, {"1", 1, 0, '.', "1000"}, {"2,5", 1, 0, ',', "2500"}};
    for (const auto& [value, from, to, mark, result] : distances)
        EXPECT_EQ(ConvertDistance(value, from, to, mark), result) << value;
    const std::tuple<const char*, int, const char*> angles[] = {
        {"S40 30", 0, "-40.5"}, {"N40\xB0 30' 36\"", 0, "40.51"}, {"W40.5", 1, "-40 30'"},
        {"E10 30 36.5", 2, "10 30' 36.5\""}, {"40 60", 0, "Value of wrong format!"},
        {"1 2 3 4", 0, "Value of wrong format!"}, {"40.5 30", 0, "Value of wrong format!"},
        {"181", 0, "Value of wrong format!"}};
    for (const auto& [value, format, result] : angles)
        EXPECT_EQ(ConvertAngle(value, format, '.'), result) << value;
}

TEST(PaletteCells, TwoRowsAndTheGapsBetweenCells)
{
    // x, y, cell: the three pixels between two cells and the missing cell 15 hit nothing.
    const int cases[][3] = {{2, 2, 1},         {2 + 22, 2 + 22, 1},  {2 + 23, 10, -1},
                            {2 + 26, 10, 2},   {2 + 13 * 26 + 5, 10, 14}, {2 + 14 * 26 + 5, 10, -1},
                            {2 + 26 + 5, 60, 17}, {2 + 14 * 26 + 5, 60, 30}, {5, 40, -1}};
    for (const auto& [x, y, cell] : cases)
        EXPECT_EQ(PaletteCellAt(x, y), cell) << x << ", " << y;
    EXPECT_EQ(PaletteCell(15).w, 0);
}

} // namespace
} // namespace fw
