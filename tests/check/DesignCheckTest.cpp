// The design check: each rule finds its problem and keeps quiet on a clean project, and its export
// faults are the export's own.
#include "check/DesignCheck.h"
#include "check/Outline.h"
#include "core/Session.h"
#include "export/ExportTestSupport.h"

namespace fw::test {
namespace {

const std::string kProgram = FW_PROGRAM_DIR;

// A session at a real airport, with the program folder of the build and its textures and macros.
struct Design {
    Session s;
    CompilerSetup setup;

    Design()
    {
        setup.programFolder = s.programFolder = kProgram;
        setup.wine = setup.wine32 = setup.scasm = true;
        ResetProject(s.project);
        ResetConfig(s.config, kProgram);
        s.config.TEXPath = kProgram + "Texture/";
        s.project.LatitudeDegree = 48.35;
        s.project.LongitudeDegree = 11.78;
    }
    ShapeRecord& Shape(int type, const PointList& pts)
    {
        ShapeRecord r;
        ResetShape(r, type);
        AppendShape(s.stores, r, pts);
        return s.stores.ShapeStore.back();
    }
    // A 3-D object's macro in the program's macro folder, where its dialog puts it.
    ObjectRecord& Object(int type, std::int32_t x = 0, std::int32_t y = 0)
    {
        AppendObject(s.stores, type, x, y, 0, kProgram);
        if (type == kApi)
            s.stores.ObjectStore.back().Path() = kProgram + "API/fwt_building1.api";
        return s.stores.ObjectStore.back();
    }
    std::vector<Problem> Problems() const { return CheckDesign(s, setup); }
    std::vector<Problem> Of(const std::string& rule) const
    {
        std::vector<Problem> out = Problems();
        std::erase_if(out, [&](const Problem& p) { return p.rule != rule; });
        return out;
    }
};

std::string Listing(const std::vector<Problem>& problems)
{
    std::string out;
    for (const auto& p : problems)
        out += ProblemLine(p) + "\n";
    return out;
}

const PointList kSquare{{-100, -100}, {100, -100}, {100, 100}, {-100, 100}};
const PointList kBowTie{{-100, -100}, {100, 100}, {100, -100}, {-100, 100}};

// One item of every kind, each as the tools make it.
void EveryKind(Design& d)
{
    d.Shape(kPoly, kSquare);
    d.Shape(kTexPoly, kSquare);
    d.Shape(kWideLine, {{0, 0}, {300, 0}, {300, 300}});
    d.Shape(kDotLine, {{0, 0}, {300, 0}});
    d.Shape(kTreeLine, {{0, 0}, {400, 0}, {400, 400}});
    d.Shape(kFlatten, {{-500, -500}, {500, -500}, {500, 500}, {-500, 500}});
    d.Shape(kForest, {{0, 0}, {400, 0}, {400, 400}, {0, 400}});
    d.Object(kRunway, 100, 100).ThrOffN() = 500;
    d.Object(kApi, 200, 200);
    d.Object(kVor, 300, 300);
    d.Object(kNdb, -300, 300);
    d.Object(kInit, 0, 50);
    d.Object(kExclude, 1000, 1000);
    d.Object(kSign, 50, 50).Caption() = "Direction_ArrowLeft_A Location_B";
}

TEST(DesignCheck, ACleanProjectOfEveryKindHasNoProblem)
{
    Design d;
    EveryKind(d);
    d.s.project.Name = "Munich (EDDM)"; // balanced brackets keep the statement whole
    EXPECT_EQ(Listing(d.Problems()), "");
    Design empty;
    EXPECT_EQ(Listing(empty.Problems()), "");
}

struct RuleCase {
    const char* rule;
    ProblemKind kind;
    int index;
    std::function<void(Design&)> build;
};

TEST(DesignCheck, EachRuleFindsItsItem)
{
    // A 5 by 3 bitmap of 8 bits, and one of 24 bits.
    const std::string texFolder = std::string(FW_FIXTURES) + "/textures/";
    const std::vector<RuleCase> cases = {
        {"self-crossing", ProblemKind::Shape, 1, [](Design& d) { d.Shape(kPoly, kSquare); d.Shape(kPoly, kBowTie); }},
        {"degenerate", ProblemKind::Shape, 0, [](Design& d) { d.Shape(kPoly, {{0, 0}, {100, 0}, {0, 0}}); }},
        {"degenerate", ProblemKind::Shape, 0, [](Design& d) { d.Shape(kTexPoly, {{0, 0}, {100, 0}, {200, 0}}); }},
        {"degenerate", ProblemKind::Shape, 0, [](Design& d) { d.Shape(kWideLine, {{5, 5}}); }},
        {"point-limit", ProblemKind::Shape, 0, [](Design& d) {
             PointList many;
             for (int i = 0; i < 81; ++i)
                 many.push_back({i * 10, (i % 2) * 10});
             d.Shape(kDotLine, many);
         }},
        {"point-limit", ProblemKind::Shape, 0, [](Design& d) {
             d.Shape(kFlatten, {{0, 0}, {100, 0}, {200, 10}, {300, 30}, {400, 60}, {400, 400}, {300, 410},
                                {200, 420}, {100, 430}, {0, 440}});
         }},
        {"count-limit", ProblemKind::Project, -1, [](Design& d) {
             for (int i = 0; i <= kMaxObjects; ++i)
                 d.Object(kNdb, i, 0);
         }},
        {"outside-work-area", ProblemKind::Shape, 0,
         [](Design& d) { d.Shape(kPoly, {{0, 0}, {10001, 0}, {0, 100}}); }},
        {"outside-work-area", ProblemKind::Object, 0, [](Design& d) { d.Object(kVor, 0, -10001); }},
        {"missing-texture", ProblemKind::Shape, 0, [](Design& d) { d.Shape(kPoly, kSquare).tDayPath = "nowhere.bmp"; }},
        {"texture-size", ProblemKind::Shape, 0, [&](Design& d) {
             d.s.config.TEXPath = texFolder;
             d.Shape(kTexPoly, kSquare).tDayPath = "o8.bmp";
         }},
        {"texture-24bit", ProblemKind::Shape, 0, [&](Design& d) {
             d.s.config.TEXPath = texFolder;
             d.Shape(kTreeLine, {{0, 0}, {400, 0}}).tDayPath = "c24.bmp";
         }},
        {"missing-macro", ProblemKind::Object, 1, [](Design& d) {
             d.Object(kApi);
             d.Object(kApi).Path() = "C:\\FS\\API\\gone.api";
         }},
        {"menu-name", ProblemKind::Project, -1, [](Design& d) {
             d.s.project.Name = "Munich) West";
             d.Object(kInit);
         }},
        {"second-flatten", ProblemKind::Shape, 2, [](Design& d) {
             d.Shape(kFlatten, kSquare);
             d.Shape(kPoly, kSquare);
             d.Shape(kFlatten, kSquare);
         }},
        {"threshold-length", ProblemKind::Object, 0, [](Design& d) {
             ObjectRecord& r = d.Object(kRunway);
             r.ThrOffN() = r.Length();
         }},
        {"reference-unset", ProblemKind::Project, -1,
         [](Design& d) { d.s.project.LatitudeDegree = d.s.project.LongitudeDegree = 0; }},
        {"scasm-structure", ProblemKind::Object, 1, [](Design& d) {
             d.Object(kVor);
             d.Object(kNdb).ID() = "X)";
         }},
        {"setup-wine", ProblemKind::Setup, -1, [](Design& d) { d.setup.wine = false; }},
        {"setup-wine", ProblemKind::Setup, -1, [](Design& d) { d.setup.wine32 = false; }},
        {"setup-scasm", ProblemKind::Setup, -1, [](Design& d) { d.setup.scasm = false; }},
        {"setup-scasm", ProblemKind::Setup, -1, [](Design& d) { d.setup.nativeProgram = "/no/such/compiler"; }},
    };
    for (const RuleCase& c : cases) {
        SCOPED_TRACE(std::string(c.rule) + " at " + std::to_string(c.index));
        Design d;
        c.build(d);
        const auto found = d.Of(c.rule);
        ASSERT_EQ(found.size(), 1u) << Listing(d.Problems());
        EXPECT_EQ(found[0].kind, c.kind);
        EXPECT_EQ(found[0].index, c.index);
        const std::string name = (c.kind == ProblemKind::Shape ? "shape " : "object ") + std::to_string(c.index + 1);
        if (c.index >= 0) {
            EXPECT_NE(found[0].message.find(name), std::string::npos) << found[0].message;
        }
    }
}

TEST(DesignCheck, NearMissesAreNoProblems)
{
    Design d;
    // Collinear points on an edge, a repeated point, a concave outline, corners at the work area's edge.
    d.Shape(kPoly, {{-100, -100}, {0, -100}, {100, -100}, {100, 100}, {100, 100}, {-100, 100}});
    d.Shape(kPoly, {{0, 0}, {400, 0}, {400, 400}, {200, 100}, {0, 400}});
    d.Shape(kFlatten, {{-10000, -10000}, {10000, -10000}, {10000, 10000}});
    d.Shape(kWideLine, {{0, 0}, {0, 0}, {10, 0}});
    ObjectRecord& r = d.Object(kRunway, 10000, -10000);
    r.ThrOffN() = static_cast<std::int16_t>(r.Length() - 1);
    d.setup.nativeProgram = "/bin/sh";
    d.setup.nativeRuns = true;
    d.setup.wine = false; // a native compiler needs no wine
    EXPECT_EQ(Listing(d.Problems()), "");
}

// Each place the export stops, found by the check with the same message: the check goes on past it.
TEST(DesignCheck, ExportFaultsAreTheExportsOwn)
{
    const std::vector<std::function<void(Design&)>> faults = {
        [](Design& d) { d.Shape(kForest, {{0, 0}, {400, 0}, {400, 400}, {200, 200}, {0, 400}}); },
        [](Design& d) { d.Shape(kTreeLine, {{0, 0}, {200, 0}}).mNumBands = 6; },
        [](Design& d) { d.Shape(kTreeLine, {{0, 0}, {200, 0}}).mBandHeight = 0.4; },
        [](Design& d) { d.Shape(kTexPoly, {{0, 0}, {100, 0}, {150, 50}, {100, 100}, {0, 100}}); },
        [](Design& d) {
            d.s.project.PolyScale = 0;
            d.Shape(kPoly, {{0, 0}, {100, 0}, {0, 100}});
        },
        [](Design& d) { d.Shape(kDotLine, {{0, 0}, {100, 0}}).gDotSpacing() = 0; },
        [](Design& d) { d.Shape(kWideLine, {{0, 0}, {100, 0}}).gLineWidth = 0; },
        [](Design& d) {
            d.s.project.UsePointReduction = 1;
            d.Shape(kDotLine, {{0, 0}, {10, 0}});
            d.Shape(kWideLine, {{0, 0}, {10, 0}});
        },
        [](Design& d) {
            PointList many;
            for (int i = 0; i < 257; ++i)
                many.push_back({i, i * i % 9000});
            d.Shape(kPoly, many);
        },
        [](Design& d) { d.s.project.LatitudeDegree = 90; }, // the file head's box leaves 32 bits
    };
    for (std::size_t k = 0; k < faults.size(); ++k) {
        SCOPED_TRACE("fault case " + std::to_string(k));
        Design d;
        faults[k](d);
        std::string expected = "the export ran through";
        try {
            ExportBuffer out;
            BuildExportText(ExportInputOf(d.s), {}, out);
        } catch (const OperationFault& e) {
            expected = e.what();
        }
        const auto found = d.Of("export-fault");
        EXPECT_EQ(found.empty() ? "" : found[0].message, expected);
    }
}

TEST(DesignCheck, AFaultyItemLeavesTheOthersChecked)
{
    Design d;
    d.Shape(kTexPoly, {{0, 0}, {100, 0}, {150, 50}, {100, 100}, {0, 100}});
    d.Shape(kPoly, kBowTie);
    d.Object(kNdb).ID() = "X)";
    const auto problems = d.Problems();
    ASSERT_EQ(problems.size(), 4u) << Listing(problems);
    EXPECT_EQ(problems[0].rule, "export-fault");
    EXPECT_EQ(problems[1].rule, "point-limit");
    EXPECT_EQ(problems[2].rule, "self-crossing");
    EXPECT_EQ(problems[3].rule, "scasm-structure");
    EXPECT_EQ(problems[3].kind, ProblemKind::Object);
}

TEST(Outline, CrossingsFoldsAndTouches)
{
    EXPECT_FALSE(FindCrossing(kSquare));
    const auto bow = FindCrossing(kBowTie).value_or(Crossing{-1, -1});
    EXPECT_EQ(std::pair(bow.first, bow.second), std::pair(0, 2));
    // Two loops through one point touch there.
    EXPECT_TRUE(FindCrossing({{0, 0}, {100, 0}, {100, 100}, {0, 0}, {-100, 0}, {-100, -100}}));
    // A spike running back along its own edge.
    EXPECT_TRUE(FindCrossing({{0, 0}, {100, 0}, {50, 0}, {50, 100}}));
    // Repeats and the closing point are no edges of their own.
    EXPECT_FALSE(FindCrossing({{0, 0}, {0, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0}}));
    // Coordinates at the ends of 32 bits don't overflow.
    const std::int32_t lo = -2147483647 - 1;
    const std::int32_t hi = 2147483647;
    EXPECT_FALSE(FindCrossing({{lo, lo}, {hi, lo}, {hi, hi}, {lo, hi}}));
    EXPECT_TRUE(FindCrossing({{lo, lo}, {hi, hi}, {hi, lo}, {lo, hi}}));
    EXPECT_TRUE(OnOneLine({{lo, lo}, {0, 0}, {hi, hi}}));
    EXPECT_EQ(DistinctPoints({{1, 2}, {2, 1}, {1, 2}}), 2);
}

// The batch tool: 0 with only set-up problems, 1 with problems, 2 for a file it can't read.
TEST(DesignCheck, CommandLine)
{
    Scratch dir("fw check cli");
    Design clean;
    EveryKind(clean);
    Design bad;
    bad.Shape(kPoly, kBowTie).gComment = "apron";
    ASSERT_TRUE(SaveProject(dir / "clean.fwt", clean.s.project, clean.s.stores));
    ASSERT_TRUE(SaveProject(dir / "bad.fwt", bad.s.project, bad.s.stores));
    const std::string out = dir / "out.txt";
    auto run = [&](const std::string& args) {
        return WEXITSTATUS(std::system(("FIELDWRIGHT_HOME=\"" + kProgram + "\" \"" + FW_CLI + "\" check " + args +
                                        " > \"" + out + "\" 2>&1")
                                           .c_str()));
    };
    EXPECT_EQ(run("\"" + dir / "clean.fwt" + "\""), 0) << ReadBytes(out);
    EXPECT_EQ(run("\"" + dir / "bad.fwt" + "\" --json"), 1);
    const std::string json = ReadBytes(out);
    EXPECT_EQ(json.rfind("{\"problems\": [", 0), 0u) << json;
    EXPECT_NE(json.find("{\"rule\": \"self-crossing\", \"kind\": \"shape\", \"index\": 0, \"message\": "
                        "\"shape 1 (Poly, \\\"apron\\\") crosses itself"),
              std::string::npos)
        << json;
    EXPECT_EQ(run("\"" + dir / "none.fwt" + "\""), 2);
    EXPECT_EQ(run(""), 2);
}

} // namespace
} // namespace fw::test
