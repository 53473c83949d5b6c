// Editor scenarios as the user plays them, from the scripts in the fixtures.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>

#include <sys/wait.h>

#include "editor/EditorTestSupport.h"
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
    std::filesystem::remove(sc.dir / "drawn.fwt");
    // The fixture runs where it stands; what it writes goes to the output folder.
    const std::string cmd = "XDG_STATE_HOME='" + (sc.dir / "state").string() + "' " + std::string(FW_CLI) +
                            " replay '" + sc.path + "' --out '" + sc.dir.string() + "'";
    ASSERT_EQ(std::system(cmd.c_str()), 0);
    EXPECT_EQ(ReadFileText((sc.dir / "drawn.json").string()), kDrawnState);
    EXPECT_TRUE(std::filesystem::exists(sc.dir / "drawn.fwt"));
    const auto beside = std::filesystem::path(FW_FIXTURES) / "editor";
    EXPECT_FALSE(std::filesystem::exists(beside / "drawn.json")) << "nothing is written into the source tree";
    EXPECT_FALSE(std::filesystem::exists(beside / "drawn.fwt"));
    const std::string bad = std::string(FW_CLI) + " replay /nonexistent/script.txt 2>/dev/null";
    EXPECT_NE(std::system(bad.c_str()), 0);
    // A missing or absent output folder, or two scripts, is a usage error.
    for (const std::string& args : {"'" + sc.path + "' --out", "'" + sc.path + "' --out /nonexistent/out",
                                    "'" + sc.path + "' '" + sc.path + "'"}) {
        const std::string usage = std::string(FW_CLI) + " replay " + args + " 2>/dev/null";
        EXPECT_EQ(WEXITSTATUS(std::system(usage.c_str())), 2) << args;
    }
}

TEST(Replay, ReadsComeFromTheScriptsFolderWritesGoToTheOutputFolder)
{
    const TempFolder root("replay_folders");
    std::filesystem::create_directories(root / "script");
    std::filesystem::create_directories(root / "out");
    {
        ReplaySession maker(FW_PROGRAM_DIR, root / "script");
        std::string error;
        ASSERT_TRUE(maker.Run("save input.fwt", error)) << error;
    }
    ReplaySession r(FW_PROGRAM_DIR, root / "script", root / "out");
    std::string error;
    for (const char* line : {"open input.fwt", "save copy.fwt", "answer file saved", "command MnuFsaveas",
                             "answer file input.fwt", "command MnuFopen", "state state.json"})
        ASSERT_TRUE(r.Run(line, error)) << line << ": " << error;
    EXPECT_EQ(r.session.projectPath, root / "script/input.fwt");
    for (const char* written : {"out/copy.fwt", "out/saved.fwt", "out/state.json"})
        EXPECT_TRUE(std::filesystem::exists(root / written)) << written;
    const auto beside = std::distance(std::filesystem::directory_iterator(root / "script"),
                                      std::filesystem::directory_iterator());
    EXPECT_EQ(beside, 1) << "only the input stands beside the script";
    // A file the script wrote is read back from the output folder.
    ASSERT_TRUE(r.Run("open saved.fwt", error)) << error;
    EXPECT_EQ(r.session.projectPath, root / "out/saved.fwt");
}

// What a restored copy holds is RecoveryTest's; here the keeper runs under the batch tool, and a
// question without a queued answer counts as No.
TEST(Replay, TheKeeperFollowsTheScriptAndOpenAsksFromTheQueue)
{
    const TempFolder root("replay_recovery");
    // Draw a square, save it, then drag it sideways: a change that leaves the project unmarked.
    std::ofstream(root / "script.txt") << "canvas 800 600\ncommand MnuC2100\ntool poly\n"
                                          "down L 400 300\nup L 400 300\ndown L 500 300\nup L 500 300\nanswer ok\n"
                                          "dblclick 500 400\nsave square.fwt\n"
                                          "command MnuSdragshape\ndown L 400 300\nmove 450 300\nup L 450 300\n";
    std::ofstream(root / "no.txt") << "open square.fwt\nstate no.json\nopen square.fwt\nstate again.json\n";
    const auto replay = [&root](const char* script) {
        return std::system(("XDG_STATE_HOME='" + (root / "state") + "' " + FW_CLI + " replay '" + (root / script) +
                            "'").c_str());
    };
    ASSERT_EQ(replay("script.txt"), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(root / "state/Fieldwright/recovery"),
                            std::filesystem::directory_iterator()),
              2);
    ASSERT_EQ(replay("no.txt"), 0);
    const std::string no = ReadFileText(root / "no.json");
    EXPECT_EQ(no.find("[[50, 0]"), std::string::npos) << no;
    EXPECT_EQ(ReadFileText(root / "again.json"), no) << "the copy went with the No";
}

} // namespace
} // namespace fw::test
