// The batch tool ends by itself, with a message or a result, on binary and
// UTF-16 files, on a head of 90000 blocks, and on projects naming folders, devices and pipes as
// background image and macro. Every run has a deadline (coreutils timeout), so that a command
// that blocks fails its test instead of holding the run.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"

namespace fw {
namespace {

struct CliRun {
    int code = -1;
    std::string out;
    std::string err;
};

constexpr int kTimedOut = 124;

CliRun Cli(const test::ScratchFolder& dir, const std::string& args)
{
    const std::string out = dir.path("stdout"), err = dir.path("stderr");
    const std::string cmd = std::string("timeout -k 5 60 '") + FW_CLI + "' " + args + " >'" + out + "' 2>'" + err +
                            "' </dev/null";
    const int status = std::system(cmd.c_str());
    CliRun r;
    r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.out = test::ReadText(out);
    r.err = test::ReadText(err);
    return r;
}

std::string Q(const std::string& path) { return "'" + path + "'"; }

const char* const kHead = "Unable to open file! Corrupted file header...\n";

TEST(CliHostile, BinaryAndUtf16FilesGetTheCorruptedHeaderMessage)
{
    test::ScratchFolder dir;
    std::string binary;
    for (int k = 0; k < 400; ++k)
        for (int c = 0; c < 256; ++c)
            binary += static_cast<char>(c);
    test::WriteText(dir.path("binary.fwt"), binary);
    std::string utf16 = "\xFF\xFE";
    for (char c : test::ReadText(test::Fixture("all_types.fwt"))) {
        utf16 += c;
        utf16 += '\0';
    }
    test::WriteText(dir.path("utf16.fwt"), utf16);
    for (const char* name : {"binary.fwt", "utf16.fwt"}) {
        SCOPED_TRACE(name);
        const CliRun r = Cli(dir, "dump " + Q(dir.path(name)));
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(r.err, kHead);
    }
}

TEST(CliHostile, NinetyThousandHeadBlocksAreDumpedAtOnce)
{
    test::ScratchFolder dir;
    std::string text;
    for (int i = 0; i < 90000; ++i)
        text += "Project(\r\n";
    test::WriteText(dir.path("projects.fwt"), text + ")\r\n");
    const CliRun r = Cli(dir, "dump " + Q(dir.path("projects.fwt")));
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_NE(r.out.find("\"project\": {\"Name\":"), std::string::npos);
}

class CliNaming : public ::testing::Test {
protected:
    void SetUp() override
    {
        fifo = dir.path("pipe");
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        std::filesystem::create_directory(dir.path("folder"));
    }
    std::vector<std::pair<std::string, std::string>> Hostile() const
    {
        return {{dir.path("folder"), "Is a directory"},
                {"/dev/zero", "Not a regular file (a device)"},
                {fifo, "Not a regular file (a named pipe)"}};
    }
    // A project of one shape and one 3-D object.
    std::string Project(const std::string& image, const std::string& macro)
    {
        ProjectData d;
        ResetShowFlags(d.showFlags);
        ResetProject(d.project);
        d.showFlags.BackImagePath = image;
        d.showFlags.ShowBackPicture = image.empty() ? 0 : 1;
        ShapeRecord sh;
        ResetShape(sh, kPoly);
        d.shapes = {sh};
        d.points = {{{0, 0}, {100, 0}, {100, 100}}};
        ObjectRecord o;
        ResetObject(o, kApi, "/opt/fw/");
        o.Path() = macro.empty() ? std::string("/nowhere/hangar.api") : macro;
        d.objects = {o};
        const std::string path = dir.path("p" + std::to_string(++count) + ".fwt");
        EXPECT_TRUE(WriteProjectFile(path, d, nullptr));
        return path;
    }

    test::ScratchFolder dir;
    std::string fifo;
    int count = 0;
};

TEST_F(CliNaming, ABackgroundImageThatIsNoFileEndsWithAMessageAndAResult)
{
    for (const auto& [image, reason] : Hostile()) {
        SCOPED_TRACE(image);
        const std::string project = Project(image, "");
        CliRun r = Cli(dir, "render " + Q(project) + " " + Q(dir.path("out.png")) + " --size 64x48");
        EXPECT_EQ(r.code, 0);
        EXPECT_EQ(r.err, "Unable to load Bitmap!\n'" + image + "': " + reason + "\n");
        EXPECT_TRUE(std::filesystem::is_regular_file(dir.path("out.png")));
        std::filesystem::remove(dir.path("out.png"));

        r = Cli(dir, "export " + Q(project) + " " + Q(dir.path("out.txt")));
        EXPECT_EQ(r.code, 0) << r.err;
        r = Cli(dir, "dump " + Q(project));
        EXPECT_EQ(r.code, 0) << r.err;
        EXPECT_NE(r.out.find(image), std::string::npos); // the file keeps the path; the open drops it
    }
}

TEST_F(CliNaming, AMacroThatIsNoFileEndsWithAResult)
{
    for (const auto& [macro, reason] : Hostile()) {
        SCOPED_TRACE(macro);
        const std::string project = Project("", macro);
        CliRun r = Cli(dir, "render " + Q(project) + " " + Q(dir.path("out.png")) + " --size 64x48");
        EXPECT_EQ(r.code, 0) << r.err;
        r = Cli(dir, "export " + Q(project) + " " + Q(dir.path("out.txt")));
        EXPECT_EQ(r.code, 0) << r.err;
        EXPECT_NE(test::ReadText(dir.path("out.txt")).find("Area("), std::string::npos);
        r = Cli(dir, "dump " + Q(project));
        EXPECT_EQ(r.code, 0) << r.err;
    }
}

TEST_F(CliNaming, AProjectOrTextThatIsNoFileEndsWithItsMessage)
{
    for (const auto& [path, reason] : Hostile()) {
        SCOPED_TRACE(path);
        const std::string line = "'" + path + "': " + reason + "\n";
        CliRun r = Cli(dir, "dump " + Q(path));
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, kHead + line);
        r = Cli(dir, "export " + Q(path) + " " + Q(dir.path("x.txt")));
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, kHead + line);
        r = Cli(dir, "render " + Q(path) + " " + Q(dir.path("x.png")));
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, kHead + line);
        r = Cli(dir, "check-scasm " + Q(path));
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.err, "Unable to read " + path + "\n" + line);
        r = Cli(dir, "replay " + Q(path));
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(r.err, "unable to read '" + path + "'\n" + line);
    }
}

} // namespace
} // namespace fw
