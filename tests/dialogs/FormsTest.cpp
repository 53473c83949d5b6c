// The property, settings and converter dialogs: their checks in order, what OK stores, their helpers.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "core/Config.h"
#include "core/Records.h"
#include "dialogs/FormAnswers.h"
#include "dialogs/FormShape.h"
#include "dialogs/ObjectForms.h"
#include "dialogs/SettingsForms.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

using Fields = std::initializer_list<std::pair<const char*, std::string>>;

struct Dialog : ::testing::Test {
    ScriptedUi ui;
    ValueContext ctx{'.', &ui};
    std::vector<std::string> Said() const { return ui.Messages(); }
    // Types the fields and presses OK.
    template <class Form, class Record> OkResult Ok(Form& f, Record& r, Fields fields = {})
    {
        for (const auto& [k, v] : fields)
            f.values[k] = v;
        return f.Ok(ctx, r);
    }
    static ObjectRecord Fresh(int type)
    {
        ObjectRecord o;
        ResetObject(o, type, "/prog/");
        return o;
    }
    static ShapeRecord FreshShape(int type)
    {
        ShapeRecord s;
        s.gType = static_cast<std::uint8_t>(type);
        ResetShape(s, type);
        return s;
    }
};

// NDB and VOR share one model: the checks in order, the first failure keeps the record, and
// each keeps its own frequency band and ticks.
TEST_F(Dialog, NavChecksRunInOrderAndTheFirstFailureKeepsTheRecord)
{
    ObjectRecord o = Fresh(kNdb);
    FormOndb f;
    f.Show_(o, '.');
    EXPECT_EQ(f.values.Text("Text1"), "200");
    EXPECT_EQ(Ok(f, o, {{"Text1", "526.6"}, {"Text2", "0"}, {"Text3", ""}}), OkResult::Refused);
    EXPECT_EQ(Ok(f, o, {{"Text1", "526.5"}}), OkResult::Refused);
    EXPECT_EQ(Ok(f, o, {{"Text2", "255"}}), OkResult::Refused);
    EXPECT_EQ(Ok(f, o, {{"Text3", "XY"}, {"Text4", ""}}), OkResult::Refused);
    EXPECT_EQ(o.Frequency(), 200.0);
    ASSERT_EQ(Ok(f, o, {{"Text4", "Home_beacon"}, {"Check1", "1"}}), OkResult::Stored);
    EXPECT_EQ((std::tuple{o.Frequency(), o.Range(), o.ID(), o.NdbVisible()}), (std::tuple{526.5, 255, "XY", 1}));

    ObjectRecord v = Fresh(kVor);
    FormOvor g;
    g.Show_(v, ',');
    EXPECT_EQ(g.values.Text("Text1"), "108");
    EXPECT_TRUE(g.values.Tick("Check1"));
    ctx.decimalSeparator = ',';
    EXPECT_EQ(Ok(g, v, {{"Text1", "135,76"}}), OkResult::Refused);
    ASSERT_EQ(Ok(g, v, {{"Text1", "135,75"}, {"Check1", "0"}, {"Check2", "1"}}), OkResult::Stored);
    EXPECT_EQ((std::tuple{v.Frequency(), v.DME(), v.VorVisible()}), (std::tuple{135.75, 0, 1}));
    EXPECT_EQ(Said(), (std::vector<std::string>{
                          "You entered a wrong value for the frequency!", "You entered a wrong value for the range!",
                          "Please enter an ID!", "Please enter a name!", "You entered a wrong value for the frequency!"}));
}

TEST_F(Dialog, ExcludeAndInitialLocation)
{
    ObjectRecord e = Fresh(kExclude);
    FormOexclude x;
    x.Show_(e, '.');
    EXPECT_EQ(Ok(x, e, {{"Text1", "19"}}), OkResult::Refused);
    EXPECT_EQ(Ok(x, e, {{"Text1", "20"}, {"Text2", "10001"}}), OkResult::Refused);
    ASSERT_EQ(Ok(x, e, {{"Text2", "10000"}, {"Check3", "1"}}), OkResult::Stored);
    EXPECT_EQ((std::tuple{e.ExclWidth(), e.ExclHeight(), e.ExcludeNDB()}), (std::tuple{20, 10000, 1}));

    ObjectRecord i = Fresh(kInit);
    FormInit n;
    n.Show_(i, '.');
    EXPECT_EQ(Ok(n, i, {{"Text1", ""}, {"Text2", "360.01"}}), OkResult::Refused);
    ASSERT_EQ(Ok(n, i, {{"Text2", "360"}}), OkResult::Stored); // an empty name is allowed here
    EXPECT_EQ(i.InitName(), "");
    EXPECT_EQ(i.Rotation, 360.0);
    EXPECT_EQ(Said(), (std::vector<std::string>{"You entered a wrong value for the width!",
                                                "You entered a wrong value for the height!",
                                                "You entered a wrong value for the heading!"}));
}

TEST(Keys, NameKeysTurnABlankIntoAnUnderscoreAndRefuseQuotesDecimalKeysTakeTheSystemsMark)
{
    const std::pair<char, char> name[] = {{' ', '_'}, {';', 0}, {'"', 0}, {'a', 'a'}};
    for (const auto& [key, becomes] : name)
        EXPECT_EQ(NameKey(key), becomes) << key;
    EXPECT_EQ(DecimalKey('.', ','), ',');
    EXPECT_EQ(DecimalKey(',', '.'), '.');
}

TEST(RunwayCaption, EndsAndDesignators)
{
    const std::tuple<int, int, std::array<std::string, 2>> ends[] = {
        {18, 0, {"18", "36"}}, {36, 0, {"36", "18"}},   {5, 0, {"05", "23"}},
        {9, 1, {"09L", "27R"}}, {27, 3, {"27R", "09L"}}, {0, 2, {"00C", "18C"}}};
    for (const auto& [number, designator, caption] : ends)
        EXPECT_EQ(RunwayEnds(number, designator), caption) << number << " " << designator;
    FormRunway f;
    ObjectRecord o;
    ResetObject(o, kRunway, "/p/");
    o.RwyNumber() = 5;
    f.Show_(o, '.');
    EXPECT_EQ(f.Rwy_caption(), (std::array<std::string, 2>{"Runway 05:", "Runway 23:"}));
    f.values.SetInt("RwyDesignator", 1);
    EXPECT_EQ(f.Rwy_caption(), (std::array<std::string, 2>{"Runway 05L:", "Runway 23R:"}));
    // Ticks switch their groups; switching off keeps the values.
    EXPECT_FALSE(f.IlsEnabled(1));
    f.values.SetTick("IlsEnabledF", true);
    EXPECT_TRUE(f.IlsEnabled(1));
    f.values.SetTick("EnableLights", false);
    EXPECT_FALSE(f.LightsEnabled());
    EXPECT_EQ(f.values.Text("IlsFreqF"), "123.45");
}

TEST_F(Dialog, RunwayChecksInTheirOrder)
{
    ObjectRecord o = Fresh(kRunway);
    FormRunway f;
    f.Show_(o, '.');
    // Break every value, then mend them one at a time: each OK names the next. The long values
    // have no bounds: only what is no number or can't be held in their 16-bit fields is wrong.
    const char* const order[][3] = {
        {"IlsSlopeN", "10.5", "the first slope angle"}, {"IlsSlopeF", "-1", "the second slope angle"},
        {"Length", "x", "the runway length"},          {"Width", "40000", "the runway width"},
        {"Heading", "360", "the runway heading"},       {"StrobesN", "11", "the approach light strobes"},
        {"StrobesF", "x", "the approach light strobes"}, {"MarkerOuterN", "32768", "the Outer marker (Om)"},
        {"MarkerMiddleN", "-32769", "the middle marker (Mm)"}, {"MarkerInnerN", "", "the inner marker (Im)"},
        {"MarkerOuterF", "1e10", "the Outer marker (Om)"}, {"MarkerMiddleF", "a", "the middle marker (Mm)"},
        {"MarkerInnerF", "1e9", "the inner marker (Im)"},  {"IlsRangeN", "3.5.1", "the ILS range"},
        {"IlsRangeF", "-1e6", "the ILS range"},           {"IlsFreqN", "107.9", "the ILS frequency"},
        {"IlsFreqF", "135.8", "the ILS frequency"},       {"ThrOffN", "", "the runway threshold"},
        {"ExtN", "99999", "the runway extension"}};
    const FormValues good = f.values;
    for (const auto& [field, bad, name] : order)
        f.values[field] = bad;
    for (const auto& [field, bad, name] : order) {
        ui.calls.clear();
        EXPECT_EQ(f.Ok(ctx, o), OkResult::Refused) << field;
        EXPECT_EQ(Said(), std::vector<std::string>{std::string("You entered a wrong value for ") + name + "!"});
        f.values[field] = good.Text(field);
    }
    EXPECT_EQ(o.Length(), 9000);
    // Surface 7 is the second "Asphalt".
    ASSERT_EQ(Ok(f, o, {{"Heading", "359.9999"}, {"Surface", "7"}, {"RwyNumber", "18"}, {"LightIntensity", "0"},
                        {"Length", "100"}}),
              OkResult::Stored);
    EXPECT_EQ(o.Rotation, 359.9999);
    EXPECT_EQ((std::vector<int>{o.Surface(), o.RwyNumber(), o.Length(), o.LightIntensityLow, o.LightIntensityHigh}),
              (std::vector<int>{kSurfaceAsphalt2, 18, 100, -1, 0}));
    f.Show_(o, '.');
    EXPECT_EQ(f.values.Int("Surface"), 7);
    EXPECT_EQ(SurfaceList()[3], SurfaceList()[7]); // both rows read "Asphalt"

    // The runway dialog's bounds aren't applied to the long values; a fraction rounds half to even.
    const std::pair<const char*, int> unbounded[] = {
        {"Length", 99},      {"Width", 2001},        {"MarkerOuterN", 20001},   {"MarkerMiddleF", -1},
        {"IlsRangeN", 256},  {"IlsRangeF", 0},       {"ThrOffN", 5001},         {"ExtN", -1},
        {"MarkerInnerN", 32767}, {"MarkerInnerF", -32768}};
    for (const auto& [field, value] : unbounded)
        f.values[field] = std::to_string(value);
    f.values["Length"] = "98.5";
    ui.calls.clear();
    ASSERT_EQ(f.Ok(ctx, o), OkResult::Stored);
    EXPECT_TRUE(Said().empty());
    EXPECT_EQ((std::vector<int>{o.Length(), o.RwyWidth(), o.MarkerOuterN(), o.MarkerMiddleF(), o.IlsRangeN(),
                                o.IlsRangeF(), o.ThrOffN(), o.ExtN(), o.MarkerInnerN(), o.MarkerInnerF()}),
              (std::vector<int>{98, 2001, 20001, -1, 256, 0, 5001, -1, 32767, -32768}));
}

TEST(SignCaption, BufferRoundTripAndEmptyPanels)
{
    SignBuffer b = ParseSignCaption(" Direction_ArrowLeft_A Location_B RwyInstruction_ArrowLeft_10_ArrowRight");
    EXPECT_EQ(b[0].type, "Direction");
    EXPECT_EQ(b[0].items[0], "ArrowLeft");
    EXPECT_EQ(b[1].items[0], "B");
    EXPECT_EQ(b[2].items, (std::array<std::string, 4>{"ArrowLeft", "10", "ArrowRight", ""}));
    EXPECT_EQ(BufferToString(b), " Direction_ArrowLeft_A Location_B RwyInstruction_ArrowLeft_10_ArrowRight");
    b[3].type = "Location"; // a type without items leaves no trace
    EXPECT_EQ(BufferToString(b), " Direction_ArrowLeft_A Location_B RwyInstruction_ArrowLeft_10_ArrowRight");
    b[0].items[0].clear();
    EXPECT_EQ(BufferToString(b).substr(0, 12), " Direction_A");

    SignBuffer six = ParseSignCaption("Location_A Location_B Location_C Location_D Location_E Location_F");
    EXPECT_EQ(six[4].items[0], "E");
    EXPECT_EQ(BufferToString(six), " Location_A Location_B Location_C Location_D Location_E");
    // Read as the exporter reads it: a runway number with a leading zero is still a number, and
    // items past the fourth are dropped.
    const SignBuffer zero = ParseSignCaption("RwyInstruction_036_ArrowLeft_ArrowUp_ArrowRight_ArrowLeftUp");
    EXPECT_EQ(zero[0].items, (std::array<std::string, 4>{"", "036", "ArrowRight", ""}));
    EXPECT_EQ(SignCellType(b[2], 0), "RwyInstructionArrow");
    EXPECT_EQ(SignCellType(b[2], 1), "RwyInstruction");
    EXPECT_EQ(SignCells("Direction").size(), 26u + 17u + 5u);
    // The picker's cells where the sheet holds them: "H", the Direction arrows, Location "B",
    // runway numbers in the second quadrant but 33 to 36 under the first.
    const std::tuple<std::string, std::string, std::array<int, 4>> cells[] = {
        {"Direction", "H", {112, 0, 16, 16}},         {"Direction", "ArrowLeft", {48, 80, 16, 16}},
        {"Location", "B", {16, 128, 16, 16}},         {"RwyInstruction", "6", {160, 16, 32, 16}},
        {"RwyInstruction", "34", {32, 112, 32, 16}}, {"RwyInstructionArrow", "ArrowUp", {80, 96, 16, 16}}};
    for (const auto& [type, item, rect] : cells) {
        const std::vector<std::string> all = SignCells(type);
        const SheetRect r = SignCellOnSheet(type, int(std::find(all.begin(), all.end(), item) - all.begin()));
        EXPECT_EQ((std::array{r.x, r.y, r.w, r.h}), rect) << type << " " << item;
    }
}

TEST_F(Dialog, SignStylesAndHeading)
{
    ObjectRecord o = Fresh(kSign);
    FormSign f;
    f.Show_(o, '.');
    EXPECT_EQ(f.values.Int("Style"), 1);
    f.SetPanelType(0, 2);
    f.buffer[0].items[0] = "C";
    EXPECT_EQ(Ok(f, o, {{"Heading", "361"}}), OkResult::Refused);
    ASSERT_EQ(Ok(f, o, {{"Heading", "90"}, {"Style", "0"}}), OkResult::Stored);
    EXPECT_EQ(o.Caption(), " Location_C");
    EXPECT_EQ(o.Style(), "Flat");
    EXPECT_EQ(Said(), std::vector<std::string>{"You entered a wrong value for the heading!"});
}

TEST_F(Dialog, ShapeRangeAndValueChecksByType)
{
    const std::pair<int, std::string> cases[] = {{kWideLine, "the line width"},
                                                 {kDotLine, "the dot spacing"},
                                                 {kTreeLine, "the band height"},
                                                 {kForest, "the forest height"}};
    for (const auto& [type, name] : cases) {
        ui.calls.clear();
        ShapeRecord r = FreshShape(type);
        FormShape f;
        f.Show_(r, 3, false, '.');
        EXPECT_EQ(Ok(f, r, {{"Range", "9"}, {"Value", "0"}}), OkResult::Refused);
        EXPECT_EQ(Ok(f, r, {{"Range", "32001"}}), OkResult::Refused);
        EXPECT_EQ(Ok(f, r, {{"Range", "10"}}), OkResult::Refused);
        EXPECT_EQ(Said(), (std::vector<std::string>{"You entered a wrong value for the visibility range!",
                                                    "You entered a wrong value for the visibility range!",
                                                    "You entered a wrong value for " + name + "!"}));
        ASSERT_EQ(Ok(f, r, {{"Value", "2"}}), OkResult::Stored) << type;
        EXPECT_EQ(r.vRange, 10);
    }
}

TEST_F(Dialog, ShapeStoresTimeBitsAndDotSpacingAsWholeNumber)
{
    ShapeRecord r = FreshShape(kDotLine);
    FormShape f;
    f.Show_(r, 5, false, '.');
    EXPECT_EQ(f.values.Text("Value"), "30");
    ASSERT_EQ(Ok(f, r, {{"Value", "2.5"}, {"Day", "0"}, {"NightTime", "0"}, {"Dusk", "0"}, {"DotsAtPoints", "1"}}),
              OkResult::Stored);
    EXPECT_EQ(r.gDotSpacing(), 2.0);
    EXPECT_EQ(r.vTime, 0);
    EXPECT_EQ(r.DotLineType, 1);
}

TEST_F(Dialog, ANewShapeIsLeftOnlyByOkAndColoredSwitchesColourAgainstTexture)
{
    ShapeRecord r = FreshShape(kPoly);
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

TEST_F(Dialog, TexPolyMapCornersHitDragAndDefault)
{
    ShapeRecord r = FreshShape(kTexPoly);
    FormShape f;
    f.Show_(r, 2, false, '.'); // three vertices
    f.DefaultTexMap({{0, 0}, {510, 0}, {0, 255}});
    // 127.5 rounds half to even.
    EXPECT_EQ((std::vector<Point>(f.corners.begin(), f.corners.begin() + 3)),
              (std::vector<Point>{{0, 0}, {255, 0}, {0, 128}}));
    EXPECT_EQ(f.mTPselect(253, 2), 1);
    EXPECT_EQ(f.mTPselect(252, 0), -1); // strictly inside the box
    f.DragCorner(1, 300, -20);
    EXPECT_EQ(f.corners[1], (Point{256, 0}));
    ASSERT_EQ(f.Ok(ctx, r), OkResult::Stored);
    // The fourth corner stays as it was.
    EXPECT_EQ(r.mTexMap, (std::array<std::int32_t, 8>{0, 0, 256, 0, 0, 128, -100, -100}));
}

TEST_F(Dialog, TreeLineBands)
{
    ShapeRecord r = FreshShape(kTreeLine);
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

TEST_F(Dialog, ProjectSettingsChecksAndScales)
{
    ProjectRecord p;
    ResetProject(p);
    FormSettings f;
    f.Show_(p, true, '.');
    EXPECT_FALSE(f.CanClose());
    EXPECT_FALSE(f.CancelEnabled());
    EXPECT_EQ(f.values.Int("Combo4"), 0); // <automatic>
    // Break every value, then mend them one at a time: each OK names the next.
    const char* const order[][3] = {{"Text9", "41", "the magnetic variation"},
                                    {"Text8", "8001", "the altitude"},
                                    {"Text3", "91", "the latitude (degrees)"},
                                    {"Text5", "180", "the longitude (degrees)"}};
    for (const auto& [field, bad, name] : order)
        f.values[field] = bad;
    for (const auto& [field, bad, name] : order) {
        ui.calls.clear();
        EXPECT_EQ(f.Ok(ctx, p), OkResult::Refused) << field;
        EXPECT_EQ(Said(), std::vector<std::string>{std::string("You entered a wrong value for ") + name + "!"});
        f.values[field] = "0";
    }
    ASSERT_EQ(Ok(f, p, {{"Text5", "179"}, {"Combo3", "3"}}), OkResult::Stored);
    EXPECT_EQ((std::tuple{p.LongitudeDegree, p.PolyScale, p.LineScale}), (std::tuple{179.0, 0.125, 0.0}));
    p.PolyScale = 0.3; // not in the list: no selection, and the value stays
    f.Show_(p, false, '.');
    EXPECT_EQ(f.values.Int("Combo3"), -1);
    ASSERT_EQ(f.Ok(ctx, p), OkResult::Stored);
    EXPECT_EQ(p.PolyScale, 0.3);
}

TEST_F(Dialog, OptimizeStepsAndPickedTextures)
{
    ProjectRecord p;
    ResetProject(p);
    FormOptimize f;
    f.Show_(p);
    // Each OK names the first wrong step; step 3 may be no more than 2000 either.
    EXPECT_EQ(Ok(f, p, {{"Text5", "2001"}, {"Text6", "-1"}, {"Text7", "x"}}), OkResult::Refused);
    EXPECT_EQ(Ok(f, p, {{"Text5", "2000"}}), OkResult::Refused);
    EXPECT_EQ(Ok(f, p, {{"Text6", "2000"}}), OkResult::Refused);
    EXPECT_EQ(Ok(f, p, {{"Text7", "10"}, {"Text6", "2001"}}), OkResult::Refused);
    EXPECT_EQ(Said(), (std::vector<std::string>{"You entered a wrong value for visibility step 2!",
                                                "You entered a wrong value for visibility step 3!",
                                                "You entered a wrong value for visibility step 4!",
                                                "You entered a wrong value for visibility step 3!"}));
    f.values["Text6"] = "2000";
    f.TakePickedTexture(0, "grass.bmp" + std::string("         4210752"));
    f.TakePickedTexture(1, "road.r8" + std::string("NoTex           "));
    ASSERT_EQ(f.Ok(ctx, p), OkResult::Stored);
    EXPECT_EQ(p.Distance, (std::array<std::int16_t, 3>{2000, 2000, 10}));
    EXPECT_EQ((std::tuple{p.Texture[0], p.Color[0], p.Texture[1], p.Color[1]}),
              (std::tuple{"grass.bmp", 4210752, "road.r8", 0}));
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

// Scripted answers: the words reach the right form, field and button, and each ending is kept.
struct Answers : Dialog {
    ConfigRecord config;
    std::string problem;
    void SetUp() override { ResetConfig(config, "/prog/"); }
    FormAnswerResult Object(const std::vector<std::string>& words, ObjectRecord& o)
    {
        return AnswerObjectForm(words, o, config, "/prog/", ctx, problem);
    }
    FormAnswerResult Shape(const std::vector<std::string>& words, ShapeRecord& s, bool isNew = false,
                           const FormButtons& buttons = {})
    {
        static const PointList line{{0, 0}, {10, 0}};
        return AnswerShapeForm(words, s, isNew ? &line : nullptr, isNew, ctx, problem, buttons);
    }
};
using Result = FormAnswerResult;

TEST_F(Answers, ObjectFieldsRunTheChecksARefusalOrCancelKeepsTheRecord)
{
    ObjectRecord o = Fresh(kNdb);
    EXPECT_EQ(Object({"FormOndb", "Text1=526.6", "ok"}, o), Result::Refused);
    EXPECT_EQ(o.Frequency(), 200.0);
    EXPECT_EQ(Object({"FormOndb", "Text1=526.5", "Text4=Home_NDB", "Check1=1", "ok"}, o), Result::Stored);
    EXPECT_EQ((std::tuple{o.Frequency(), o.NavName(), o.NdbVisible()}), (std::tuple{526.5, "Home_NDB", 1}));
    EXPECT_EQ(Object({"FormOndb", "Text1=300", "cancel"}, o), Result::Cancelled);
    EXPECT_EQ(o.Frequency(), 526.5);
    ObjectRecord sign = Fresh(kSign);
    EXPECT_EQ(Object({"FormSign", "Caption=Direction_ArrowLeft_A", "Heading=45", "ok"}, sign), Result::Stored);
    EXPECT_EQ(sign.Caption(), " Direction_ArrowLeft_A");
    EXPECT_EQ(sign.Rotation, 45.0);
}

TEST_F(Answers, WrongFormsFieldsButtonsAndEndings)
{
    ObjectRecord o = Fresh(kVor);
    const std::pair<std::vector<std::string>, std::string> wrong[] = {
        {{"FormOndb", "ok"}, "the dialog open is FormOvor, not FormOndb"},
        {{"FormOvor", "Text9=1", "ok"}, "FormOvor has no field Text9"}};
    for (const auto& [words, why] : wrong) {
        EXPECT_EQ(Object(words, o), Result::Refused);
        EXPECT_EQ(problem, why);
    }
    EXPECT_EQ(Object({"FormOvor", "Text1"}, o), Result::Refused);
    ObjectRecord sign = Fresh(kSign);
    EXPECT_EQ(Object({"FormSign", "Type9=1", "Type1=", "ok"}, sign), Result::Refused);
    EXPECT_EQ(problem, "FormSign has no field Type9");

    // A new shape closes only with OK, and a comma is no decimal mark on a point system.
    ShapeRecord s = FreshShape(kWideLine);
    EXPECT_EQ(Shape({"FormShape", "cancel"}, s, true), Result::Refused);
    EXPECT_EQ(Shape({"FormShape", "Value=12,5", "Range=900", "ok"}, s, true), Result::Refused);
    EXPECT_EQ(Shape({"FormShape", "Value=12.5", "Range=900", "Effects=2", "ok"}, s, true), Result::Stored);
    EXPECT_EQ((std::tuple{s.gLineWidth, s.gLineType, s.vRange}), (std::tuple{12.5, 2, 900}));
    // The window's close box is Cancel where the dialog allows it.
    EXPECT_EQ(Shape({"FormShape", "Value=9", "close"}, s), Result::Cancelled);
    EXPECT_EQ(s.gLineWidth, 12.5);

    FormButtons buttons;
    int shown = 0;
    buttons.converter = [&] { ++shown; };
    EXPECT_EQ(Shape({"FormShape", "Converter", "Value=3", "ok"}, s, false, buttons), Result::Stored);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(s.gLineWidth, 3.0);
    EXPECT_EQ(Shape({"FormShape", "Settings", "ok"}, s, false, buttons), Result::Refused);
    EXPECT_EQ(problem, "FormShape has no button Settings");
}

TEST_F(Answers, ProjectSettingsValuesCarryEscapedBytesAndButtonsArePressedInOrder)
{
    ProjectRecord p;
    ResetProject(p);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "cancel"}, p, true, ctx, problem), Result::Refused);
    EXPECT_EQ(problem, "a new project's settings close only with OK");
    // "%20" is a blank, "%25" a percent sign; a button the form doesn't have is refused.
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Text1=Big%20Field%2525", "ok"}, p, false, ctx, problem),
              Result::Stored);
    EXPECT_EQ(p.Name, "Big Field%25");
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Launch", "ok"}, p, false, ctx, problem), Result::Refused);
    EXPECT_EQ(problem, "FormSettings has no button Launch");

    // "Settings" opens FormOptimize on the working copy; its OK is stored with the settings' OK.
    FormButtons buttons;
    int optimized = 0, converters = 0;
    buttons.optimize = [&](ProjectRecord& working) {
        ++optimized;
        std::string why;
        return AnswerOptimizeForm({"FormOptimize", "Text5=300", "Text1=grass.bmp", "ok"}, working, ctx, why) ==
               Result::Stored;
    };
    buttons.converter = [&] { ++converters; };
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Settings", "Converter", "cancel"}, p, false, ctx, problem, buttons),
              Result::Cancelled);
    EXPECT_EQ(p.Distance[0], 100);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Settings", "Converter", "ok"}, p, false, ctx, problem, buttons),
              Result::Stored);
    EXPECT_EQ((std::tuple{optimized, converters, p.Distance[0], p.Texture[0]}), (std::tuple{2, 2, 300, "grass.bmp"}));
}

TEST_F(Answers, PreferencesWithTheirShapeAndFolderButtons)
{
    ConfigRecord c = config;
    // Grid spacings are checked in order, each 0..1000.
    EXPECT_EQ(AnswerOptionsForm({"FormOptions", "Tg2=1001", "ok"}, c, false, ctx, problem), Result::Refused);
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You entered a wrong value for grid spacing 2!"});
    EXPECT_EQ(c.GridDist[1], 200);
    // The default shape's dialog and the folder browser are asked through the Ui.
    ui.files.push_back("/scenery/out");
    EXPECT_EQ(AnswerOptionsForm({"FormOptions", "Tg1=25", "Pg1=255", "Check1=1", "poly", "Browse2", "ok"}, c, false,
                                ctx, problem),
              Result::Stored);
    EXPECT_EQ((std::tuple{c.GridDist[0], c.GridColor4, c.EnableOpenGL}), (std::tuple{25, 255, 1}));
    EXPECT_EQ(c.SceneryPath, AddBackslash("/scenery/out"));
    EXPECT_EQ(ui.Messages().back(), "OpenGL rendering will only be enabled/disabled after restarting Fieldwright...");
    EXPECT_EQ(ui.calls[ui.calls.size() - 2].kind, "folder");
    EXPECT_EQ(ui.calls[ui.calls.size() - 2].text, PathPrompts()[1]);
    EXPECT_EQ(AnswerOptionsForm({"FormOptions", "Pg1=red", "ok"}, c, false, ctx, problem), Result::Refused);
    EXPECT_EQ(problem, "Pg1 takes a colour, a number 0 to 16777215");
}

// The conversions themselves are the converter's test.
TEST_F(Answers, ConverterKeepsItsFieldsAndConvertsOnBothTabs)
{
    std::map<std::string, std::string> fields;
    const auto answer = [&](const std::vector<std::string>& words) {
        return AnswerConverterForm(words, fields, ctx, problem);
    };
    EXPECT_EQ(answer({"FormConverter", "Text3=1000", "OutputUnit=2", "dist", "close"}), Result::Cancelled);
    EXPECT_EQ(fields["Text4"], "3280.8");
    EXPECT_EQ(answer({"FormConverter", "Text1=S40%2030", "lat", "close"}), Result::Cancelled);
    EXPECT_EQ(fields["Text2"], "-40.5");
    EXPECT_EQ(fields["Text3"], "1000"); // the other tab keeps what was typed
    EXPECT_EQ(answer({"FormConverter", "Text4=1", "close"}), Result::Refused);
    EXPECT_EQ(problem, "the converter's result Text4 can't be typed into");
    EXPECT_EQ(answer({"FormConverter", "dist", "ok"}), Result::Refused);
    EXPECT_EQ(problem, "the converter has no OK or Cancel: its answer ends with close");
}

TEST_F(Answers, OutOfRangeListPositionsAndTicksNeverLeaveTheRecordsBounds)
{
    ObjectRecord r = Fresh(kRunway);
    EXPECT_EQ(Object({"FormRunway", "Surface=-5", "VasiBarsN=999", "RwyNumber=-3", "RwyDesignator=77", "AprLF=x",
                      "LightIntensity=5", "ok"},
                     r),
              Result::Stored);
    // No row chosen: the surface stays.
    EXPECT_EQ((std::vector<int>{r.Surface(), r.VasiBarsN(), r.RwyNumber(), r.RwyDesignator(), r.AprLF()}),
              (std::vector<int>{kSurfaceAsphalt, 8, 0, 3, 0}));
    ObjectRecord a = Fresh(kApi);
    EXPECT_EQ(Object({"FormOapi", "Combo1=99999", "Combo2=-4", "ok"}, a), Result::Stored);
    EXPECT_EQ(a.DetailLevel(), 0);
    EXPECT_EQ(Object({"FormOapi", "Combo1=-7", "ok"}, a), Result::Stored);
    ShapeRecord t = FreshShape(kTexPoly);
    EXPECT_EQ(Shape({"FormShape", "SliderColor=4000", "Layer=-1", "ok"}, t), Result::Stored);
    EXPECT_EQ(t.mSliderColor, 255);
    EXPECT_EQ(t.vLayer, 0);
}

} // namespace
} // namespace fw
