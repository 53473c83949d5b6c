#include <gtest/gtest.h>

#include <cstdlib>

#include "FilesTestSupport.h"
#include "core/Helpers.h"
#include "files/ProjectFile.h"
#include "files/ProjectJson.h"

namespace fw {
namespace {

struct CliRun {
    int code = -1;
    std::string out;
    std::string err;
};

CliRun Cli(const test::ScratchFolder& dir, const std::string& args)
{
    const std::string out = dir.path("stdout"), err = dir.path("stderr");
    const std::string cmd = std::string("'") + FW_CLI + "' " + args + " >'" + out + "' 2>'" + err + "'";
    const int status = std::system(cmd.c_str());
    CliRun r;
    r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.out = test::ReadText(out);
    r.err = test::ReadText(err);
    return r;
}

std::string Q(const std::string& path) { return "'" + path + "'"; }

TEST(CliDump, PrintsTheProjectAsJson)
{
    test::ScratchFolder dir;
    const CliRun r = Cli(dir, "dump " + Q(test::Fixture("blocks_swapped.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.err, "");
    ProjectData d;
    ASSERT_TRUE(ReadProjectFile(test::Fixture("blocks_swapped.fwt"), d, nullptr));
    EXPECT_EQ(r.out, ProjectToJson(d));
    EXPECT_NE(r.out.find("\"settings\": {\"ShowPoly\":1, \"ShowTexPoly\":1,"), std::string::npos);
    EXPECT_NE(r.out.find("\"gLimits\":[1,5,2,6]"), std::string::npos);
    EXPECT_NE(r.out.find("\"points\":[[1,2],[3,4],[5,6]]"), std::string::npos);
    EXPECT_NE(r.out.find("\"doubles\":[108,0,0,0]"), std::string::npos);
}

TEST(CliDump, StringsAreWindows1252AndDoublesShortest)
{
    test::ScratchFolder dir;
    test::WriteText(dir.path("w.fwt"), "Project(\r\nName=\"Caf\xE9 \x80 \\ \x01\"\r\nMagVar= .1\r\n"
                                       "LatitudeDegree= 47.00000000000001\r\n)\r\n");
    const CliRun r = Cli(dir, "dump " + Q(dir.path("w.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_NE(r.out.find("\"Name\":\"Caf\xC3\xA9 \xE2\x82\xAC \\\\ \\u0001\""), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\"MagVar\":0.1,"), std::string::npos);
    EXPECT_NE(r.out.find("\"LatitudeDegree\":47.00000000000001,"), std::string::npos);
    EXPECT_NE(r.out.find("\"settings\": {\"ShowPoly\":0,"), std::string::npos); // zero-filled
}

TEST(CliDump, FailuresAndTheNewerVersion)
{
    test::ScratchFolder dir;
    CliRun r = Cli(dir, "dump " + Q(test::Fixture("shape_unclosed_at_end.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "Unable to open file! Corrupted shape structure...\n");

    r = Cli(dir, "dump " + Q(dir.path("missing.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "'" + dir.path("missing.fwt") + "' does not exist!\n");

    r = Cli(dir, "dump " + Q(test::Fixture("newer_version.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.err, "Unable to open file! It has been made with a newer Fieldwright version...\n");
    EXPECT_NE(r.out.find("\"version\": 2"), std::string::npos);

    r = Cli(dir, "dump");
    EXPECT_EQ(r.code, 2);
}

TEST(CliResave, WritesWhatItRead)
{
    test::ScratchFolder dir;
    CliRun r = Cli(dir, "resave " + Q(test::Fixture("all_types.fwt")) + " " + Q(dir.path("out.fwt")));
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.err, "");
    // The sample holds nothing the format loses, so the text comes back byte for byte.
    EXPECT_EQ(test::ReadText(dir.path("out.fwt")), test::ReadText(test::Fixture("all_types.fwt")));

    r = Cli(dir, "resave " + Q(test::Fixture("object_edges.fwt")) + " " + Q(dir.path("edges.fwt")));
    EXPECT_EQ(r.code, 0);
    ProjectData d;
    ASSERT_TRUE(ReadProjectFile(dir.path("edges.fwt"), d, nullptr));
    EXPECT_EQ(d.objects.size(), 9u);
    EXPECT_EQ(d.objects[6].Surface(), kSurfaceAsphalt); // written "Tar", read back as the default

    r = Cli(dir, "resave " + Q(test::Fixture("head_project_unclosed.fwt")) + " " + Q(dir.path("x.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, "Unable to open file! Corrupted file header...\n");
    EXPECT_FALSE(FileExists(dir.path("x.fwt")));

    r = Cli(dir, "resave " + Q(test::Fixture("all_types.fwt")) + " " + Q(dir.path("no/such/folder.fwt")));
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.err, "Unable to write file to disk!\n'" + dir.path("no/such/folder.fwt") +
                         "': No such file or directory\n");
}

} // namespace
} // namespace fw
