// A project of every kind in one export.
#include "ExportTestSupport.h"

#include <cstdio>
#include <cstdlib>

namespace fw::test {
namespace {

TestProject EveryKind()
{
    TestProject t;
    t.project.Name = "Everything";
    t.project.Altitude = 430;
    t.Object(kExclude, 0, 0);
    t.Shape(kFlatten, {{-500, -500}, {500, -500}, {500, 500}, {-500, 500}});
    t.Object(kInit, 100, 100);
    ShapeRecord& poly = t.Shape(kPoly, {{-100, -100}, {100, -100}, {0, 100}});
    poly.gIsColored = 1;
    t.Shape(kWideLine, {{0, 0}, {400, 0}, {400, 400}});
    t.Shape(kDotLine, {{0, 0}, {0, 400}});
    ShapeRecord& layered = t.Shape(kPoly, {{-300, -300}, {300, -300}, {0, 300}});
    layered.gIsColored = 1;
    layered.vLayer = 2;
    ObjectRecord& rwy = t.Object(kRunway, 0, 0);
    rwy.IlsEnabledN() = 1;
    rwy.MarkerEnabledN() = 1;
    t.Shape(kTreeLine, {{0, 0}, {200, 0}, {200, 200}});
    t.Shape(kForest, {{0, 0}, {400, 0}, {200, 300}});
    t.Object(kApi, 50, 50);
    t.Object(kSign, 10, 10).Caption() = "Direction_ArrowLeft_A Location_B RwyInstruction_9_ArrowRight";
    t.Object(kVor, -1000, 0);
    t.Object(kNdb, 1000, 0);
    return t;
}

TEST(EveryKindExport, SectionsStandInTheirOrderAndTheTextIsWellFormed)
{
    const TestProject t = EveryKind();
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    const char* order[] = {"EXCLUDE", "FLATTEN POLYGON", "MENU ENTRY", "UNLAYERED POLYGONS", "UNLAYERED WIDE LINES",
                           "UNLAYERED DOT LINES", "LAYERED SHAPES", "RUNWAYS", "3-D OBJECTS", "TAXIWAY SIGNS",
                           "NAVIGATION"};
    std::size_t at = 0;
    for (const char* title : order) {
        const std::size_t found = text.find(";                 " + std::string(title) + " ", at);
        ASSERT_NE(found, std::string::npos) << title;
        at = found;
    }
    // In "3-D OBJECTS" the tree line and forest come before the object, each in an area of its own.
    const std::size_t tree = text.find("Tree Line");
    const std::size_t forest = text.find("Forest   ");
    const std::size_t macro = text.find("macro(");
    EXPECT_LT(tree, forest);
    EXPECT_LT(forest, macro);
}

// A project file holding every kind, exported by the batch tool as the desktop program would: the reader
// and every exporter together. Its check passes the text and fails a broken one with the line named.
TEST(EveryKindExport, ProjectFileThroughTheBatchTool)
{
    const std::string project = std::string(FW_FIXTURES) + "/export2/every_kind.fwt";
    const std::string out = testing::TempDir() + "fw_every_kind.txt";
    const std::string bad = testing::TempDir() + "fw_check_bad.txt";
    const std::string report = testing::TempDir() + "fw_check_out.txt";
    const std::string cli = std::string("\"") + FW_CLI + "\" ";
    std::remove(out.c_str());
    ASSERT_EQ(std::system((cli + "export \"" + project + "\" \"" + out + "\" --decimal-separator .").c_str()), 0);
    EXPECT_EQ(std::system((cli + "check-scasm \"" + out + "\" > /dev/null").c_str()), 0);
    const std::string text = ReadBytes(out);
    std::size_t at = 0;
    for (const char* part : {"GenExcl(", "Area16N", "MenuEntry(", "Runway(", "Tree Line", "Forest   ", "macro(",
                             "Taxiway sign", "ILS(", "VOR(", "NDB("}) {
        const std::size_t found = text.find(part, at);
        ASSERT_NE(found, std::string::npos) << part;
        at = found;
    }
    std::ofstream(bad, std::ios::binary) << "Area( 5  1  1 6 )\r\n  Jump( :Nowhere )\r\n";
    EXPECT_NE(std::system((cli + "check-scasm \"" + bad + "\" > \"" + report + "\"").c_str()), 0);
    const std::string said = ReadBytes(report);
    EXPECT_NE(said.find(bad + ":1:"), std::string::npos) << said;
    EXPECT_NE(said.find(bad + ":2: label :Nowhere"), std::string::npos) << said;
    for (const std::string& f : {out, bad, report})
        std::remove(f.c_str());
}

} // namespace
} // namespace fw::test
