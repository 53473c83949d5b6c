#include <gtest/gtest.h>

#include <filesystem>
#include <algorithm>
#include <optional>
#include <utility>

#include "FilesTestSupport.h"
#include "files/ProjectFlows.h"
#include "files/Recovery.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

namespace fs = std::filesystem;

// A session of the program with its own recovery folder, started afresh as a new process would.
struct Program {
    Program(const test::ScratchFolder& dir, const std::string& recovery)
    {
        test::StartIn(s, ui, dir);
        StartRecovery(s, recovery);
    }
    long Questions() const
    {
        return std::count_if(ui.calls.begin(), ui.calls.end(), [](const auto& c) { return c.kind == "yesno"; });
    }
    ScriptedUi ui;
    Session s;
};

class Recovery : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(WriteProjectFile(project, test::SampleProject(dir.folder()), nullptr));
        fileText = test::ReadText(project);
    }
    std::string RecoveryFolder() const { return dir.path("state") + "/"; }
    std::size_t Copies() const
    {
        std::error_code ec;
        return fs::exists(RecoveryFolder(), ec) ? std::size_t(std::distance(fs::directory_iterator(RecoveryFolder()), {})) : 0;
    }
    // Opens the project, moves its first shape sideways (a change the save prompt doesn't see) and
    // lets the keeper look, as after the event.
    void MoveSideways(Program& p)
    {
        ASSERT_TRUE(LoadProject(p.s, project));
        for (Point& pt : p.s.stores.PointStore[0])
            pt.X += 40;
        KeepRecovery(p.s);
        EXPECT_EQ(p.s.dirty, 0);
    }

    test::ScratchFolder dir;
    std::string project = dir.path("field.fwt");
    std::string fileText;
};

TEST_F(Recovery, AnUnmarkedDragComesBackOnYesAndTheFileOnNo)
{
    Point moved;
    {
        Program first(dir, RecoveryFolder());
        MoveSideways(first);
        moved = first.s.stores.PointStore[0][0];
        EXPECT_EQ(Copies(), 2u) << "a copy and its note";
        // Ending asks nothing: the drag didn't mark the project.
        EXPECT_TRUE(ExitFlow(first.s, kWindowNormal, 640, 480, dir.path("Fieldwright.cfg"), {}));
        EXPECT_EQ(first.Questions(), 0);
    }
    {
        Program second(dir, RecoveryFolder());
        second.ui.answers.push_back(Answer::Yes);
        ASSERT_TRUE(MnuFrecent(second.s, 0, {}));
        ASSERT_EQ(second.Questions(), 1);
        EXPECT_NE(second.ui.calls.back().text.find("field.fwt"), std::string::npos);
        EXPECT_EQ(second.s.stores.PointStore[0][0], moved);
        EXPECT_EQ(second.s.projectPath, project);
        EXPECT_EQ(second.s.hasName, 1);
        EXPECT_EQ(second.s.dirty, 1) << "the next save writes it";
        EXPECT_EQ(test::ReadText(project), fileText) << "the file is untouched until saved";
        EXPECT_EQ(second.s.recent.getEntry(0), project);
    }
    {
        Program third(dir, RecoveryFolder());
        third.ui.answers.push_back(Answer::No);
        ASSERT_TRUE(LoadProject(third.s, project));
        KeepRecovery(third.s);
        EXPECT_EQ(Copies(), 2u) << "an earlier session's copy waits for its question";
        ASSERT_TRUE(MnuFrecent(third.s, 0, {}));
        EXPECT_EQ(third.Questions(), 1);
        EXPECT_NE(third.s.stores.PointStore[0][0], moved);
        EXPECT_EQ(third.s.dirty, 0);
        EXPECT_EQ(Copies(), 0u);
        ASSERT_TRUE(MnuFrecent(third.s, 0, {}));
        EXPECT_EQ(third.Questions(), 1) << "a later open asks nothing";
    }
}

TEST_F(Recovery, SavingOrRefusingTheChangeLeavesNoCopy)
{
    Program p(dir, RecoveryFolder());
    MoveSideways(p);
    ASSERT_EQ(Copies(), 2u);
    ASSERT_TRUE(MnuFsave(p.s, {}));
    EXPECT_EQ(Copies(), 0u) << "saved to its path";
    KeepRecovery(p.s);
    EXPECT_EQ(Copies(), 0u) << "the saved project is the file";

    p.s.stores.PointStore[0][0].Y += 8;
    p.s.dirty = 1;
    KeepRecovery(p.s);
    ASSERT_EQ(Copies(), 2u);
    p.ui.answers.push_back(Answer::No);
    MnuFnew(p.s, {});
    EXPECT_EQ(Copies(), 0u) << "No at the save prompt";
}

// The keeper skips the text only when the records are as it last saw them; every change the save
// prompt doesn't see must still be kept, and undoing it must drop the copy again.
TEST_F(Recovery, EveryUnmarkedChangeAfterAnOpenIsKeptAndItsUndoDropsTheCopy)
{
    Program p(dir, RecoveryFolder());
    Session& s = p.s;
    ASSERT_TRUE(LoadProject(s, project));
    ASSERT_GE(s.stores.ShapeCount(), 2);
    ASSERT_GE(s.stores.ObjectCount(), 2);
    KeepRecovery(s);
    EXPECT_EQ(Copies(), 0u) << "nothing changed since the open";
    // Each change undoes itself when made again.
    const auto keptThenDropped = [&](const char* what, const auto& change) {
        change();
        KeepRecovery(s);
        ASSERT_EQ(Copies(), 2u) << what;
        const std::optional<RecoveryCopy> copy = FindRecoveryCopy(s, project);
        ASSERT_TRUE(copy.has_value()) << what;
        EXPECT_EQ(test::ReadText(copy->copyPath), ProjectTextOf(s)) << what;
        KeepRecovery(s);
        EXPECT_EQ(Copies(), 2u) << what << ", looked at again";
        change();
        KeepRecovery(s);
        EXPECT_EQ(Copies(), 0u) << what << ", undone";
        EXPECT_EQ(s.dirty, 0) << what;
    };
    keptThenDropped("a sideways drag", [&] { s.stores.PointStore[1][2].X ^= 64; });
    keptThenDropped("the picture moved", [&] { s.showFlags.BackImageTop ^= 16; });
    keptThenDropped("the picture scaled", [&] {
        double& scale = s.showFlags.BackImagescale;
        scale = 7.5 - scale;
    });
    keptThenDropped("shapes reordered", [&] {
        std::swap(s.stores.ShapeStore[0], s.stores.ShapeStore[1]);
        std::swap(s.stores.PointStore[0], s.stores.PointStore[1]);
    });
    keptThenDropped("objects reordered",
                    [&] { std::swap(s.stores.ObjectStore[0], s.stores.ObjectStore.back()); });
    keptThenDropped("a runway turned", [&] {
        double& rotation = s.stores.ObjectStore[0].Rotation;
        rotation = 90 - rotation;
    });
    keptThenDropped("a comment", [&] {
        std::string& c = s.stores.ShapeStore[0].gComment;
        if (!c.empty() && c.back() == '!')
            c.pop_back();
        else
            c += '!';
    });
}

TEST_F(Recovery, AtStartTheUnnamedProjectAndOneWhoseFileIsGoneAreOffered)
{
    {
        Program p(dir, RecoveryFolder());
        test::Edit(p.s);
        KeepRecovery(p.s);
        EXPECT_EQ(Copies(), 2u);
    }
    {
        Program p(dir, RecoveryFolder());
        p.ui.answers.push_back(Answer::Yes);
        OfferRecoveryAtStart(p.s, {});
        ASSERT_EQ(p.Questions(), 1);
        EXPECT_NE(p.ui.calls.back().text.find("an unsaved project"), std::string::npos);
        EXPECT_EQ(p.s.stores.ShapeCount(), 1);
        EXPECT_EQ(p.s.hasName, 0) << "a restored unnamed project stays unnamed";
        EXPECT_EQ(p.s.projectPath, kUnnamedProject);
        EXPECT_EQ(p.s.dirty, 1);
        EXPECT_EQ(p.s.recent.nEntries(), -1) << "nothing added to the recent list";
        // Saved under a name: its copy goes.
        p.ui.files.push_back(dir.path("named.fwt"));
        ASSERT_TRUE(MnuFsave(p.s, {}));
        EXPECT_EQ(Copies(), 0u);
    }
    {
        Program p(dir, RecoveryFolder());
        MoveSideways(p);
        fs::remove(project);
    }
    {
        Program p(dir, RecoveryFolder());
        p.ui.answers.push_back(Answer::Yes);
        OfferRecoveryAtStart(p.s, {});
        ASSERT_EQ(p.Questions(), 1);
        EXPECT_EQ(p.s.projectPath, project);
        EXPECT_EQ(p.s.dirty, 1);
        ASSERT_TRUE(MnuFsave(p.s, {}));
        EXPECT_TRUE(fs::exists(project));
        EXPECT_EQ(Copies(), 0u);
    }
}

TEST_F(Recovery, AFolderThatCantBeWrittenTurnsTheKeeperOffWithOneMessage)
{
    test::WriteText(dir.path("blocked"), "a file where the folder should be");
    Program p(dir, dir.path("blocked") + "/recovery");
    EXPECT_FALSE(RecoveryOn(p.s));
    ASSERT_EQ(p.ui.Messages().size(), 1u);
    MoveSideways(p);
    KeepRecovery(p.s);
    EXPECT_EQ(p.ui.Messages().size(), 1u);

    // Old copies are dropped when the keeper starts.
    {
        Program q(dir, RecoveryFolder());
        MoveSideways(q);
    }
    for (const auto& e : fs::directory_iterator(RecoveryFolder()))
        fs::last_write_time(e.path(), fs::file_time_type::clock::now() - std::chrono::hours(24 * 31));
    Program later(dir, RecoveryFolder());
    EXPECT_EQ(Copies(), 0u);
}

} // namespace
} // namespace fw
