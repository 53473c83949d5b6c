// The batch tool's file commands. What the readers make of damaged and hostile files is tested
// through the library; here each command shows it passes their messages on and ends by itself.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include "FilesTestSupport.h"
#include "core/Helpers.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"

namespace fw {
namespace {

using test::Quoted;
using test::RunCli;

TEST(CliDump, PrintsTheProjectAsJson)
{
    test::ScratchFolder dir;
    test::CliRun r = RunCli(dir, "dump " + Quoted(test::Fixture("blocks_swapped.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.err, "");
    ProjectData d;
    ASSERT_TRUE(ReadProjectFile(test::Fixture("blocks_swapped.fwt"), d, nullptr));
    EXPECT_EQ(r.out, ProjectToJson(d));
    for (const char* part : {"\"settings\": {\"ShowPoly\":1, \"ShowTexPoly\":1,", "\"gLimits\":[1,5,2,6]",
                             "\"points\":[[1,2],[3,4],[5,6]]", "\"doubles\":[108,0,0,0]"})
        EXPECT_NE(r.out.find(part), std::string::npos) << part;

    // Strings are Windows-1252, doubles the shortest that read back, missing head blocks zero-filled.
    test::WriteText(dir.path("w.fwt"), "Project(\r\nName=\"Caf\xE9 \x80 \\ \x01\"\r\nMagVar= .1\r\n"
                                       "LatitudeDegree= 47.00000000000001\r\n)\r\n");
    r = RunCli(dir, "dump " + Quoted(dir.path("w.fwt")));
    EXPECT_EQ(r.code, 0);
    for (const char* part : {"\"Name\":\"Caf\xC3\xA9 \xE2\x82\xAC \\\\ \\u0001\"", "\"MagVar\":0.1,",
                             "\"LatitudeDegree\":47.00000000000001,", "\"settings\": {\"ShowPoly\":0,"})
        EXPECT_NE(r.out.find(part), std::string::npos) << part << "\n" << r.out;
}

TEST(CliDump, FailuresAndTheNewerVersion)
{
    test::ScratchFolder dir;
    test::CliRun r = RunCli(dir, "dump " + Quoted(test::Fixture("shape_unclosed_at_end.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "Unable to open file! Corrupted shape structure...\n");
    r = RunCli(dir, "dump " + Quoted(dir.path("missing.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, "'" + dir.path("missing.fwt") + "' does not exist!\n");
    r = RunCli(dir, "dump " + Quoted(test::Fixture("newer_version.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.err, "Unable to open file! It has been made with a newer Fieldwright version...\n");
    EXPECT_NE(r.out.find("\"version\": 2"), std::string::npos);
    EXPECT_EQ(RunCli(dir, "dump").code, 2);
}

TEST(CliResave, WritesWhatItRead)
{
    test::ScratchFolder dir;
    const std::string sample = Quoted(test::Fixture("all_types.fwt"));
    test::CliRun r = RunCli(dir, "resave " + sample + " " + Quoted(dir.path("out.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.err, "");
    // The sample holds nothing the format loses, so the text comes back byte for byte.
    EXPECT_EQ(test::ReadText(dir.path("out.fwt")), test::ReadText(test::Fixture("all_types.fwt")));

    r = RunCli(dir, "resave " + Quoted(test::Fixture("head_project_unclosed.fwt")) + " " + Quoted(dir.path("x.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, "Unable to open file! Corrupted file header...\n");
    EXPECT_FALSE(FileExists(dir.path("x.fwt")));
    r = RunCli(dir, "resave " + sample + " " + Quoted(dir.path("no/such/folder.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, "Unable to write file to disk!\n'" + dir.path("no/such/folder.fwt") + "': No such file or directory\n");
}

// Folders, devices and pipes named as the project, as its background image and as its macro.
TEST(CliHostile, PathsThatAreNoFileEndWithTheirMessageOrAResult)
{
    test::ScratchFolder dir;
    const std::string fifo = dir.path("pipe");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    std::filesystem::create_directory(dir.path("folder"));
    const std::string head = "Unable to open file! Corrupted file header...\n";
    const std::pair<std::string, std::string> hostile[] = {{dir.path("folder"), "Is a directory"},
                                                           {"/dev/zero", "Not a regular file (a device)"},
                                                           {fifo, "Not a regular file (a named pipe)"}};
    for (const auto& [path, reason] : hostile) {
        SCOPED_TRACE(path);
        const std::string line = "'" + path + "': " + reason + "\n";
        const std::pair<std::string, std::string> runs[] = {
            {"dump " + Quoted(path), head + line},
            {"export " + Quoted(path) + " " + Quoted(dir.path("x.txt")), head + line},
            {"render " + Quoted(path) + " " + Quoted(dir.path("x.png")), head + line},
            {"check-scasm " + Quoted(path), "Unable to read " + path + "\n" + line},
            {"replay " + Quoted(path), "unable to read '" + path + "'\n" + line}};
        for (const auto& [args, err] : runs) {
            const test::CliRun r = RunCli(dir, args);
            EXPECT_EQ(r.code, args.rfind("replay", 0) == 0 ? 2 : 1) << args;
            EXPECT_EQ(r.err, err) << args;
        }

        // A project of one shape and one 3-D object naming the path as picture and as macro.
        ProjectData d;
        ResetShowFlags(d.showFlags);
        ResetProject(d.project);
        d.showFlags.BackImagePath = path;
        d.showFlags.ShowBackPicture = 1;
        d.shapes.emplace_back();
        ResetShape(d.shapes[0], kPoly);
        d.points = {{{0, 0}, {100, 0}, {100, 100}}};
        d.objects.emplace_back();
        ResetObject(d.objects[0], kApi, "/opt/fw/");
        d.objects[0].Path() = path;
        const std::string project = dir.path("p.fwt");
        ASSERT_TRUE(WriteProjectFile(project, d, nullptr));
        test::CliRun r = RunCli(dir, "render " + Quoted(project) + " " + Quoted(dir.path("out.png")) + " --size 64x48");
        EXPECT_EQ(r.code, 0);
        EXPECT_EQ(r.err, "Unable to load Bitmap!\n" + line);
        EXPECT_TRUE(std::filesystem::is_regular_file(dir.path("out.png")));
        std::filesystem::remove(dir.path("out.png"));
        r = RunCli(dir, "export " + Quoted(project) + " " + Quoted(dir.path("out.txt")));
        EXPECT_EQ(r.code, 0) << r.err;
        EXPECT_NE(test::ReadText(dir.path("out.txt")).find("Area("), std::string::npos);
        r = RunCli(dir, "dump " + Quoted(project));
        EXPECT_EQ(r.code, 0) << r.err;
        EXPECT_NE(r.out.find(path), std::string::npos); // the file keeps the path; the open drops it
    }
}

} // namespace
} // namespace fw
