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

TEST(SignExport, GoldenSigns)
{
    ExpectGoldens({
        {"sign_location_b", [](TestProject& t) { Sign(t, "Location_B"); }},
        // A 3-D sign has no foot vertices, yet its feet blocks.
        {"sign_3d", [](TestProject& t) { Sign(t, " Direction_ArrowLeft_a_17", "3D", 90, 200, -100); }},
        {"sign_rwyinstruction",
         [](TestProject& t) { Sign(t, "RwyInstruction_ArrowLeft_33_ArrowRight Direction_H", "Flat", 30); }},
        // Empty and unknown captions write nothing, and the counter goes on.
        {"sign_skipped",
         [](TestProject& t) {
             Sign(t, "");
             Sign(t, "Taxi_A Location");
             Sign(t, "Location_B");
         }},
    }, "export2");
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
