// Editor scenarios as the user plays them, from the scripts in the fixtures.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "EditorTestSupport.h"
#include "files/ProjectFile.h"

namespace fw::test {
namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// Each scenario runs in a folder of its own, since the scripts write beside themselves.
struct ScriptFolder {
    explicit ScriptFolder(const std::string& script)
    {
        dir = fs::temp_directory_path() / ("fw_editor_replay_" + std::to_string(::getpid()) + "_" + script);
        fs::remove_all(dir);
        fs::create_directories(dir);
        fs::copy_file(fs::path(FW_FIXTURES) / "editor" / script, dir / script);
        path = (dir / script).string();
    }
    ~ScriptFolder() { fs::remove_all(dir); }
    fs::path dir;
    std::string path;
};

TEST(Replay, DrawDragUndoSave)
{
    ScriptFolder folder("draw_drag_undo.txt");
    ReplaySession r(FW_PROGRAM_DIR, folder.dir.string());
    std::ostringstream err;
    ASSERT_EQ(r.RunFile(folder.path, err), 0) << err.str();
    EXPECT_EQ(ReadAll(folder.dir / "drawn.json"), ReadAll(fs::path(FW_FIXTURES) / "editor" / "draw_drag_undo.state.json"));
    // The saved project holds the shape as it stood after the undo.
    ProjectData data;
    ASSERT_TRUE(ReadProjectFile((folder.dir / "drawn.fwt").string(), data, nullptr, FW_PROGRAM_DIR));
    ASSERT_EQ(data.points.size(), 1u);
    EXPECT_EQ(data.points[0], (PointList{{0, 0}, {100, 0}, {100, 100}}));
}

TEST(Replay, OpenSelectsTheFirstShapeAndClearsUndo)
{
    ScriptFolder folder("draw_drag_undo.txt");
    ReplaySession r(FW_PROGRAM_DIR, folder.dir.string());
    std::ostringstream err;
    ASSERT_EQ(r.RunFile(folder.path, err), 0) << err.str();
    std::string error;
    ASSERT_TRUE(r.Run("command MnuC250", error)) << error;
    ASSERT_TRUE(r.Run("open drawn.fwt", error)) << error;
    const Session& s = r.session;
    EXPECT_EQ(s.canUndo, 0);
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.view.zoom(), 0.25) << "the view isn't restored from the file";
    EXPECT_EQ(s.editor.selection.SelShapes(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(s.editor.selection.state(), 1);
    EXPECT_EQ(Title(s), "Fieldwright - [drawn.fwt]");
}

TEST(Replay, PointsAndTip)
{
    ScriptFolder folder("points_and_tip.txt");
    ReplaySession r(FW_PROGRAM_DIR, folder.dir.string());
    std::ostringstream err;
    ASSERT_EQ(r.RunFile(folder.path, err), 0) << err.str();
    const Session& s = r.session;
    EXPECT_EQ(s.stores.PointStore.at(0), (PointList{{0, 0}, {100, 0}, {100, 100}, {50, 50}}));
    EXPECT_EQ(s.editor.selection.SelPoints(), (std::vector<std::uint16_t>{3}));
    EXPECT_EQ(s.config.MessageDelete, 0);
    ASSERT_EQ(r.ui.log.size(), 3u);
    EXPECT_FALSE(r.ui.log[1].queued);
    EXPECT_EQ(r.ui.log[2].answer, "dontshow");
}

TEST(Replay, ObjectsPasteArrange)
{
    ScriptFolder folder("objects_paste_arrange.txt");
    ReplaySession r(FW_PROGRAM_DIR, folder.dir.string());
    std::ostringstream err;
    ASSERT_EQ(r.RunFile(folder.path, err), 0) << err.str();
    const Session& s = r.session;
    ASSERT_EQ(s.stores.ObjectCount(), 4);
    EXPECT_EQ(s.stores.ObjectStore[2].PosX, -1260); // pixel (5,5) at 25 % on 640 by 480
    EXPECT_EQ(s.stores.ObjectStore[3].PosY, -900);
    EXPECT_EQ(s.editor.selection.SelObjects(), (std::vector<std::uint16_t>{2, 3}));
    EXPECT_EQ(r.ui.Popups(), std::vector<std::string>{"MnuSelection"});
    EXPECT_EQ(s.view.mMode(), 0);
    EXPECT_TRUE(fs::exists(folder.dir / "objects.json"));
}

TEST(Replay, BadLinesStopWithTheirNumber)
{
    ReplaySession r(FW_PROGRAM_DIR);
    std::string error;
    EXPECT_FALSE(r.Run("down X 1 2", error));
    EXPECT_FALSE(r.Run("move 1", error));
    EXPECT_FALSE(r.Run("tool hammer", error));
    EXPECT_FALSE(r.Run("command MnuNothing", error));
    EXPECT_FALSE(r.Run("answer maybe", error));
    EXPECT_FALSE(r.Run("canvas 10 nan", error));
    EXPECT_TRUE(r.Run("   # only a comment", error));
    EXPECT_TRUE(r.Run("key 45 # Insert with nothing selected paints", error));
    // A missing file goes through the load flow's message and changes nothing.
    EXPECT_TRUE(r.Run("open /nonexistent/none.fwt", error));
    ASSERT_EQ(r.ui.log.size(), 1u);
    EXPECT_EQ(r.ui.log[0].kind, "message");
    EXPECT_EQ(r.session.hasName, 0);
}

TEST(Replay, CommandLineRunsAScript)
{
    ScriptFolder folder("draw_drag_undo.txt");
    const std::string cmd = std::string(FW_CLI) + " replay '" + folder.path + "'";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    EXPECT_EQ(ReadAll(folder.dir / "drawn.json"), ReadAll(fs::path(FW_FIXTURES) / "editor" / "draw_drag_undo.state.json"));
    const std::string bad = std::string(FW_CLI) + " replay /nonexistent/script.txt 2>/dev/null";
    EXPECT_NE(std::system(bad.c_str()), 0);
}

} // namespace
} // namespace fw::test
