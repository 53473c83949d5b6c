// The structure checker: each fault it is there to catch, and exports of generated projects.
#include "ExportTestSupport.h"

#include <random>
#include <utility>

namespace fw::test {
namespace {

TEST(ScasmChecker, ReportsEachFaultWithItsLine)
{
    struct Case {
        const char* what;
        std::vector<std::string> text;
        std::vector<int> lines;        // the lines named, in order
        std::vector<std::string> said; // parts of the report
    };
    const Case cases[] = {
        {"an area without EndA", {"Area( 5  1  1 6 )", "  Jump( :A )", "  :A"}, {1}, {}},
        {"an EndA without area", {"EndA"}, {1}, {}},
        {"a label defined in another area",
         {"Area( 5  1  1 6 )", "  :RefEnd0", "EndA", "Area( 5  1  1 6 )", "  IfVarRange( :RefEnd0  33B  0 5 )", "EndA"},
         {5},
         {":RefEnd0"}},
        {"points used before the table or beyond it",
         {"Area( 5  1  1 6 )", "  Poly( au 0 1 2 )", "  Points( 0", "  0 0 0 ;0", "  1 0 0 ;1", "  )", "  Poly( au 0 1",
          "  2 )", "  TexPoly( au", "  7 0 0", "  )", "EndA"},
         {2, 2, 2, 7, 10},
         {}},
        {"brackets that don't close, or close twice", {"CopyRight( \"a (b\" )", "Set( buf 512 ))", "Header( 1 2 3"},
         {2, 3},
         {}},
        {"a vector row that lost a column, a face on a vertex past the table",
         {"Area( 5  48.5  11.25 8 )", "VecPoints( 0", "-58    0    0         0   32767   0 ;0",
          "-58    20   0         0   32767 ;1", ")", "ShadedTexPoly( a", "0 27     0     ", "2 27     12    ", ")",
          "EndA"},
         {4, 8},
         {"line 4: a row of \"VecPoints(\" needs 6 numbers", "line 8: point 2 is not in the point table"}},
        {"a sign's foot to a missing vertex, a plate of a flag word and a point past the table",
         {"Area( 6  48.5  11.25 40 )", "Points( 0", "-22      46      0      ; 0", " 14      46      0      ; 1", ")",
          "MoveToPt(  1 )", "DrawToPt(  2 )", "Poly( a   0   1   5 )", "Poly( ai", " 0   ", " x   ", ")", "EndA"},
         {7, 8, 9},
         {"line 7: point 2 is not in the point table", "line 8: point 5 is not in the point table",
          "line 9: \"x\" is no point index"}},
        {"a misspelt statement and a label the area never defines",
         {"Area( 5  48.5  11.25 8 )", "  PerspectiveCall( :3DStart )", "  Jump( : )", "    :3DStrat",
          "    Perspektive", "    Return", "EndA"},
         {2, 5},
         {"line 2: label :3DStart is not defined in its area", "line 5: unknown statement \"Perspektive\""}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto problems = CheckScasm(c.text);
        std::vector<int> lines;
        for (const auto& p : problems)
            lines.push_back(p.line);
        const std::string report = FormatProblems(problems);
        EXPECT_EQ(lines, c.lines) << report;
        for (const auto& part : c.said)
            EXPECT_NE(report.find(part), std::string::npos) << report;
    }
}

// A decimal comma only in a VOR frequency and a macro's range; a long user parameter of a macro is cut
// at its column with its quote left open, and a bracket or comma the user typed there is text
// (fuzz_export found the bracket).
TEST(ScasmChecker, DecimalCommasAndCutUserParameters)
{
    const std::pair<std::vector<std::string>, std::size_t> cases[] = {
        {{"VOR( 108,5 45 81  0 ID Name  48.5  11.25 0 0 )"}, 0},
        {{"VOR( 108,5 45 81  0 ID Name  48,5  11.25 0 0 )"}, 1},
        {{"macro( \"a,b.api\"", "         6,5           ;Range (km)", "      )"}, 0},
        {{"macro( \"x.api\"", "         1,5           ;Scale", "      )"}, 1},
        {{"Area( 6  48,5  11.25 40 )", "EndA"}, 1},
        {{"  ;Your comment: 1,5 m", "CopyRight( \"1,5\" )"}, 0},
        {{"NDB(  385,5 45  ID Name  48.5  11.25  0 )"}, 1},
        {{"macro( \"/opt/x.api\"", "       \"a_very_long_text ;User param9", "       \"0\"               ;User param7",
          "      )"},
         0},
        {{"macro( \"/opt/x.api\"", "         \"hangar (north si ;User param16", "        )"}, 0},
        {{"macro( \"/opt/x.api\"", "         \"hangar) north si ;User param9", "        )"}, 0},
        {{"macro( \"/opt/x.api\"", "         \"width 1,5 metres ;User param6", "        )"}, 0},
    };
    for (const auto& [lines, count] : cases)
        EXPECT_EQ(CheckScasm(lines).size(), count) << lines[0];
    // The macro's other lines are its own: a bracket there stays open.
    EXPECT_EQ(FormatProblems(CheckScasm({"macro( \"/opt/x.api\"", "         (1                ;Scale", "        )"})),
              "line 1: the brackets of \"macro(\" are not closed\n");
}

// Inputs fuzz_export found faults with (tests/fixtures/fuzz/export): each reads, and exports with either
// separator, as text and for the compiler, or stops with its message; every text passes the check.
TEST(ScasmChecker, FuzzFindingsExportWellFormed)
{
    ConfigRecord config;
    ResetConfig(config, "/opt/fieldwright/");
    int files = 0;
    for (const auto& file : std::filesystem::directory_iterator(std::string(FW_FIXTURES) + "/fuzz/export")) {
        SCOPED_TRACE(file.path().filename().string());
        ++files;
        ProjectData d;
        ASSERT_TRUE(ReadProjectText(ReadBytes(file.path().string()), d, nullptr, "/opt/fieldwright/"));
        for (char separator : {'.', ','})
            for (const std::string prefix : {"", "/scenery/x.bgl"}) {
                ScriptedUi ui;
                ExportBuffer buffer;
                try {
                    BuildExportText(ExportInput{d.project, config, d.points, d.shapes, d.objects, separator, &ui},
                                    prefix, buffer);
                } catch (const OperationFault& e) {
                    EXPECT_NE(std::string(e.what()), "");
                    continue;
                }
                ExpectWellFormed(std::string(buffer.text()));
            }
    }
    EXPECT_GT(files, 0);
}

// The text of a file is read as its lines are: a face written again under another head is checked
// against the point table and brackets it stands in, not the ones of its first writing.
TEST(ScasmChecker, TextReadsAsItsLines)
{
    const std::vector<std::string> lines = {
        "Area( 5  1  1 6 )", "Points( 0", "0 0 0", "1 0 0", "2 0 0", ")",       // 1-6
        "TexPoly( a", "0 1 1", "2 1 1", ")", "TexPoly( ai", "0 1 1", "2 1 1", ")", // 7-14
        "Points( 0", "0 0 0", ")", "TexPoly( ai", "0 1 1", "2 1 1", ")",          // 15-21
        "TexPoly( a", "0 1 1", ")", "TexPoly( ai (", "0 1 1", ")", ")", "EndA"};   // 22-29
    std::string text;
    for (const std::string& l : lines)
        text += l + "\r\n";
    const std::string expected = "line 20: point 2 is not in the point table\n";
    EXPECT_EQ(FormatProblems(CheckScasm(lines)), expected);
    EXPECT_EQ(FormatProblems(CheckScasmText(text)), expected);
}

// A text read in two parts side by side finds what one reading finds, wherever the second part
// starts: labels of the outermost area used in one part and defined in the other, defined in
// both, its point table set in one and read in the other, faults in both.
TEST(ScasmChecker, TwoPartsReadAsOne)
{
    const std::vector<std::vector<std::string>> texts = {
        {"Jump( :B )", ":A", "Area( 5  1  1 6 )", "  Points( 0", "  0 0 0", "  )", "  Poly( au 0 1 )", "EndA", "Foo",
         ":B", "Area( 5  1  1 6 )", "  Jump( :C )", "  ))", "EndA", "IfVarAnd( :D 28C 1 )"},
        {":A", "Points( 0", "0 0 0", "1 0 0", ")", "Area( 5  1  1 6 )", "EndA", "Poly( au 0 1 2 )", ":A", "Area( 5  1  1 6 )",
         "  TexPoly( a", "  0 1 1", "  )", "  TexPoly( ai", "  0 1 1", "  )", "EndA", "Area( 5  1  1 6 )"},
    };
    for (const auto& lines : texts) {
        std::string text;
        std::vector<std::size_t> starts;
        for (const std::string& l : lines) {
            starts.push_back(text.size());
            text += l + "\r\n";
        }
        const std::string whole = FormatProblems(CheckScasmText(text));
        EXPECT_NE(whole, "");
        for (const std::size_t split : starts) {
            SCOPED_TRACE(split);
            EXPECT_EQ(FormatProblems(ScasmTextCheck(text, split).problems()), whole);
        }
    }
}

// Projects of every kind with settings drawn at random; each export must pass the checker. The one
// fault allowed is a forest point on the centre of its box.
TEST(ScasmChecker, GeneratedProjectsPass)
{
    std::mt19937 rng(20261123);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    auto coin = [&] { return static_cast<std::uint8_t>(pick(0, 1)); };
    const int kinds[] = {kPoly, kTexPoly, kWideLine, kDotLine, kTreeLine, kForest, kFlatten};
    const int objects[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
    const char* items[] = {"A", "b", "Z", "1", "17", "18", "05", "0", "33", "36", "ArrowLeft", "ArrowUp",
                           "ArrowRightUp", "Q", "x"};
    const char* panels[] = {"Direction", "Location", "RwyInstruction", "Taxi"};
    const char* styles[] = {"Flat", "FlatLighted", "3D", "Round"};
    int faults = 0;
    for (int round = 0; round < 100; ++round) {
        TestProject t;
        t.project.PolyScale = std::vector<double>{1, 0.5, 0.25, 0.125}[pick(0, 3)];
        t.project.LineScale = std::vector<double>{0, 1, 0.5, 2}[pick(0, 3)];
        t.project.DotLineScale = std::vector<double>{0.5, 0.25, 0.125}[pick(0, 2)];
        t.project.UsePointReduction = coin();
        t.project.UseTextureLevels = coin();
        t.project.Texture = {"Concrete.r8", "taxi.bmp", "", ""};
        t.project.Name = "Gen";
        t.project.Altitude = pick(-50, 3000) / 4.0;
        bool flatten = false;
        for (int i = pick(0, 30); i > 0; --i) {
            const int type = kinds[pick(0, 6)];
            if (type == kFlatten && std::exchange(flatten, true))
                continue;
            const bool trees = type == kTreeLine || type == kForest;
            const int maxPoints = type == kTexPoly ? 4 : type == kFlatten ? 9 : 12;
            PointList pts;
            for (int k = pick(trees ? 1 : type <= kTexPoly || type == kFlatten ? 3 : 2, maxPoints); k > 0; --k)
                pts.push_back({pick(-4000, 4000), pick(-4000, 4000)});
            ShapeRecord& s = t.Shape(type, pts);
            s.gIsColored = coin();
            s.vTime = static_cast<std::uint8_t>(pick(0, 7));
            s.vRange = static_cast<std::int16_t>(pick(0, 32000));
            s.gLineType = static_cast<std::uint8_t>(pick(0, 3));
            s.DotLineType = coin();
            if (type == kWideLine)
                s.gLineWidth = pick(1, 400) / 10.0;
            if (type <= kDotLine)
                s.vLayer = static_cast<std::uint8_t>(pick(0, 2) == 0 ? pick(1, 9) : 0);
            s.cLighted = coin();
            s.tSwitch = coin();
            s.tLoadflag = {coin(), 0, 1, 0};
            // Point reduction only on exempt shapes: elsewhere it stops the export by design.
            s.vNoPointReduction = 1;
            s.vNoTextureLevels = coin();
            if (type == kTexPoly)
                t.stores.PointStore.back() = {{-500, -500}, {500, -500}, {500, 500}, {-500, 500}};
            if (trees) {
                s.mNumBands = static_cast<std::uint8_t>(coin() ? 4 : 8);
                s.mSelectedBand() = pick(0, s.mNumBands - 1);
                s.mBandHeight = pick(4, 80) / 2.0;
                s.ForestType = coin();
            }
        }
        for (int i = pick(0, 12); i > 0; --i) {
            ObjectRecord& o = t.Object(objects[pick(0, 6)], pick(-4000, 4000), pick(-4000, 4000));
            o.Rotation = pick(0, 3600) / 10.0;
            if (o.oType == kRunway) {
                for (auto& f : o.flags)
                    f = coin();
                o.RwyNumber() = static_cast<std::uint8_t>(pick(0, 36));
                o.RwyDesignator() = static_cast<std::uint8_t>(pick(0, 3));
                o.Length() = static_cast<std::int16_t>(pick(1000, 15000));
                o.ThrOffN() = static_cast<std::int16_t>(pick(-10, 500));
                o.MarkerMiddleN() = static_cast<std::int16_t>(coin() * 800);
            }
            if (o.oType == kSign) {
                std::string caption;
                for (int p = pick(0, 5); p > 0; --p) {
                    caption += std::string(coin() ? " " : "  ") + panels[pick(0, 3)];
                    for (int k = pick(0, 5); k > 0; --k)
                        caption += std::string("_") + items[pick(0, 14)];
                }
                o.Caption() = caption;
                o.Style() = styles[pick(0, 3)];
            }
            if (o.oType == kVor || o.oType == kApi) {
                o.DME() = static_cast<std::uint8_t>(pick(0, 2));
                o.Param6() = std::string(static_cast<std::size_t>(pick(0, 30)), 'p');
            }
        }
        t.separator = coin() ? '.' : ',';
        std::vector<std::string> lines;
        try {
            lines = t.Lines(round % 2 ? "/scenery/x.bgl" : "");
        } catch (const OperationFault& e) {
            ++faults;
            EXPECT_NE(std::string(e.what()).find("centre of its box"), std::string::npos) << round << ": " << e.what();
            continue;
        }
        const auto problems = CheckScasm(lines);
        EXPECT_TRUE(problems.empty()) << "round " << round << "\n" << FormatProblems(problems);
    }
    EXPECT_LT(faults, 20);
}

} // namespace
} // namespace fw::test
