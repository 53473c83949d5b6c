// Objects, runways, signs and trees (goldens in tests/fixtures/export2): navigation aids, 3-D objects,
// initial locations, exclude areas, the flatten polygon, runways with their ILS and markers, taxiway
// signs, tree lines and forests.
#include "ExportTestSupport.h"

#include "core/Random.h"

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

ShapeRecord& TreeLine(TestProject& t, const PointList& pts, int bands, int selected, double height)
{
    ShapeRecord& s = t.Shape(kTreeLine, pts);
    s.mNumBands = static_cast<std::uint8_t>(bands);
    s.mSelectedBand() = selected;
    s.mBandHeight = height;
    return s;
}

TEST(ItemExport, Goldens)
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
        // Lights, thresholds, extensions, ILS at each end and markers.
        {"runway_full",
         [](TestProject& t) {
             t.project.Altitude = 448.5;
             t.project.MagVar = -2.5;
             ObjectRecord& r = t.Object(kRunway, 100, -60);
             r.Rotation = 82.25;
             r.RwyNumber() = 8;
             r.RwyDesignator() = 1;
             r.Length() = 6500;
             r.RwyWidth() = 100;
             r.ThrOffN() = 300;
             r.ExtN() = 150;
             r.ShowTouchdownLights() = 1;
             r.Show300Markers() = 1;
             r.Surface() = kSurfaceConcrete;
             r.VasiBarsF() = 2;
             r.StrobesF() = 0;
             r.IlsSlopeF() = 2.75;
             r.IlsEnabledN() = 1;
             r.IlsEnabledF() = 1;
             r.IlsDmeF() = 0;
             r.IlsGlideSlopeF() = 0;
             r.IlsFreqN() = 109.3;
             r.IlsFreqF() = 110.15;
             r.IlsIdN() = "IABC";
             r.IlsNameN() = "Abc_Tower";
             r.IlsIdF() = "IDEF";
             r.IlsNameF() = "Def_Tower";
             r.MarkerEnabledN() = 1;
             r.markerEnabledF() = 1;
             r.MarkerMiddleF() = 0;
         }},
        // Without lights, ILS or markers it stays out of "NAVIGATION".
        {"runway_plain",
         [](TestProject& t) {
             ObjectRecord& r = t.Object(kRunway, 0, 0);
             r.Rotation = 0;
             r.RwyNumber() = 9;
             r.EnableLights() = 0;
             r.ShowBorderLine() = 0;
             r.Show150Markers() = 1;
         }},
        // A far heading that wraps loses its decimals.
        {"runway_heading_wrap",
         [](TestProject& t) {
             ObjectRecord& r = t.Object(kRunway, 0, 0);
             r.Rotation = 270.5;
             r.RwyNumber() = 27;
             r.RwyDesignator() = 3;
             r.IlsEnabledF() = 1;
         }},
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
        // Two points give two caps around one wall piece.
        {"tree_example", [](TestProject& t) { TreeLine(t, {{0, 0}, {200, 0}}, 8, 0, 20); }},
        // Four bands with several pieces fold past 256.
        {"tree_bands4",
         [](TestProject& t) {
             ShapeRecord& s = TreeLine(t, {{0, 0}, {400, 0}, {400, 300}, {400, 300}, {0, 300}}, 4, 1, 15);
             s.gComment = "hedge";
             s.vTime = 3;
             s.tLoadflag = {0, 1, 1, 0};
             s.vRange = 2500;
         }},
        {"tree_bands8",
         [](TestProject& t) { TreeLine(t, {{-300, 100}, {-100, -100}, {100, 100}, {300, -100}, {500, 100}}, 8, 3, 12); }},
        // A line on one local point keeps its frame only.
        {"tree_one_point", [](TestProject& t) { TreeLine(t, {{0, 0}, {1, 0}, {1, 1}}, 8, 0, 20); }},
    }, "export2");
}

// Lines a project's export holds, counted exactly, in a text that passes the structure check.
struct CountCase {
    const char* what;
    std::function<void(TestProject&)> build;
    std::vector<std::pair<const char*, std::size_t>> counts;
};

TEST(ItemExport, LinesCounted)
{
    const CountCase cases[] = {
        {"a macro's range in kilometres takes the decimal comma",
         [](TestProject& t) {
             t.separator = ',';
             ObjectRecord& o = t.Object(kApi, 0, 0);
             o.Range() = 999;
             o.Scale() = 1.25;
         },
         {{"       6                 ;Range (km)", 1}, {"        1.25             ;Scale", 1}}},
        // All six marker distances 0: no marker block, though the runway stands in "NAVIGATION".
        {"a reciprocal heading without wrap keeps its decimals",
         [](TestProject& t) {
             ObjectRecord& r = t.Object(kRunway, 0, 0);
             r.Rotation = 90.5;
             r.IlsEnabledF() = 1;
             r.MarkerEnabledN() = 1;
             for (auto* d : {&r.MarkerInnerN(), &r.MarkerMiddleN(), &r.MarkerOuterN(), &r.MarkerInnerF(),
                             &r.MarkerMiddleF(), &r.MarkerOuterF()})
                 *d = 0;
         },
         {{" 270.5", 1}, {"Markers for Runway", 0}, {"ILS for Runway", 1}}},
        {"the low intensity pair and light codes",
         [](TestProject& t) {
             t.Object(kRunway, 0, 0).LightIntensityLow = 1; // only a hand-made file holds 1 here
             t.Object(kRunway, 0, 0).ShowCenterLights() = 0;
         },
         {{"        LIGHTS 5", 1}, {"        LIGHTS 1", 1}, {"        ID 0", 2}}},
        // Double blanks and underscores make no empty pieces; a fifth item is ignored; "05" and "0" pass the
        // number test and find no cell; a panel with only a type word adds nothing. Four Direction cells,
        // then "05" and "0" with the arrow: six elements, three back plates. A cell not found shows (0, 0)
        // of its quadrant: U 128 in the second, V 255.
        {"a sign caption's parsing rules",
         [](TestProject& t) { Sign(t, "Direction__A__B_C_D_E  RwyInstruction_05 RwyInstruction_0_ArrowUp Direction"); },
         {{"TexPoly( a", 7}, {"Poly( ai", 9}, {"  128     255   ", 2}}},
        {"a forest of the second type takes its own textures, and a concave one is written as convex",
         [](TestProject& t) {
             ShapeRecord& s = t.Shape(kForest, {{0, 0}, {400, 0}, {400, 400}, {200, 100}, {0, 400}});
             s.ForestType = 1;
             s.vTime = 2;
         },
         {{"fwt_forestc1.bmp", 1}, {"fwt_foresttopc_13.bmp", 1}, {"ConcavePoly", 0}, {"IfVarAnd( :RefEnd0 28C 4 )", 1}}},
        {"a collinear forest writes nothing but the section",
         [](TestProject& t) { t.Shape(kForest, {{0, 0}, {100, 0}, {200, 0}}); },
         {{"3-D OBJECTS", 1}, {"Forest ", 0}}},
        {"each tree line and forest has an area of its own with the same labels",
         [](TestProject& t) {
             TreeLine(t, {{0, 0}, {200, 0}}, 8, 0, 20);
             t.Shape(kForest, {{0, 0}, {400, 0}, {200, 300}});
             TreeLine(t, {{0, 0}, {0, 200}, {100, 300}}, 4, 3, 30).vTime = 0;
         },
         {{"Area( 5 ", 3}, {"    :RefEnd0", 3}, {"Jump( :RefEnd0 )", 1}}}, // never visible
        // However meaningless. (A band count other than four or eight, or a height below a metre, stops the
        // export: DesignCheck.ExportFaultsAreTheExportsOwn.)
        {"a band far out of range still writes numbers",
         [](TestProject& t) { TreeLine(t, {{0, 0}, {200, 0}}, 8, -2147483647 - 1, 20); },
         {}},
        {"a collinear polygon writes nothing but counts",
         [](TestProject& t) {
             t.Shape(kPoly, {{0, 0}, {100, 0}, {200, 0}});
             t.Shape(kPoly, {{0, 0}, {100, 0}, {0, 100}}).gIsColored = 1;
         },
         {{"UNLAYERED POLYGONS", 1}, {":RefEnd0", 0}, {":RefEnd1", 2}, {"Polygon - Poly()", 1}}},
        // A file may hold a shape whose point list went missing.
        {"shapes without points",
         [](TestProject& t) {
             for (int type : {kPoly, kTexPoly, kWideLine, kDotLine})
                 t.Shape(type, {});
             t.Shape(kWideLine, {{10, 10}});
             t.Shape(kDotLine, {{10, 10}});
         },
         {}},
    };
    for (const CountCase& c : cases) {
        SCOPED_TRACE(c.what);
        TestProject t;
        c.build(t);
        const std::string text = ExportOf(t);
        ExpectWellFormed(text);
        for (const auto& [part, n] : c.counts)
            EXPECT_EQ(CountLines(text, part), n) << part;
    }
}

TEST(NavExport, ThreeExcludeAreasInATextExportAndACompilerRun)
{
    TestProject t;
    t.Object(kExclude, 0, 0);
    ObjectRecord& b = t.Object(kExclude, 4000, -2000);
    b.ExclWidth() = 500;
    b.ExclHeight() = 250;
    b.ExcludeVOR() = 1;
    b.ExcludeNDB() = 1;
    ObjectRecord& c = t.Object(kExclude, -1000, 1000);
    c.ExcludeObjects() = 0;
    c.ExcludeNDB() = 1;
    ExpectGolden("exclude_text", ExportOf(t), "export2");
    ExpectGolden("exclude_compile", ExportOf(t, "C:\\scenery\\x.bgl"), "export2");

    // Written to a file, the compiler run names the exclude files beside the chosen scenery; a text
    // export names the bare files.
    Scratch dir("fw exclude run");
    const std::string path = dir / "out.txt";
    ASSERT_TRUE(ExportTextFile(t.Input(), path, kExportCompile, "/home/jane/my scenery/airport.bgl"));
    const std::string text = ReadBytes(path);
    EXPECT_EQ(CountLines(text, "GenExcl( \"/home/jane/my scenery/Excl_1.bgl\" 1"), 1u);
    EXPECT_EQ(CountLines(text, "GenExcl( \"/home/jane/my scenery/Excl_3.bgl\" 4"), 1u);
    ASSERT_TRUE(ExportTextFile(t.Input(), path, kExportText, "/home/jane/my scenery/airport.bgl"));
    EXPECT_EQ(CountLines(ReadBytes(path), "GenExcl( \"Excl_2.bgl\" 7"), 1u);
}

// The shaken feet of a forest's wall: each within two units of its outline point (Y negated). They are
// put back on the outline so that the rest of the text can be compared.
std::string SettleFeet(const std::string& text, const PointList& centred)
{
    std::vector<std::string> lines = SplitLines(text);
    std::size_t at = 0;
    while (at < lines.size() && lines[at].find("VecPoints( 0") == std::string::npos)
        ++at;
    EXPECT_LT(at, lines.size());
    for (std::size_t i = 0; i < centred.size() && at + 1 + 2 * i < lines.size(); ++i) {
        std::string& l = lines[at + 1 + 2 * i];
        const std::string J = "    ";
        const long x = std::strtol(l.substr(J.size(), 6).c_str(), nullptr, 10);
        const long y = std::strtol(l.substr(J.size() + 12, 6).c_str(), nullptr, 10);
        EXPECT_LE(std::labs(x - centred[i].X), 2) << l;
        EXPECT_LE(std::labs(y + centred[i].Y), 2) << l;
        EXPECT_EQ(l.substr(J.size() + 6, 6), " 0    ") << l;
        l = J + Fix6(centred[i].X) + " 0    " + Fix6(-centred[i].Y) + l.substr(J.size() + 18);
    }
    return Join(lines);
}

TEST(ForestExport, ThreePointsGiveNinePointsAndTwoRingsOfThree)
{
    TestProject t;
    t.Shape(kForest, {{0, 0}, {400, 0}, {200, 300}}).mBandHeight = 20;
    // Local metres (0,0), (200,0), (100,150) about the centre (100,75).
    ExpectGolden("forest_three", SettleFeet(ExportOf(t), {{-100, -75}, {100, -75}, {0, 75}}), "export2");
}

TEST(ForestExport, FeetFollowOneUnseededSequenceAcrossExports)
{
    TestProject t;
    t.Shape(kForest, {{0, 0}, {400, 0}, {200, 300}});
    RandomSource session;
    ExportInput in = t.Input();
    in.random = &session;
    ExportBuffer first, second, fresh;
    BuildExportText(in, {}, first);
    BuildExportText(in, {}, second);
    BuildExportText(t.Input(), {}, fresh);
    ExpectWellFormed(Join(second.lines()));
    // The program's first export draws the generator's first numbers; the next goes on from there.
    EXPECT_EQ(first.lines(), fresh.lines());
    const auto a = first.lines();
    const auto b = second.lines();
    ASSERT_EQ(a.size(), b.size());
    int differing = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i]) {
            ++differing;
            EXPECT_NE(a[i].find(" 0    "), std::string::npos) << a[i];
        }
    EXPECT_GT(differing, 0);
    EXPECT_LE(differing, 3);
}

} // namespace
} // namespace fw::test
