// Editor scenarios as the user plays them, from the scripts in the fixtures.
#include <gtest/gtest.h>

#include <cstdlib>

#include "EditorTestSupport.h"
#include "files/ProjectFile.h"

namespace fw::test {
namespace {

const std::string kDrawnState = ReadFileText(std::string(FW_FIXTURES) + "/editor/draw_drag_undo.state.json");

TEST(Replay, DrawDragUndoSaveAndOpenAgain)
{
    Scenario sc("draw_drag_undo.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    EXPECT_EQ(ReadFileText((sc.dir / "drawn.json").string()), kDrawnState);
    // The saved project holds the shape as it stood after the undo.
    ProjectData data;
    ASSERT_TRUE(ReadProjectFile((sc.dir / "drawn.fwt").string(), data, nullptr, FW_PROGRAM_DIR));
    EXPECT_EQ(data.points, (std::vector<PointList>{{{0, 0}, {100, 0}, {100, 100}}}));

    // Opened again: the first shape selected, no undo, the view as it was.
    ReplaySession& r = *sc.replay;
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
    Scenario sc("points_and_tip.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    ReplaySession& r = *sc.replay;
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
    Scenario sc("objects_paste_arrange.txt");
    ASSERT_EQ(sc.code, 0) << sc.errors;
    ReplaySession& r = *sc.replay;
    const Session& s = r.session;
    ASSERT_EQ(s.stores.ObjectCount(), 4);
    EXPECT_EQ(s.stores.ObjectStore[2].PosX, -1260); // pixel (5,5) at 25 % on 640 by 480
    EXPECT_EQ(s.stores.ObjectStore[3].PosY, -900);
    EXPECT_EQ(s.editor.selection.SelObjects(), (std::vector<std::uint16_t>{2, 3}));
    EXPECT_EQ(r.ui.Popups(), std::vector<std::string>{"MnuSelection"});
    EXPECT_EQ(s.view.mMode(), 0);
    EXPECT_TRUE(std::filesystem::exists(sc.dir / "objects.json"));
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
    Scenario sc("draw_drag_undo.txt");
    std::filesystem::remove(sc.dir / "drawn.json");
    const std::string cmd = std::string(FW_CLI) + " replay '" + sc.path + "'";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    EXPECT_EQ(ReadFileText((sc.dir / "drawn.json").string()), kDrawnState);
    const std::string bad = std::string(FW_CLI) + " replay /nonexistent/script.txt 2>/dev/null";
    EXPECT_NE(std::system(bad.c_str()), 0);
}

} // namespace
} // namespace fw::test
