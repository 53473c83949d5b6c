// fieldwright-cli export and compile on a project file.
#include "ExportTestSupport.h"

#include <filesystem>

namespace fw::test {
namespace {

namespace fs = std::filesystem;

struct CliFixture : ::testing::Test {
    fs::path dir = fs::temp_directory_path() / ("fw cli export " + std::to_string(::getpid()));
    std::string project;
    TestProject t;

    void SetUp() override
    {
        fs::remove_all(dir);
        fs::create_directories(dir);
        project = (dir / "field one.fwt").string();
        ShapeRecord& a = t.Shape(kPoly, {{-100, -100}, {100, -100}, {0, 100}});
        a.gIsColored = 1;
        a.gComment = "apron";
        ShapeRecord& b = t.Shape(kWideLine, {{-400, 0}, {400, 50}});
        b.gLineType = 2;
        t.Shape(kDotLine, {{0, 0}, {0, -600}, {40, -600}}).vLayer = 4;
        Save();
    }
    void TearDown() override { fs::remove_all(dir); }

    void Save() { ASSERT_TRUE(SaveProject(project, t.project, t.stores)); }

    int Run(const std::string& args, const std::string& env = {})
    {
        const std::string cmd = env + " \"" + std::string(FW_CLI) + "\" " + args + " 2> \"" +
                                (dir / "stderr.txt").string() + "\"";
        return std::system(cmd.c_str());
    }
    std::string Stderr() { return ReadBytes((dir / "stderr.txt").string()); }
    std::string Q(const fs::path& p) { return "\"" + p.string() + "\""; }
};

// The separator comes from the option, or else from the locale.
TEST_F(CliFixture, ExportWritesWhatTheMenuCommandWrites)
{
    const fs::path out = dir / "out put.txt";
    ASSERT_EQ(Run("export " + Q(project) + " " + Q(out), "LC_ALL=C"), 0) << Stderr();
    EXPECT_EQ(ReadBytes(out.string()), ExportOf(t));
    ASSERT_EQ(Run("export " + Q(project) + " " + Q(out) + " --decimal-separator ,"), 0) << Stderr();
    t.separator = ',';
    EXPECT_EQ(ReadBytes(out.string()), ExportOf(t));
}

TEST_F(CliFixture, FailuresLeaveTheOutputAlone)
{
    const fs::path out = dir / "out.txt";
    std::ofstream(out, std::ios::binary) << "old";
    EXPECT_NE(Run("export " + Q(dir / "missing.fwt") + " " + Q(out)), 0);
    EXPECT_NE(Stderr().find("does not exist!"), std::string::npos) << Stderr();
    EXPECT_NE(Run("export " + Q(project) + " " + Q(out) + " --decimal-separator x"), 0);
    EXPECT_NE(Run("export " + Q(project)), 0);

    t.project.UsePointReduction = 1;
    Save();
    EXPECT_NE(Run("export " + Q(project) + " " + Q(out)), 0);
    EXPECT_NE(Stderr().find("shape 1 (Poly, \"apron\")"), std::string::npos) << Stderr();
    EXPECT_EQ(ReadBytes(out.string()), "old");
}

// A smoke test: the compiler's failures are the library's own (CompileTest).
TEST_F(CliFixture, CompileRunsTheCompiler)
{
    const fs::path home = dir / "home dir";
    fs::create_directories(home);
    const fs::path bgl = dir / "out.bgl";
    const std::string env = "FIELDWRIGHT_HOME=" + Q(home.string() + "/") + " FIELDWRIGHT_SCASM=" +
                            Q(std::string(FW_TEST_TOOLS) + "/fake-scasm.sh");
    ASSERT_EQ(Run("compile " + Q(project) + " " + Q(bgl), env), 0) << Stderr();
    EXPECT_TRUE(fs::exists(bgl));
    EXPECT_FALSE(fs::exists(home / "exp.temp01"));
    EXPECT_FALSE(fs::exists(dir / "SCAERROR.LOG"));
}

} // namespace
} // namespace fw::test
