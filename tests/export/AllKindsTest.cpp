// A project of every kind in one export, and what the structure check finds in the statements of
// trees, signs, runways and objects.
#include "ExportTestSupport.h"

#include <cstdio>
#include <cstdlib>
#include <random>

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

// A project file holding every kind, exported by the batch tool as the desktop program would, and checked
// by it: the reader and every exporter together.
TEST(EveryKindExport, ProjectFileThroughTheBatchTool)
{
    const std::string project = std::string(FW_FIXTURES) + "/export2/every_kind.fwt";
    const std::string out = testing::TempDir() + "fw_every_kind.txt";
    const std::string cli = std::string("\"") + FW_CLI + "\" ";
    std::remove(out.c_str());
    ASSERT_EQ(std::system((cli + "export \"" + project + "\" \"" + out + "\" --decimal-separator .").c_str()), 0);
    EXPECT_EQ(std::system((cli + "check-scasm \"" + out + "\" > /dev/null").c_str()), 0);
    const std::string text = ReadBytes(out);
    ExpectWellFormed(text);
    std::size_t at = 0;
    for (const char* part : {"GenExcl(", "Area16N", "MenuEntry(", "Runway(", "Tree Line", "Forest   ", "macro(",
                             "Taxiway sign", "ILS(", "VOR(", "NDB("}) {
        const std::size_t found = text.find(part, at);
        ASSERT_NE(found, std::string::npos) << part;
        at = found;
    }
    std::remove(out.c_str());
}

// Many small projects of trees, signs, runways and objects with settings drawn at random; every export
// passes the structure check.
TEST(EveryKindExport, GeneratedItemsPass)
{
    std::mt19937 rng(5);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    const char* items[] = {"A", "b", "Z", "1", "17", "18", "05", "0", "33", "36", "ArrowLeft", "ArrowUp",
                           "ArrowRightUp", "Q", "x"};
    const char* types[] = {"Direction", "Location", "RwyInstruction", "Taxi"};
    const char* styles[] = {"Flat", "FlatLighted", "3D", "Round"};
    int faults = 0;
    for (int round = 0; round < 60; ++round) {
        TestProject t;
        t.project.Altitude = pick(-50, 3000) / 4.0;
        for (int i = pick(0, 3); i > 0; --i) {
            PointList pts;
            for (int k = pick(1, 10); k > 0; --k)
                pts.push_back({pick(-3000, 3000), pick(-3000, 3000)});
            ShapeRecord& s = t.Shape(pick(0, 1) ? kTreeLine : kForest, pts);
            s.mNumBands = static_cast<std::uint8_t>(pick(0, 1) ? 4 : 8);
            s.mSelectedBand() = pick(0, s.mNumBands - 1);
            s.mBandHeight = pick(4, 80) / 2.0;
            s.ForestType = static_cast<std::uint8_t>(pick(0, 1));
            s.vTime = static_cast<std::uint8_t>(pick(0, 7));
            s.tLoadflag = {static_cast<std::uint8_t>(pick(0, 1)), 0, 1, 0};
        }
        for (int i = pick(0, 4); i > 0; --i) {
            ObjectRecord& o = t.Object(kSign, pick(-3000, 3000), pick(-3000, 3000));
            std::string caption;
            for (int p = pick(0, 5); p > 0; --p) {
                caption += std::string(pick(0, 1) ? " " : "  ") + types[pick(0, 3)];
                for (int k = pick(0, 5); k > 0; --k)
                    caption += std::string("_") + items[pick(0, 14)];
            }
            o.Caption() = caption;
            o.Style() = styles[pick(0, 3)];
            o.Rotation = pick(0, 3600) / 10.0;
        }
        for (int i = pick(0, 2); i > 0; --i) {
            ObjectRecord& r = t.Object(kRunway, pick(-3000, 3000), pick(-3000, 3000));
            for (auto& f : r.flags)
                f = static_cast<std::uint8_t>(pick(0, 1));
            r.RwyNumber() = static_cast<std::uint8_t>(pick(0, 36));
            r.RwyDesignator() = static_cast<std::uint8_t>(pick(0, 3));
            r.Rotation = pick(0, 3600) / 10.0;
            r.Length() = static_cast<std::int16_t>(pick(1000, 15000));
            r.ThrOffN() = static_cast<std::int16_t>(pick(-10, 500));
            r.MarkerMiddleN() = static_cast<std::int16_t>(pick(0, 1) * 800);
        }
        for (int i = pick(0, 3); i > 0; --i) {
            ObjectRecord& o = t.Object(pick(0, 1) ? kVor : kApi, pick(-3000, 3000), pick(-3000, 3000));
            o.DME() = static_cast<std::uint8_t>(pick(0, 2));
            o.Param6() = std::string(static_cast<std::size_t>(pick(0, 30)), 'p');
        }
        t.separator = pick(0, 1) ? '.' : ',';
        std::vector<std::string> lines;
        try {
            lines = t.Lines(pick(0, 1) ? "/scenery/x.bgl" : "");
        } catch (const OperationFault&) {
            ++faults; // a forest point on the centre of its box
            continue;
        }
        const auto problems = CheckScasm(lines);
        EXPECT_TRUE(problems.empty()) << "round " << round << "\n" << FormatProblems(problems);
    }
    EXPECT_LT(faults, 10);
}

// The check of a piece of text inside the frame the exporter writes.
std::string Problems(const std::vector<std::string>& body)
{
    return FormatProblems(CheckScasm(body));
}

TEST(EveryKindExport, CheckerFindsFaultsInTreeAndSignStatements)
{
    // A vector table whose row lost a column, and a face on a vertex past the table.
    const std::string vec = Problems({"Area( 5  48.5  11.25 8 )", "VecPoints( 0",
                                      "-58    0    0         0   32767   0 ;0", "-58    20   0         0   32767 ;1",
                                      ")", "ShadedTexPoly( a", "0 27     0     ", "2 27     12    ", ")", "EndA"});
    EXPECT_NE(vec.find("line 4: a row of \"VecPoints(\" needs 6 numbers"), std::string::npos) << vec;
    EXPECT_NE(vec.find("line 8: point 2 is not in the point table"), std::string::npos) << vec;

    // A foot drawn to a vertex that isn't there, a plate of a flag word and a point past the table.
    const std::string sign = Problems({"Area( 6  48.5  11.25 40 )", "Points( 0", "-22      46      0      ; 0",
                                       " 14      46      0      ; 1", ")", "MoveToPt(  1 )", "DrawToPt(  2 )",
                                       "Poly( a   0   1   5 )", "Poly( ai", " 0   ", " x   ", ")", "EndA"});
    EXPECT_NE(sign.find("line 7: point 2 is not in the point table"), std::string::npos) << sign;
    EXPECT_NE(sign.find("line 8: point 5 is not in the point table"), std::string::npos) << sign;
    EXPECT_NE(sign.find("line 9: \"x\" is no point index"), std::string::npos) << sign;
    EXPECT_EQ(sign.find("line 6"), std::string::npos) << sign;

    // A misspelt statement and a label that the area never defines.
    const std::string names = Problems({"Area( 5  48.5  11.25 8 )", "  PerspectiveCall( :3DStart )", "  Jump( : )",
                                        "    :3DStrat", "    Perspektive", "    Return", "EndA"});
    EXPECT_NE(names.find("line 2: label :3DStart is not defined in its area"), std::string::npos) << names;
    EXPECT_NE(names.find("line 5: unknown statement \"Perspektive\""), std::string::npos) << names;
}

} // namespace
} // namespace fw::test
