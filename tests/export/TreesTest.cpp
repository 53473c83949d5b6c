// Tree lines and forests: one area each in "3-D OBJECTS", the wall and its caps, the forest's rings.
#include "ExportTestSupport.h"

#include <cstdio>
#include <cstdlib>

#include "core/Random.h"

namespace fw::test {
namespace {

ShapeRecord& TreeLine(TestProject& t, const PointList& pts, int bands, int selected, double height)
{
    ShapeRecord& s = t.Shape(kTreeLine, pts);
    s.mNumBands = static_cast<std::uint8_t>(bands);
    s.mSelectedBand() = selected;
    s.mBandHeight = height;
    return s;
}

TEST(TreeExport, GoldenTreeLines)
{
    ExpectGoldens({
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
    ShapeRecord& s = t.Shape(kForest, {{0, 0}, {400, 0}, {200, 300}});
    s.mBandHeight = 20;
    const std::string text = ExportOf(t);
    // Local metres (0,0), (200,0), (100,150) about the centre (100,75).
    ExpectGolden("forest_three", SettleFeet(text, {{-100, -75}, {100, -75}, {0, 75}}), "export2");
}

TEST(ForestExport, SecondTypeTakesItsOwnTexturesAndConcaveIsWrittenAsConvex)
{
    TestProject t;
    ShapeRecord& s = t.Shape(kForest, {{0, 0}, {400, 0}, {400, 400}, {200, 100}, {0, 400}});
    s.ForestType = 1;
    s.vTime = 2;
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, "fwt_forestc1.bmp"), 1u);
    EXPECT_EQ(CountLines(text, "fwt_foresttopc_13.bmp"), 1u);
    EXPECT_EQ(CountLines(text, "ConcavePoly"), 0u);
    EXPECT_EQ(CountLines(text, "IfVarAnd( :RefEnd0 28C 4 )"), 1u);
}

TEST(ForestExport, CollinearOutlineWritesNothingButTheSection)
{
    TestProject t;
    t.Shape(kForest, {{0, 0}, {100, 0}, {200, 0}});
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, "3-D OBJECTS"), 1u);
    EXPECT_EQ(CountLines(text, "Forest "), 0u);
}

TEST(ForestExport, PointOnTheCentreOfItsBoxStopsTheExportAndWritesNoFile)
{
    TestProject t;
    // Local metres (0,0), (200,0), (200,200), (100,100), (0,200): the fourth is the centre, which has no
    // direction to move outward in.
    t.Shape(kForest, {{0, 0}, {400, 0}, {400, 400}, {200, 200}, {0, 400}});
    const std::string path = ::testing::TempDir() + "fw_forest_centre.txt";
    std::remove(path.c_str());
    EXPECT_FALSE(ExportTextFile(t.Input(), path, kExportText, {}));
    EXPECT_TRUE(ReadBytes(path).empty());
    ASSERT_EQ(t.ui.calls.size(), 1u);
    EXPECT_NE(t.ui.calls[0].text.find("shape 1 (Voluminous forest"), std::string::npos) << t.ui.calls[0].text;
    EXPECT_NE(t.ui.calls[0].text.find("centre of its box"), std::string::npos) << t.ui.calls[0].text;
}

// A band far out of range still writes numbers, however meaningless. (A band count other than four or
// eight, or a height below a metre, stops the export: DesignCheck.ExportFaultsAreTheExportsOwn.)
TEST(TreeExport, BandFarOutOfRangeStaysWellFormed)
{
    TestProject u;
    TreeLine(u, {{0, 0}, {200, 0}}, 8, -2147483647 - 1, 20);
    ExpectWellFormed(ExportOf(u));
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

TEST(TreeExport, EachTreeLineAndForestHasAnAreaOfItsOwnWithTheSameLabels)
{
    TestProject t;
    TreeLine(t, {{0, 0}, {200, 0}}, 8, 0, 20);
    t.Shape(kForest, {{0, 0}, {400, 0}, {200, 300}});
    TreeLine(t, {{0, 0}, {0, 200}, {100, 300}}, 4, 3, 30).vTime = 0;
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, "Area( 5 "), 3u);
    EXPECT_EQ(CountLines(text, "    :RefEnd0"), 3u);
    EXPECT_EQ(CountLines(text, "Jump( :RefEnd0 )"), 1u); // never visible
}

} // namespace
} // namespace fw::test
