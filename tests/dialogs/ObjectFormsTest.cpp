#include <algorithm>

#include <gtest/gtest.h>

#include "core/Records.h"
#include "dialogs/ObjectForms.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

ObjectRecord Fresh(int type)
{
    ObjectRecord o;
    ResetObject(o, type, "/prog/");
    return o;
}

struct Dialog : ::testing::Test {
    ScriptedUi ui;
    ValueContext ctx{'.', &ui};
    std::vector<std::string> Said() const { return ui.Messages(); }
};

// NDB and VOR share one model: the checks in order, the first failure keeps the record, and
// each keeps its own frequency band and ticks.
TEST_F(Dialog, NavChecksRunInOrderAndTheFirstFailureKeepsTheRecord)
{
    ObjectRecord o = Fresh(kNdb);
    FormOndb f;
    f.Show_(o, '.');
    EXPECT_EQ(f.values.Text("Text1"), "200");
    f.values["Text1"] = "526.6";
    f.values["Text2"] = "0";
    f.values["Text3"] = "";
    EXPECT_EQ(f.Ok(ctx, o), OkResult::Refused);
    f.values["Text1"] = "526.5";
    EXPECT_EQ(f.Ok(ctx, o), OkResult::Refused);
    f.values["Text2"] = "255";
    EXPECT_EQ(f.Ok(ctx, o), OkResult::Refused);
    f.values["Text3"] = "XY";
    f.values["Text4"] = "";
    EXPECT_EQ(f.Ok(ctx, o), OkResult::Refused);
    EXPECT_EQ(o.Frequency(), 200.0);
    f.values["Text4"] = "Home_beacon";
    f.values.SetTick("Check1", true);
    ASSERT_EQ(f.Ok(ctx, o), OkResult::Stored);
    EXPECT_EQ(o.Frequency(), 526.5);
    EXPECT_EQ(o.Range(), 255);
    EXPECT_EQ(o.ID(), "XY");
    EXPECT_EQ(o.NdbVisible(), 1);

    ObjectRecord v = Fresh(kVor);
    FormOvor g;
    g.Show_(v, ',');
    EXPECT_EQ(g.values.Text("Text1"), "108");
    EXPECT_TRUE(g.values.Tick("Check1"));
    g.values["Text1"] = "135,76";
    ValueContext comma{',', &ui};
    EXPECT_EQ(g.Ok(comma, v), OkResult::Refused);
    g.values["Text1"] = "135,75";
    g.values.SetTick("Check1", false);
    g.values.SetTick("Check2", true);
    ASSERT_EQ(g.Ok(comma, v), OkResult::Stored);
    EXPECT_EQ(v.Frequency(), 135.75);
    EXPECT_EQ(v.DME(), 0);
    EXPECT_EQ(v.VorVisible(), 1);
    EXPECT_EQ(Said(), (std::vector<std::string>{
                          "You entered a wrong value for the frequency!", "You entered a wrong value for the range!",
                          "Please enter an ID!", "Please enter a name!", "You entered a wrong value for the frequency!"}));
}

TEST_F(Dialog, ExcludeAndInitialLocation)
{
    ObjectRecord e = Fresh(kExclude);
    FormOexclude x;
    x.Show_(e, '.');
    x.values["Text1"] = "19";
    EXPECT_EQ(x.Ok(ctx, e), OkResult::Refused);
    x.values["Text1"] = "20";
    x.values["Text2"] = "10001";
    EXPECT_EQ(x.Ok(ctx, e), OkResult::Refused);
    x.values["Text2"] = "10000";
    x.values.SetTick("Check3", true);
    ASSERT_EQ(x.Ok(ctx, e), OkResult::Stored);
    EXPECT_EQ(e.ExclWidth(), 20);
    EXPECT_EQ(e.ExclHeight(), 10000);
    EXPECT_EQ(e.ExcludeNDB(), 1);

    ObjectRecord i = Fresh(kInit);
    FormInit n;
    n.Show_(i, '.');
    n.values["Text1"] = "";
    n.values["Text2"] = "360.01";
    EXPECT_EQ(n.Ok(ctx, i), OkResult::Refused);
    n.values["Text2"] = "360";
    ASSERT_EQ(n.Ok(ctx, i), OkResult::Stored); // an empty name is allowed here
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
    EXPECT_EQ(RunwayEnds(18, 0), (std::array<std::string, 2>{"18", "36"}));
    EXPECT_EQ(RunwayEnds(36, 0), (std::array<std::string, 2>{"36", "18"}));
    EXPECT_EQ(RunwayEnds(5, 0), (std::array<std::string, 2>{"05", "23"}));
    EXPECT_EQ(RunwayEnds(9, 1), (std::array<std::string, 2>{"09L", "27R"}));
    EXPECT_EQ(RunwayEnds(27, 3), (std::array<std::string, 2>{"27R", "09L"}));
    EXPECT_EQ(RunwayEnds(0, 2), (std::array<std::string, 2>{"00C", "18C"}));
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
    f.values["Heading"] = "359.9999";
    f.values.SetInt("Surface", 7); // the second "Asphalt"
    f.values.SetInt("RwyNumber", 18);
    f.values.SetInt("LightIntensity", 0);
    f.values["Length"] = "100";
    ASSERT_EQ(f.Ok(ctx, o), OkResult::Stored);
    EXPECT_EQ(o.Surface(), kSurfaceAsphalt2);
    EXPECT_EQ(o.Rotation, 359.9999);
    EXPECT_EQ(o.RwyNumber(), 18);
    EXPECT_EQ(o.Length(), 100);
    EXPECT_EQ(o.LightIntensityLow, -1);
    EXPECT_EQ(o.LightIntensityHigh, 0);
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
    EXPECT_EQ(b[2].items[0], "ArrowLeft");
    EXPECT_EQ(b[2].items[1], "10");
    EXPECT_EQ(b[2].items[2], "ArrowRight");
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
    const auto at = [](const std::string& type, const std::string& item) {
        const std::vector<std::string> cells = SignCells(type);
        const SheetRect r =
            SignCellOnSheet(type, static_cast<int>(std::find(cells.begin(), cells.end(), item) - cells.begin()));
        return std::vector<int>{r.x, r.y, r.w, r.h};
    };
    EXPECT_EQ(at("Direction", "H"), (std::vector<int>{112, 0, 16, 16}));
    EXPECT_EQ(at("Direction", "ArrowLeft"), (std::vector<int>{48, 80, 16, 16}));
    EXPECT_EQ(at("Location", "B"), (std::vector<int>{16, 128, 16, 16}));
    EXPECT_EQ(at("RwyInstruction", "6"), (std::vector<int>{160, 16, 32, 16}));
    EXPECT_EQ(at("RwyInstruction", "34"), (std::vector<int>{32, 112, 32, 16}));
    EXPECT_EQ(at("RwyInstructionArrow", "ArrowUp"), (std::vector<int>{80, 96, 16, 16}));
}

TEST_F(Dialog, SignStylesAndHeading)
{
    ObjectRecord o = Fresh(kSign);
    FormSign f;
    f.Show_(o, '.');
    EXPECT_EQ(f.values.Int("Style"), 1);
    f.SetPanelType(0, 2);
    f.buffer[0].items[0] = "C";
    f.values["Heading"] = "361";
    EXPECT_EQ(f.Ok(ctx, o), OkResult::Refused);
    f.values["Heading"] = "90";
    f.values.SetInt("Style", 0);
    ASSERT_EQ(f.Ok(ctx, o), OkResult::Stored);
    EXPECT_EQ(o.Caption(), " Location_C");
    EXPECT_EQ(o.Style(), "Flat");
    EXPECT_EQ(Said(), std::vector<std::string>{"You entered a wrong value for the heading!"});
}

} // namespace
} // namespace fw
