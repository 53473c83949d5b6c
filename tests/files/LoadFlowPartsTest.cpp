// A load whose part fails leaves the session as it was before the open, or
// wholly the new project with the part dropped as the load flow has it.
#include <gtest/gtest.h>

#include <stdexcept>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

class LoadParts : public ::testing::Test {
protected:
    void SetUp() override
    {
        s.programFolder = dir.folder();
        s.ui = &ui;
        StartSession(s, dir.path("Fieldwright.cfg"));
        hooks.titleChanged = [this](Session& session) { titles.push_back(Title(session)); };
        picture = dir.path("chart.bmp");
        test::WriteText(picture, "BM");

        // The session before: an older project with its own picture, changed since its save.
        ProjectData old = test::SampleProject(dir.folder());
        old.showFlags.BackImagePath.clear();
        ASSERT_TRUE(WriteProjectFile(dir.path("old.fwt"), old, nullptr));
        ASSERT_TRUE(LoadProject(s, dir.path("old.fwt")));
        s.bitmap.loaded = true;
        s.bitmap.width = 7;
        s.bitmap.height = 9;
        s.stores.ShapeStore[0].gComment = "edited";
        s.dirty = 1;
        titles.clear();

        ProjectData next = test::SampleProject(dir.folder());
        next.shapes.resize(1);
        next.points.resize(1);
        next.objects.clear();
        next.showFlags.BackImagePath = picture;
        next.showFlags.ShowBackPicture = 1;
        ASSERT_TRUE(WriteProjectFile(dir.path("next.fwt"), next, nullptr));
    }

    test::ScratchFolder dir;
    ScriptedUi ui;
    Session s;
    FlowHooks hooks;
    std::vector<std::string> titles;
    std::string picture;
};

TEST_F(LoadParts, APartThatThrowsLeavesTheSessionAsItWas)
{
    const std::size_t shapes = s.stores.ShapeStore.size();
    const std::size_t objects = s.stores.ObjectStore.size();
    hooks.loadBackImage = [](Session& session, const std::string&) -> bool {
        session.bitmap.width = 123; // half done
        throw std::runtime_error("stream failure");
    };
    EXPECT_THROW(LoadProject(s, dir.path("next.fwt"), hooks), std::runtime_error);
    EXPECT_EQ(s.projectPath, dir.path("old.fwt"));
    EXPECT_EQ(Title(s), "Fieldwright - [old.fwt]");
    EXPECT_TRUE(titles.empty());
    EXPECT_EQ(s.dirty, 1);
    ASSERT_EQ(s.stores.ShapeStore.size(), shapes);
    EXPECT_EQ(s.stores.ObjectStore.size(), objects);
    EXPECT_EQ(s.stores.ShapeStore[0].gComment, "edited");
    EXPECT_TRUE(s.showFlags.BackImagePath.empty());
    EXPECT_TRUE(s.bitmap.loaded);
    EXPECT_EQ(s.bitmap.width, 7);
    EXPECT_EQ(s.recent.getEntry(0), dir.path("old.fwt"));
}

TEST_F(LoadParts, APictureThatCantBeLoadedIsDroppedFromTheWholeNewProject)
{
    int calls = 0;
    hooks.loadBackImage = [&](Session& session, const std::string& path) {
        ++calls;
        // The hook works beside the session's picture: it sees none, and what it leaves is dropped.
        const bool clean = !session.bitmap.loaded && path == picture;
        session.bitmap.width = 55;
        return !clean;
    };
    ASSERT_TRUE(LoadProject(s, dir.path("next.fwt"), hooks));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(s.projectPath, dir.path("next.fwt"));
    EXPECT_EQ(titles, std::vector<std::string>{"Fieldwright - [next.fwt]"});
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.stores.ShapeStore.size(), 1u);
    EXPECT_TRUE(s.showFlags.BackImagePath.empty());
    EXPECT_EQ(s.showFlags.ShowBackPicture, 0);
    EXPECT_FALSE(s.bitmap.loaded);
    EXPECT_EQ(s.bitmap.width, 0);
}

TEST_F(LoadParts, ALoadedPictureComesWithTheNewProject)
{
    hooks.loadBackImage = [](Session& session, const std::string&) {
        session.bitmap.loaded = true;
        session.bitmap.width = 64;
        return true;
    };
    ASSERT_TRUE(LoadProject(s, dir.path("next.fwt"), hooks));
    EXPECT_EQ(s.showFlags.BackImagePath, picture);
    EXPECT_EQ(s.showFlags.ShowBackPicture, 1);
    EXPECT_TRUE(s.bitmap.loaded);
    EXPECT_EQ(s.bitmap.width, 64);
    EXPECT_EQ(Title(s), "Fieldwright - [next.fwt]");
}

} // namespace
} // namespace fw
