// VOR, NDB, 3-D objects, initial locations, exclude areas and the flatten polygon.
#include "ExportTestSupport.h"

#include <cstdio>

namespace fw::test {
namespace {

TEST(NavExport, GoldenNavigationObjectsAndFlatten)
{
    ExpectGoldens({
        {"vor",
         [](TestProject& t) {
             t.project.Altitude = 520.5;
             t.project.MagVar = 1.5;
             ObjectRecord& a = t.Object(kVor, 2000, -1000);
             a.Frequency() = 112.35;
             a.ID() = "MUN";
             a.NavName() = "Munich";
             ObjectRecord& b = t.Object(kVor, -400, 600);
             b.DME() = 0;
             b.Range() = 120;
         }},
        // The VOR frequency takes the decimal comma and nothing else does.
        {"vor_comma",
         [](TestProject& t) {
             t.separator = ',';
             t.project.MagVar = -0.5;
             t.Object(kVor, 0, 0).Frequency() = 108.5;
             t.Object(kNdb, 0, 0).Frequency() = 385.5;
         }},
        {"ndb",
         [](TestProject& t) {
             t.project.Altitude = 12.25;
             ObjectRecord& n = t.Object(kNdb, -3000, 2000);
             n.Frequency() = 344.04;
             n.Range() = 25;
             n.ID() = "OBI";
             n.NavName() = "Obing";
         }},
        // A 3-D object with empty and long parameters.
        {"api",
         [](TestProject& t) {
             t.project.Altitude = 100;
             ObjectRecord& o = t.Object(kApi, 500, 500);
             o.Path() = "/opt/fieldwright/API/fwt_building1.api";
             o.Rotation = 45.5;
             o.Range() = 2500;
             o.Elevation() = 2.5;
             o.Scale() = 0.5;
             o.Param7().clear();
             o.Param9() = "a_very_long_texture_name.bmp";
             o.Param16() = "exactly_15_char";
             o.Param17() = "sixteen_chars_xx";
         }},
        // The initial location under the menu.
        {"init",
         [](TestProject& t) {
             t.project.Name = "Testfield";
             t.project.Altitude = 448.25;
             ObjectRecord& i = t.Object(kInit, 300, -200);
             i.Rotation = 263.5;
             i.InitName() = "Runway_26";
         }},
        // A flatten polygon of ten points uses nine; only the surface box sees the tenth.
        {"flatten",
         [](TestProject& t) {
             t.project.Altitude = 448.5;
             PointList ten;
             for (int k = 0; k < 10; ++k)
                 ten.push_back({k < 5 ? k * 200 : (9 - k) * 200, k < 5 ? 0 : 600 + (k % 2) * 20});
             ten[9] = {-200, 640};
             t.Shape(kFlatten, ten);
         }},
    }, "export2");
}

TEST(NavExport, ObjectRangeInKilometresTakesTheDecimalComma)
{
    TestProject t;
    t.separator = ',';
    ObjectRecord& o = t.Object(kApi, 0, 0);
    o.Range() = 999;
    o.Scale() = 1.25;
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, "       6                 ;Range (km)"), 1u);
    EXPECT_EQ(CountLines(text, "        1.25             ;Scale"), 1u);
}

void ThreeExcludeAreas(TestProject& t)
{
    t.Object(kExclude, 0, 0);
    ObjectRecord& b = t.Object(kExclude, 4000, -2000);
    b.ExclWidth() = 500;
    b.ExclHeight() = 250;
    b.ExcludeVOR() = 1;
    b.ExcludeNDB() = 1;
    ObjectRecord& c = t.Object(kExclude, -1000, 1000);
    c.ExcludeObjects() = 0;
    c.ExcludeNDB() = 1;
}

TEST(NavExport, ThreeExcludeAreasInATextExportAndACompilerRun)
{
    TestProject t;
    ThreeExcludeAreas(t);
    ExpectGolden("exclude_text", ExportOf(t), "export2");
    ExpectGolden("exclude_compile", ExportOf(t, "C:\\scenery\\x.bgl"), "export2");

    // Written to a file, the compiler run names the exclude files beside the chosen scenery.
    const std::string path = ::testing::TempDir() + "fw_exclude_run.txt";
    ASSERT_TRUE(ExportTextFile(t.Input(), path, kExportCompile, "/home/jane/my scenery/airport.bgl"));
    const std::string text = ReadBytes(path);
    std::remove(path.c_str());
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, "GenExcl( \"/home/jane/my scenery/Excl_1.bgl\" 1"), 1u);
    EXPECT_EQ(CountLines(text, "GenExcl( \"/home/jane/my scenery/Excl_3.bgl\" 4"), 1u);
    // A text export of the same project names the bare files.
    ASSERT_TRUE(ExportTextFile(t.Input(), path, kExportText, "/home/jane/my scenery/airport.bgl"));
    EXPECT_EQ(CountLines(ReadBytes(path), "GenExcl( \"Excl_2.bgl\" 7"), 1u);
    std::remove(path.c_str());
}

} // namespace
} // namespace fw::test
