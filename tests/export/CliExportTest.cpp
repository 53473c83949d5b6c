// fieldwright-cli export and check-scasm on project files.
#include "ExportTestSupport.h"

namespace fw::test {
namespace {

// A project of every kind in one export.
TestProject EveryKind()
{
    TestProject t;
    t.project.Name = "Everything";
    t.project.Altitude = 430;
    t.Object(kExclude, 0, 0);
    t.Shape(kFlatten, {{-500, -500}, {500, -500}, {500, 500}, {-500, 500}});
    t.Object(kInit, 100, 100);
    t.Shape(kPoly, {{-100, -100}, {100, -100}, {0, 100}}).gIsColored = 1;
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
    t.Object(kApi, 50, 50).Path() = FW_PROGRAM_DIR "API/fwt_building1.api"; // as the reader finds it
    t.Object(kSign, 10, 10).Caption() = "Direction_ArrowLeft_A Location_B RwyInstruction_9_ArrowRight";
    t.Object(kVor, -1000, 0);
    t.Object(kNdb, 1000, 0);
    return t;
}

struct CliFixture : ::testing::Test {
    Scratch dir{"fw cli export"};
    std::string project = dir / "field one.fwt";
    TestProject t;

    void Save() { ASSERT_TRUE(SaveProject(project, t.project, t.stores)); }
    int Run(const std::string& args, const std::string& env = {})
    {
        return std::system((env + " \"" + FW_CLI + "\" " + args + " > " + Q(dir / "stdout.txt") + " 2> " +
                            Q(dir / "stderr.txt"))
                               .c_str());
    }
    std::string Stdout() { return ReadBytes(dir / "stdout.txt"); }
    std::string Stderr() { return ReadBytes(dir / "stderr.txt"); }
    static std::string Q(const std::string& p) { return "\"" + p + "\""; }
};

// The file through the reader and every exporter: the separator from the locale or the option, the
// sections in their order, and a text check-scasm passes.
TEST_F(CliFixture, ExportWritesWhatTheMenuCommandWrites)
{
    t = EveryKind();
    Save();
    const std::string out = dir / "out put.txt";
    ASSERT_EQ(Run("export " + Q(project) + " " + Q(out), "LC_ALL=C"), 0) << Stderr();
    const std::string text = ReadBytes(out);
    EXPECT_EQ(text, ExportOf(t));
    std::vector<std::string> titles;
    for (const char* title : {"EXCLUDE", "FLATTEN POLYGON", "MENU ENTRY", "UNLAYERED POLYGONS", "UNLAYERED WIDE LINES",
                              "UNLAYERED DOT LINES", "LAYERED SHAPES", "RUNWAYS", "3-D OBJECTS", "TAXIWAY SIGNS",
                              "NAVIGATION"})
        titles.push_back(";                 " + std::string(title) + " ");
    ExpectInOrder(text, titles);
    // In "3-D OBJECTS" the tree line and forest come before the object.
    ExpectInOrder(text, {"Tree Line", "Forest   ", "macro("});
    EXPECT_EQ(Run("check-scasm " + Q(out)), 0) << Stdout();

    ASSERT_EQ(Run("export " + Q(project) + " " + Q(out) + " --decimal-separator ,"), 0) << Stderr();
    t.separator = ',';
    EXPECT_EQ(ReadBytes(out), ExportOf(t));
}

TEST_F(CliFixture, CheckScasmNamesTheFaultyLines)
{
    const std::string bad = dir / "bad.txt";
    std::ofstream(bad, std::ios::binary) << "Area( 5  1  1 6 )\r\n  Jump( :Nowhere )\r\n";
    EXPECT_NE(Run("check-scasm " + Q(bad)), 0);
    EXPECT_NE(Stdout().find(bad + ":1:"), std::string::npos) << Stdout();
    EXPECT_NE(Stdout().find(bad + ":2: label :Nowhere"), std::string::npos) << Stdout();
}

TEST_F(CliFixture, FailuresLeaveTheOutputAlone)
{
    t.Shape(kPoly, {{-100, -100}, {100, -100}, {0, 100}}).gComment = "apron";
    t.project.UsePointReduction = 1;
    Save();
    const std::string out = dir / "out.txt";
    std::ofstream(out, std::ios::binary) << "old";
    EXPECT_NE(Run("export " + Q(dir / "missing.fwt") + " " + Q(out)), 0);
    EXPECT_NE(Stderr().find("does not exist!"), std::string::npos) << Stderr();
    EXPECT_NE(Run("export " + Q(project) + " " + Q(out) + " --decimal-separator x"), 0);
    EXPECT_NE(Run("export " + Q(project)), 0);
    EXPECT_NE(Run("export " + Q(project) + " " + Q(out)), 0);
    EXPECT_NE(Stderr().find("shape 1 (Poly, \"apron\")"), std::string::npos) << Stderr();
    EXPECT_EQ(ReadBytes(out), "old");
}

} // namespace
} // namespace fw::test
