// Taxiway signs: the caption's panels, their cells on the sheet, and three levels of detail.
#include "ExportTestSupport.h"

namespace fw::test {
namespace {

ObjectRecord& Sign(TestProject& t, const std::string& caption, const std::string& style = "FlatLighted",
                   double rotation = 0, std::int32_t x = 0, std::int32_t y = 0)
{
    ObjectRecord& s = t.Object(kSign, x, y);
    s.Caption() = caption;
    s.Style() = style;
    s.Rotation = rotation;
    return s;
}

TEST(SignExport, LocationBLightedFacingNorth)
{
    TestProject t;
    Sign(t, "Location_B");
    const std::string text = ExportOf(t);
    ExpectGolden("sign_location_b", text, "export2");
    // The width ends at 45 with the gap, the middle is 22: corners from -22 to 14.
    EXPECT_EQ(CountLines(text, "    -22      46      0      ; 0"), 1u);
    EXPECT_EQ(CountLines(text, "     14      46      0      ; 1"), 1u);
    // Cell U 16, V 127, W 15, H -15.
    EXPECT_EQ(CountLines(text, "     0     16      127   "), 1u);
    EXPECT_EQ(CountLines(text, "     2     31      112   "), 1u);
    EXPECT_EQ(CountLines(text, "LoadBitmap( 0 L5 EF 128 128 128 \"fwt_sign1.bmp\" )"), 1u);
}

TEST(SignExport, ThreeDimensionalStyleHasNoFootVerticesYetItsFeetBlocks)
{
    TestProject t;
    Sign(t, " Direction_ArrowLeft_a_17", "3D", 90, 200, -100);
    const std::string text = ExportOf(t);
    ExpectGolden("sign_3d", text, "export2");
    EXPECT_EQ(CountLines(text, "MoveToPt(  0 )"), 4u); // two feet at two levels
    EXPECT_EQ(CountLines(text, "LoadBitmap( 0 5 EF"), 1u);
}

TEST(SignExport, RunwayInstructionWithArrowsAndNumber33)
{
    TestProject t;
    Sign(t, "RwyInstruction_ArrowLeft_33_ArrowRight Direction_H", "Flat", 30);
    ExpectGolden("sign_rwyinstruction", ExportOf(t), "export2");
}

TEST(SignExport, EmptyAndUnknownCaptionsWriteNothingAndTheCounterGoesOn)
{
    TestProject t;
    Sign(t, "");
    Sign(t, "Taxi_A Location");
    Sign(t, "Location_B");
    const std::string text = ExportOf(t);
    ExpectGolden("sign_skipped", text, "export2");
    EXPECT_EQ(CountLines(text, "TAXIWAY SIGNS"), 1u);
    EXPECT_EQ(CountLines(text, ":ObjEnd2"), 2u);
    EXPECT_EQ(CountLines(text, ":ObjEnd0"), 0u);
}

TEST(SignExport, CaptionParsingRules)
{
    TestProject t;
    // Double blanks and underscores make no empty pieces; a fifth item is ignored; "05" and "0" pass the
    // number test and find no cell; a panel with only a type word adds nothing.
    Sign(t, "Direction__A__B_C_D_E  RwyInstruction_05 RwyInstruction_0_ArrowUp Direction");
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    // Four Direction cells, then "05" and "0" with the arrow: six elements, three back plates.
    EXPECT_EQ(CountLines(text, "TexPoly( a"), 7u);
    EXPECT_EQ(CountLines(text, "Poly( ai"), 9u);
    // A cell not found shows (0, 0) of its quadrant: U 128 in the second, V 255.
    EXPECT_EQ(CountLines(text, "  128     255   "), 2u);
}

} // namespace
} // namespace fw::test
