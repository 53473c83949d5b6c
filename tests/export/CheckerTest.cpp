// The structure checker: each fault it is there to catch, and exports of generated projects.
#include "ExportTestSupport.h"

#include <cstdio>
#include <random>

namespace fw::test {
namespace {

std::vector<ScasmProblem> Check(const std::vector<std::string>& lines) { return CheckScasm(lines); }

TEST(ScasmChecker, ReportsEachFaultWithItsLine)
{
    // An area without EndA, and an EndA without area.
    auto p = Check({"Area( 5  1  1 6 )", "  Jump( :A )", "  :A"});
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(p[0].line, 1);
    p = Check({"EndA"});
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(p[0].line, 1);

    // A label defined in another area is not seen.
    p = Check({"Area( 5  1  1 6 )", "  :RefEnd0", "EndA", "Area( 5  1  1 6 )",
               "  IfVarRange( :RefEnd0  33B  0 5 )", "EndA"});
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(p[0].line, 5);
    EXPECT_NE(p[0].text.find(":RefEnd0"), std::string::npos);

    // Points used before the table or beyond it.
    p = Check({"Area( 5  1  1 6 )", "  Poly( au 0 1 2 )", "  Points( 0", "  0 0 0 ;0", "  1 0 0 ;1", "  )",
               "  Poly( au 0 1", "  2 )", "  TexPoly( au", "  7 0 0", "  )", "EndA"});
    ASSERT_EQ(p.size(), 5u);
    EXPECT_EQ(p[0].line, 2);
    EXPECT_EQ(p[3].line, 7);
    EXPECT_EQ(p[4].line, 10);

    // Brackets that don't close, or close twice.
    p = Check({"CopyRight( \"a (b\" )", "Set( buf 512 ))", "Header( 1 2 3"});
    ASSERT_EQ(p.size(), 2u);
    EXPECT_EQ(p[0].line, 2);
    EXPECT_EQ(p[1].line, 3);
}

TEST(ScasmChecker, DecimalCommaOnlyInItsTwoPlaces)
{
    EXPECT_TRUE(Check({"VOR( 108,5 45 81  0 ID Name  48.5  11.25 0 0 )"}).empty());
    EXPECT_EQ(Check({"VOR( 108,5 45 81  0 ID Name  48,5  11.25 0 0 )"}).size(), 1u);
    EXPECT_TRUE(Check({"macro( \"a,b.api\"", "         6,5           ;Range (km)", "      )"}).empty());
    EXPECT_EQ(Check({"macro( \"x.api\"", "         1,5           ;Scale", "      )"}).size(), 1u);
    EXPECT_EQ(Check({"Area( 6  48,5  11.25 40 )", "EndA"}).size(), 1u);
    EXPECT_TRUE(Check({"  ;Your comment: 1,5 m", "CopyRight( \"1,5\" )"}).empty());
    EXPECT_EQ(Check({"NDB(  385,5 45  ID Name  48.5  11.25  0 )"}).size(), 1u);
    // A quoted parameter cut at its column leaves its quote open: the line still ends there.
    EXPECT_TRUE(Check({"macro( \"/opt/x.api\"", "       \"a_very_long_text ;User param9",
                       "       \"0\"               ;User param7", "      )"})
                    .empty());
}

// Projects of every kind with random settings; each export must pass the checker.
TEST(ScasmChecker, GeneratedProjectsPass)
{
    std::mt19937 rng(20261123);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    const int kinds[] = {kPoly, kTexPoly, kWideLine, kDotLine, kTreeLine, kForest, kFlatten};
    const int objects[] = {kRunway, kApi, kVor, kNdb, kInit, kExclude, kSign};
    for (int round = 0; round < 40; ++round) {
        TestProject t;
        t.project.PolyScale = std::vector<double>{1, 0.5, 0.25, 0.125}[pick(0, 3)];
        t.project.LineScale = std::vector<double>{0, 1, 0.5, 2}[pick(0, 3)];
        t.project.DotLineScale = std::vector<double>{0.5, 0.25, 0.125}[pick(0, 2)];
        t.project.UsePointReduction = static_cast<std::uint8_t>(pick(0, 1));
        t.project.UseTextureLevels = static_cast<std::uint8_t>(pick(0, 1));
        t.project.Texture = {"Concrete.r8", "taxi.bmp", "", ""};
        t.project.Name = "Gen";
        bool flatten = false;
        const int shapes = pick(0, 30);
        for (int i = 0; i < shapes; ++i) {
            const int type = kinds[pick(0, 6)];
            if (type == kFlatten && flatten)
                continue;
            flatten = flatten || type == kFlatten;
            const int maxPoints = type == kTexPoly ? 4 : type == kFlatten ? 9 : 12;
            PointList pts;
            const int n = pick(type <= kTexPoly || type == kFlatten || type == kForest ? 3 : 2, maxPoints);
            for (int k = 0; k < n; ++k)
                pts.push_back({pick(-4000, 4000), pick(-4000, 4000)});
            ShapeRecord& s = t.Shape(type, pts);
            s.gIsColored = static_cast<std::uint8_t>(pick(0, 1));
            s.vTime = static_cast<std::uint8_t>(pick(0, 7));
            s.vRange = static_cast<std::int16_t>(pick(0, 32000));
            s.gLineType = static_cast<std::uint8_t>(pick(0, 3));
            s.DotLineType = static_cast<std::uint8_t>(pick(0, 1));
            if (type == kWideLine)
                s.gLineWidth = pick(1, 400) / 10.0;
            if (type <= kDotLine)
                s.vLayer = static_cast<std::uint8_t>(pick(0, 2) == 0 ? pick(1, 9) : 0);
            s.cLighted = static_cast<std::uint8_t>(pick(0, 1));
            s.tSwitch = static_cast<std::uint8_t>(pick(0, 1));
            // Point reduction only on exempt shapes: elsewhere it stops the export by design.
            s.vNoPointReduction = 1;
            s.vNoTextureLevels = static_cast<std::uint8_t>(pick(0, 1));
            if (type == kTexPoly)
                t.stores.PointStore.back() = {{-500, -500}, {500, -500}, {500, 500}, {-500, 500}};
        }
        const int objs = pick(0, 12);
        for (int i = 0; i < objs; ++i) {
            ObjectRecord& o = t.Object(objects[pick(0, 6)], pick(-4000, 4000), pick(-4000, 4000));
            o.Rotation = pick(0, 359);
            if (o.oType == kRunway) {
                o.IlsEnabledN() = static_cast<std::uint8_t>(pick(0, 1));
                o.MarkerEnabledN() = static_cast<std::uint8_t>(pick(0, 1));
            }
            if (o.oType == kSign)
                o.Caption() = "A_B 12";
        }
        std::vector<std::string> lines;
        try {
            lines = t.Lines(round % 2 ? "/scenery/x.bgl" : "");
        } catch (const OperationFault& e) {
            ADD_FAILURE() << "round " << round << ": " << e.what();
            continue;
        }
        const auto problems = CheckScasm(lines);
        EXPECT_TRUE(problems.empty()) << "round " << round << "\n" << FormatProblems(problems);
    }
}

TEST(ScasmChecker, CommandLine)
{
    const std::string good = testing::TempDir() + "fw_check_good.txt";
    const std::string bad = testing::TempDir() + "fw_check_bad.txt";
    TestProject t;
    t.Shape(kPoly, {{0, 0}, {100, 0}, {0, 100}});
    std::ofstream(good, std::ios::binary) << ExportOf(t);
    std::ofstream(bad, std::ios::binary) << "Area( 5  1  1 6 )\r\n  Jump( :Nowhere )\r\n";
    const std::string cli = FW_CLI;
    EXPECT_EQ(std::system(("\"" + cli + "\" check-scasm \"" + good + "\" > /dev/null").c_str()), 0);
    const std::string out = testing::TempDir() + "fw_check_out.txt";
    EXPECT_NE(std::system(("\"" + cli + "\" check-scasm \"" + bad + "\" > \"" + out + "\"").c_str()), 0);
    const std::string report = ReadBytes(out);
    EXPECT_NE(report.find(bad + ":1:"), std::string::npos) << report;
    EXPECT_NE(report.find(bad + ":2: label :Nowhere"), std::string::npos) << report;
    std::remove(good.c_str());
    std::remove(bad.c_str());
    std::remove(out.c_str());
}

} // namespace
} // namespace fw::test
