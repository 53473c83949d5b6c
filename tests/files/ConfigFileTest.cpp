#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "FilesTestSupport.h"
#include "files/ConfigFile.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

using test::Fixture;

Session FreshSession(const std::string& programFolder = "/opt/fw/")
{
    Session s;
    s.programFolder = programFolder;
    ResetAtStart(s);
    ResetConfig(s.config, programFolder);
    return s;
}

// Checked line by line against the configuration's key order and the shape blocks.
TEST(ConfigWriter, DefaultsAndRecentListMatchTheGoldenText)
{
    Session s = FreshSession();
    s.recent.addPath("/home/u/old.fwt");
    s.recent.addPath("/home/u/new.fwt");
    CBufferS buffer;
    BuildConfigText(buffer, s);
    const std::string text = JoinLines(buffer.lines());
    if (std::getenv("FW_WRITE_GOLDEN"))
        test::WriteText(Fixture("default.cfg"), text);
    EXPECT_EQ(text, test::ReadText(Fixture("default.cfg")));
}

TEST(ConfigReader, LimitsUnknownKeysAndOrder)
{
    Session s = FreshSession();
    ReadConfigText(s, test::Crlf("GridDist1= 40000\nGridDist2= 0\nWinStatus= 2\nBogus= 12\nEnableOpenGL= 2\n"
                                 "MessageDelete= 0\nGridColor4= 0\nWinWidth=-5\nFSPath=\"D:\\FS2000\\\"\n"
                                 "RecentFile=\"\"\nRecentFile=\"/a.fwt\"\n"));
    EXPECT_EQ(s.config.GridDist[0], 50);
    EXPECT_EQ(s.config.GridDist[1], 0);
    EXPECT_EQ(s.config.WinStatus, 2);
    EXPECT_EQ(s.config.EnableOpenGL, 0);
    EXPECT_EQ(s.config.MessageDelete, 0);
    EXPECT_EQ(s.config.MessageScale, 1);
    EXPECT_EQ(s.config.WinWidth, -5);
    EXPECT_EQ(s.config.FSPath, "D:\\FS2000\\");
    EXPECT_EQ(s.config.gridColor[2], RGB(60, 60, 60));
    EXPECT_EQ(s.config.gridColor[0], RGB(130, 130, 130));
    EXPECT_EQ(s.recent.nEntries(), 0);
    EXPECT_EQ(s.recent.getEntry(0), "/a.fwt");

    Session t = FreshSession(); // the keys in another order
    ReadConfigText(t, "RecentFile=\"/a.fwt\"\nMessageDelete= 0\nWinStatus= 2\nGridDist2= 0\n");
    EXPECT_EQ(t.config.MessageDelete, 0);
    EXPECT_EQ(t.config.WinStatus, 2);
    EXPECT_EQ(t.config.GridDist[1], 0);

    // Default shapes from their blocks; a block without vTime has no time of day, an unclosed one
    // keeps the built-in default.
    Session u = FreshSession();
    ReadConfigText(u, test::Crlf("Poly(\ncColor= 255\nData[\n 0, 0\n]\n)\nFlatten(\nData[\n 0, 0\n]\n)\n"
                                 "WideLine(\nvLayer= 8\ngLineWidth= 3\nvTime=\"D\"\n)\nForest(\nvTime=\"N\"\n"));
    const auto& shapes = u.config.defaultShapes;
    EXPECT_EQ(shapes[0].cColor, 255);
    EXPECT_EQ(shapes[0].vTime, 0);
    EXPECT_EQ(shapes[0].tDayPath, "Concrete.r8");
    EXPECT_EQ(shapes[2].gLineWidth, 3);
    EXPECT_EQ(shapes[2].vLayer, 0);
    EXPECT_EQ(shapes[2].vTime, kTimeDay);
    EXPECT_EQ(shapes[5].vTime, 7);
    EXPECT_EQ(shapes[1].vTime, 7);
}

TEST(ConfigReader, FirstStartCreatesTheFileAndEverythingSurvivesWriteAndRead)
{
    test::ScratchFolder dir;
    Session first = FreshSession(dir.folder());
    first.config.WinWidth = 1;
    ReadConfigFile(first, dir.path("Fieldwright.cfg"));
    EXPECT_TRUE(FileExists(dir.path("Fieldwright.cfg")));
    EXPECT_EQ(first.config.WinWidth, 640); // the golden text pins the other defaults
    EXPECT_EQ(first.config.BGLPath, dir.folder() + "Export.bgl");
    EXPECT_EQ(first.recent.nEntries(), -1);

    Session s = FreshSession(dir.folder());
    s.config.BGLPath = "/x/out.bgl";
    s.config.APIPath = "/x/api/";
    s.config.GridColor4 = RGB(1, 2, 3);
    DeriveGridColors(s.config);
    s.config.GridDist = {1, 2, 32000};
    s.config.WinWidth = 1024;
    s.config.WinStatus = 2;
    s.config.EnableOpenGL = 1;
    s.config.MessageCompile = 0;
    s.config.defaultShapes[3].gDotSpacing() = 12.5;
    s.config.defaultShapes[3].vTime = kTimeNight;
    s.config.defaultShapes[4].mNumBands = 4;
    for (const char* p : {"/p/1.fwt", "/p/2.fwt", "/p/3.fwt", "/p/4.fwt", "/p/5.fwt"})
        s.recent.addPath(p);
    ASSERT_TRUE(WriteConfigFile(s, dir.path("Fieldwright.cfg")));

    Session t = FreshSession(dir.folder());
    ReadConfigFile(t, dir.path("Fieldwright.cfg"));
    EXPECT_EQ(t.config.BGLPath, "/x/out.bgl");
    EXPECT_EQ(t.config.APIPath, "/x/api/");
    EXPECT_EQ(t.config.gridColor, s.config.gridColor);
    EXPECT_EQ(t.config.GridDist, s.config.GridDist);
    EXPECT_EQ(t.config.WinWidth, 1024);
    EXPECT_EQ(t.config.WinStatus, 2);
    EXPECT_EQ(t.config.EnableOpenGL, 1);
    EXPECT_EQ(t.config.MessageCompile, 0);
    EXPECT_EQ(t.config.defaultShapes[3].gDotSpacing(), 12.5);
    EXPECT_EQ(t.config.defaultShapes[3].vTime, kTimeNight);
    EXPECT_EQ(t.config.defaultShapes[4].mNumBands, 4);
    ASSERT_EQ(t.recent.nEntries(), 3);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(t.recent.getEntry(i), s.recent.getEntry(i));
    EXPECT_EQ(t.recent.getEntry(0), "/p/5.fwt");
}

// Beside the program, or in the user's folder; an installed folder is never written, though it could
// be (by root) and though it holds a configuration file. There the user's own files start at home,
// the program's own folders stay, and a path in the file still wins.
TEST(ConfigPath, BesideTheProgramOrInTheUsersFolder)
{
    test::ScratchFolder dir, home;
    EXPECT_EQ(ConfigFilePath(dir.folder()), dir.folder() + "Fieldwright.cfg");
    Session build = FreshSession("/opt/fw/");
    ReadConfigText(build, "");
    EXPECT_EQ(build.config.FWTPath, "/opt/fw/");
    EXPECT_EQ(build.config.BGLPath, "/opt/fw/Export.bgl");

    const test::ScopedEnv config("XDG_CONFIG_HOME", home.folder());
    EXPECT_EQ(ConfigFilePath("/no/such/program/folder/"), home.folder() + "/Fieldwright/Fieldwright.cfg");
    EXPECT_TRUE(std::filesystem::is_directory(home.folder() + "/Fieldwright"));
    std::ofstream(dir.path("Fieldwright.installed"));
    std::ofstream(dir.path("Fieldwright.cfg"));
    EXPECT_TRUE(ProgramFolderInstalled(dir.folder()));
    EXPECT_EQ(UserFolder(dir.folder()), home.folder() + "/Fieldwright/");
    EXPECT_EQ(ConfigFilePath(dir.folder()), home.folder() + "/Fieldwright/Fieldwright.cfg");

    const test::ScopedEnv user("HOME", "/home/pilot");
    Session s = FreshSession(dir.folder());
    ReadConfigText(s, "FWTPath=\"/data/projects/\"\r\n");
    EXPECT_EQ(s.config.BGLPath, "/home/pilot/Export.bgl");
    EXPECT_EQ(s.config.SCAPath, "/home/pilot/Export.txt");
    EXPECT_EQ(s.config.FWTPath, "/data/projects/");
    for (const std::string* p : {&s.config.ImportPath, &s.config.BackPicturePath, &s.config.SceneryPath})
        EXPECT_EQ(*p, "/home/pilot/");
    EXPECT_EQ(s.config.TEXPath, dir.folder() + "Texture/");
    EXPECT_EQ(s.config.APIPath, dir.folder() + "API/");
}

} // namespace
} // namespace fw
