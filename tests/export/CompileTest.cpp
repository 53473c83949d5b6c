// The compiler run end to end with the fake compiler of tests/tools, and the two menu commands.
#include "ExportTestSupport.h"

#include "core/Session.h"
#include "export/Compile.h"
#include "posix/PosixProcess.h"

namespace fw::test {
namespace {

namespace fs = std::filesystem;

const std::string kFake = std::string(FW_TEST_TOOLS) + "/fake-scasm.sh";

// Sets an environment variable for the scope, then puts back what was there.
struct EnvVar {
    std::string name;
    const char* old;
    std::string saved;
    EnvVar(std::string n, const std::string& value) : name(std::move(n)), old(std::getenv(name.c_str()))
    {
        saved = old ? old : "";
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    ~EnvVar() { old ? ::setenv(name.c_str(), saved.c_str(), 1) : ::unsetenv(name.c_str()); }
};

// A program folder and a scenery folder, both with blanks in their names.
struct CompileFixture : ::testing::Test {
    Scratch root{"fw export compile"};
    std::string program = root / "program folder/";
    std::string scenery = root / "my scenery/";
    std::string bgl = scenery + "my airport.bgl";
    std::string record = root / "record.txt";
    EnvVar recordVar{"FAKE_SCASM_RECORD", record};
    EnvVar mode{"FAKE_SCASM_MODE", "ok"};
    TestProject t;
    PosixProcess process;

    void SetUp() override
    {
        fs::create_directories(program);
        fs::create_directories(scenery);
        t.Shape(kPoly, {{-100, -100}, {100, -100}, {0, 100}}).gIsColored = 1;
    }
    bool Run(const std::string& compiler = kFake)
    {
        return Compile(t.Input(), program, bgl, process, CompilerCommand{compiler});
    }
    void ExpectCleanedUp()
    {
        EXPECT_FALSE(fs::exists(program + "exp.temp01"));
        EXPECT_FALSE(fs::exists(scenery + "SCAERROR.LOG"));
    }
};

TEST_F(CompileFixture, SuccessLeavesTheSceneryAndNothingElse)
{
    EXPECT_TRUE(Run());
    EXPECT_TRUE(fs::exists(bgl));
    ExpectCleanedUp();
    EXPECT_TRUE(t.ui.calls.empty());
    // Each path one argument despite the blanks, and the temporary file as a compiler export.
    EXPECT_EQ(ReadBytes(record), "argc=3\narg=" + program + "exp.temp01\narg=" + bgl + "\narg=-l\n");
    EXPECT_EQ(ReadBytes(record + ".source"), ExportOf(t, bgl));
}

TEST_F(CompileFixture, AnErrorLogShowsTheStatusDialogWhileTheLogExists)
{
    ::setenv("FAKE_SCASM_MODE", "error", 1);
    std::string seen;
    t.ui.viewErrors = true;
    t.ui.onScasmStatus = [&](const std::string& log) { seen = ReadBytes(log); };
    EXPECT_FALSE(Run());
    ASSERT_EQ(t.ui.calls.size(), 2u);
    EXPECT_EQ(t.ui.calls[0].kind, "scasmstatus");
    EXPECT_EQ(t.ui.calls[0].text, "Unable to generate BGL file. One or more errors occured...");
    EXPECT_EQ(t.ui.calls[1].kind, "open"); // "View errors"
    EXPECT_EQ(t.ui.calls[1].text, scenery + "SCAERROR.LOG");
    EXPECT_NE(seen.find("1 error(s)"), std::string::npos);
    ExpectCleanedUp();
}

// No log, or a success line past the log's first hundred bytes, is a failure.
TEST_F(CompileFixture, NoLogOrALateSuccessLineCountsAsFailure)
{
    const std::string late = root / "late-ok.sh";
    std::ofstream(late) << "#!/bin/sh\nlog=\"$(dirname \"$2\")/SCAERROR.LOG\"\nprintf '%0100d' 0 > \"$log\"\n"
                           "printf 'Scasm compilation status: ok' >> \"$log\"\n";
    fs::permissions(late, fs::perms::owner_all);
    ::setenv("FAKE_SCASM_MODE", "nolog", 1);
    for (const std::string& compiler : {kFake, late}) {
        SCOPED_TRACE(compiler);
        t.ui.calls.clear();
        EXPECT_FALSE(Run(compiler));
        ASSERT_EQ(t.ui.calls.size(), 1u);
        EXPECT_EQ(t.ui.calls[0].kind, "scasmstatus");
        ExpectCleanedUp();
    }
}

TEST_F(CompileFixture, AMissingCompilerIsReportedAndTheTemporaryFileRemoved)
{
    // A native program that isn't there, and wine with a program folder without scasm.exe.
    for (const std::string& compiler : {root / "no such compiler", std::string()}) {
        t.ui.calls.clear();
        EXPECT_FALSE(Run(compiler));
        EXPECT_EQ(t.ui.Messages(), (std::vector<std::string>{kCompilerMissing}));
        EXPECT_EQ(t.ui.calls[0].style, MessageStyle::Exclamation);
        ExpectCleanedUp();
        EXPECT_FALSE(fs::exists(bgl));
    }
}

// An export fault or an empty path: no compiler starts.
TEST_F(CompileFixture, NothingToCompileStartsNoCompiler)
{
    EXPECT_FALSE(Compile(t.Input(), program, "", process, CompilerCommand{kFake}));
    EXPECT_FALSE(Compile(t.Input(), "", bgl, process, CompilerCommand{kFake}));
    EXPECT_TRUE(t.ui.calls.empty());
    t.project.UsePointReduction = 1;
    EXPECT_FALSE(Run());
    EXPECT_FALSE(fs::exists(record));
    ASSERT_EQ(t.ui.Messages().size(), 1u);
    EXPECT_NE(t.ui.Messages()[0].find("shape 1 (Poly"), std::string::npos);
    ExpectCleanedUp();
}

// An installed program folder: the temporary file and a compiler the user added are in the user's
// folder. wine and winepath are stand-ins on the PATH.
TEST_F(CompileFixture, AnInstalledProgramFolderUsesTheUsersFolder)
{
    const fs::path bin = root.dir / "bin";
    const std::string user = root / "config home/Fieldwright/";
    fs::create_directories(bin);
    std::ofstream(bin / "winepath") << "#!/bin/sh\nprintf '%s\\n' \"$2\"\n";
    std::ofstream(bin / "wine") << "#!/bin/sh\nprintf '%s' \"$1\" > \"$FAKE_SCASM_RECORD.wine\"\nshift\nexec \""
                                << kFake << "\" \"$@\"\n";
    fs::permissions(bin / "winepath", fs::perms::owner_all);
    fs::permissions(bin / "wine", fs::perms::owner_all);
    std::ofstream(program + "Fieldwright.installed");
    const char* path = std::getenv("PATH");
    EnvVar pathVar("PATH", bin.string() + ":" + (path ? path : ""));
    EnvVar config("XDG_CONFIG_HOME", root / "config home");
    fs::create_directories(user);
    std::ofstream(user + "scasm.exe") << "MZ";
    EXPECT_TRUE(Run(""));
    EXPECT_TRUE(t.ui.calls.empty());
    EXPECT_EQ(ReadBytes(record + ".wine"), user + "scasm.exe");
    EXPECT_EQ(ReadBytes(record), "argc=3\narg=" + user + "exp.temp01\narg=" + bgl + "\narg=-l\n");
    EXPECT_FALSE(fs::exists(user + "exp.temp01"));
    EXPECT_TRUE(fs::exists(bgl));
    EXPECT_FALSE(fs::exists(program + "exp.temp01"));

    // A compiler in the program folder comes first.
    std::ofstream(program + "scasm.exe") << "MZ";
    EXPECT_TRUE(Run(""));
    EXPECT_EQ(ReadBytes(record + ".wine"), program + "scasm.exe");
}

struct MenuFixture : CompileFixture {
    Session s;
    ScriptedUi ui;
    void SetUp() override
    {
        CompileFixture::SetUp();
        ResetAtStart(s);
        s.programFolder = program;
        ResetConfig(s.config, program);
        s.ui = &ui;
        s.projectPath = "/home/me/projects/field.fwt";
        s.project = t.project;
        s.project.Name = "Airfield";
        s.stores = t.stores;
    }
};

// Each command starts in the program folder with the project's name, keeps the path chosen and ends
// with a cancelled dialog; the compiler's notice comes first and can be turned off.
TEST_F(MenuFixture, GenerateScasmFilesAndScenery)
{
    const std::string out = scenery + "out.txt";
    ui.files = {out, "", bgl, ""};
    EXPECT_TRUE(MnuFexport(s));
    EXPECT_FALSE(MnuFexport(s));
    EXPECT_EQ(ReadBytes(out), ExportOf(t));
    EXPECT_EQ(s.config.SCAPath, out);
    EXPECT_EQ(s.dirty, 0);

    s.config.MessageCompile = 1;
    ui.tipResults = {0}; // "Don't show again"
    ui.calls.clear();
    EXPECT_TRUE(MnuFbgl(s, process, CompilerCommand{kFake}));
    EXPECT_EQ(ui.calls.at(0).kind, "tip");
    EXPECT_EQ(ui.calls.at(0).text, CompileNotice());
    EXPECT_EQ(s.config.MessageCompile, 0);
    EXPECT_EQ(s.config.BGLPath, bgl);
    EXPECT_TRUE(fs::exists(bgl));
    ExpectCleanedUp();
    fs::remove(record);
    ui.calls.clear();
    EXPECT_FALSE(MnuFbgl(s, process, CompilerCommand{kFake}));
    EXPECT_EQ(ui.calls.at(0).kind, "tip");
    EXPECT_FALSE(fs::exists(record));

    ASSERT_EQ(ui.fileRequests.size(), 4u);
    for (int k : {0, 2}) {
        EXPECT_EQ(ui.fileRequests[k].startFolder, program);
        EXPECT_TRUE(ui.fileRequests[k].save);
    }
    EXPECT_EQ(ui.fileRequests[0].defaultName, "field.txt");
    EXPECT_EQ(ui.fileRequests[2].defaultName, "Airfield.bgl");
    EXPECT_FALSE(ui.waitCursor);
}

} // namespace
} // namespace fw::test
