// Whole exports of small projects, one case each, against texts read line by line.
#include "ExportTestSupport.h"

namespace fw::test {
namespace {

// A 200 x 200 world-unit square around the origin, wound clockwise on the plan.
const PointList kSquare{{-100, -100}, {100, -100}, {100, 100}, {-100, 100}};
const PointList kTriangle{{-100, -100}, {100, -100}, {0, 100}};

TEST(GoldenExport, PolygonsLinesAndDots)
{
    ExpectGoldens({
        // Head and copyright only.
        {"empty", [](TestProject& t) { t.project.Copyright = "Jane Roe"; }},
        {"poly_colored",
         [](TestProject& t) {
             t.Shape(kPoly, kTriangle).gIsColored = 1;
             ShapeRecord& b = t.Shape(kPoly, {{0, 0}, {400, 0}, {400, 200}, {200, 100}, {0, 200}}); // concave
             b.gIsColored = 1;
             b.cLighted = 1;
             b.cTransparency = 10;
             b.cColor = RGB(1, 2, 3);
             b.gComment = "apron";
             b.vTime = 5;
             b.vRange = 1500;
         }},
        // A textured square with a point in the middle of an edge.
        {"poly_textured",
         [](TestProject& t) {
             ShapeRecord& s = t.Shape(kPoly, {{-100, -100}, {0, -100}, {100, -100}, {100, 100}, {-100, 100}});
             s.tDayPath = "C:\\tex\\grass.bmp";
             s.tLoadflag = {0, 1, 1, 0};
             s.vTime = 2;
         }},
        // A layered polygon writes its own area.
        {"poly_layered",
         [](TestProject& t) {
             t.project.PolyScale = 0.5;
             ShapeRecord& s = t.Shape(kPoly, kSquare);
             s.gIsColored = 1;
             s.vLayer = 3;
             s.vRange = 500;
         }},
        // One texture matched by the levels, one not.
        {"poly_texture_levels",
         [](TestProject& t) {
             t.project.UseTextureLevels = 1;
             t.project.Distance = {100, 200, 300};
             t.project.Texture = {"asphalt.bmp", "concrete.r8", "", ""};
             t.project.Color = {RGB(10, 20, 30), RGB(40, 50, 60), 0, 0};
             t.Shape(kPoly, kSquare).tDayPath = "concrete.r8";
             t.Shape(kPoly, kTriangle).tDayPath = "dirt.bmp";
         }},
        // The centre-line copies of an unlayered and a layered line.
        {"centreline",
         [](TestProject& t) {
             const PointList line{{-400, 0}, {400, 0}};
             t.Shape(kWideLine, line).gLineType = 2;
             ShapeRecord& layered = t.Shape(kWideLine, line);
             layered.gLineType = 3;
             layered.vLayer = 1;
         }},
        {"dotlines",
         [](TestProject& t) {
             // Spacing 30 m at scale .5 is 60 local units; the second segment is shorter than that.
             ShapeRecord& lights = t.Shape(kDotLine, {{0, 0}, {0, -600}, {40, -600}, {40, -1400}});
             lights.gComment = "approach";
             ShapeRecord& dots = t.Shape(kDotLine, {{0, 0}, {100, 0}, {100, 100}});
             dots.DotLineType = 1;
             dots.cColor = 30;
             t.Shape(kDotLine, {{0, 0}, {20, 0}}).vLayer = 2;
         }},
    });
}

TEST(GoldenExport, TexPolyPlainAndLaddered)
{
    TestProject t;
    ShapeRecord& a = t.Shape(kTexPoly, kSquare);
    a.mTexMap = {0, 0, 255, 0, 255, 255, 0, 255};
    a.tSwitch = 1;
    ExpectGolden("texpoly", ExportOf(t));

    t.project.UseTextureLevels = 1;
    t.project.Texture = {"Concrete.r8", "", "", ""};
    t.project.Color = {RGB(9, 8, 7), 0, 0, 0};
    ExpectGolden("texpoly_ladder", ExportOf(t));
}

TEST(GoldenExport, WideLinesByTypeAndScale)
{
    TestProject t;
    t.project.LineScale = 0;
    const PointList line{{-200, 0}, {0, 0}, {200, 100}};
    ShapeRecord& thin = t.Shape(kWideLine, line); // 0.5 m: scale .25, half-width 1
    thin.gLineType = 0;
    ShapeRecord& road = t.Shape(kWideLine, line); // 10 m: scale 2, half-width 2.5 to 2
    road.gLineType = 1;
    road.gLineWidth = 10;
    road.gIsColored = 0;
    road.tDayPath = "road.bmp";
    ExpectGolden("wideline_auto", ExportOf(t));

    t.project.LineScale = 1;
    ExpectGolden("wideline_fixed", ExportOf(t));
}

TEST(GoldenExport, PointReductionOnExemptShapesOnly)
{
    TestProject t;
    ShapeRecord& poly = t.Shape(kPoly, kSquare);
    poly.gIsColored = 1;
    poly.vNoPointReduction = 1;
    ShapeRecord& line = t.Shape(kWideLine, {{-200, 0}, {200, 0}});
    line.vNoPointReduction = 1;
    const std::string off = ExportOf(t);
    t.project.UsePointReduction = 1;
    const std::string on = ExportOf(t);
    EXPECT_EQ(off, on);
    ExpectGolden("reduction_exempt", on);
}

// A fault stops the export with the item's name and writes nothing, new file or old.
TEST(GoldenExport, AFaultWritesNoFile)
{
    TestProject t;
    t.project.UsePointReduction = 1;
    ShapeRecord& poly = t.Shape(kPoly, kSquare);
    poly.gIsColored = 1;
    poly.gComment = "taxiway A";
    Scratch dir("fw export fault");
    std::ofstream(dir / "old.txt", std::ios::binary) << "keep me";
    EXPECT_FALSE(ExportTextFile(t.Input(), dir / "new.txt", kExportText, {}));
    EXPECT_FALSE(std::filesystem::exists(dir / "new.txt"));
    EXPECT_FALSE(ExportTextFile(t.Input(), dir / "old.txt", kExportText, {}));
    EXPECT_EQ(ReadBytes(dir / "old.txt"), "keep me");
    ASSERT_EQ(t.ui.Messages().size(), 2u);
    EXPECT_EQ(t.ui.Messages()[0], t.Fault() + "\r\n\r\nNo file was written.");
    EXPECT_NE(t.Fault().find("shape 1 (Poly, \"taxiway A\")"), std::string::npos) << t.Fault();

    // A wide line's ladder, and a forest point on the centre of its box, which has no outward direction.
    TestProject w;
    w.project.UsePointReduction = 1;
    w.Shape(kWideLine, {{0, 0}, {10, 0}});
    EXPECT_NE(w.Fault().find("shape 1 (Line/Road"), std::string::npos) << w.Fault();
    TestProject f;
    f.Shape(kForest, {{0, 0}, {400, 0}, {400, 400}, {200, 200}, {0, 400}});
    EXPECT_NE(f.Fault().find("shape 1 (Voluminous forest"), std::string::npos) << f.Fault();
    EXPECT_NE(f.Fault().find("centre of its box"), std::string::npos) << f.Fault();
}

} // namespace
} // namespace fw::test
