// Saving through a symbolic link writes the link's target and keeps the link; a
// read-only project file is refused with the system's message first and the reason after it.
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

#include "FilesTestSupport.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

namespace fs = std::filesystem;

class SaveTarget : public ::testing::Test {
protected:
    void SetUp() override
    {
        s.programFolder = dir.folder();
        s.ui = &ui;
        StartSession(s, dir.path("Fieldwright.cfg"));
        fs::create_directory(dir.path("real"));
    }

    // A changed project named path, as after an open.
    void Named(const std::string& path)
    {
        ShapeRecord sh;
        ResetShape(sh, kPoly);
        AppendShape(s.stores, sh, {{1, 1}, {5, 1}, {5, 5}});
        s.projectPath = path;
        s.hasName = 1;
        s.dirty = 1;
    }

    bool IsLink(const std::string& path) { return fs::is_symlink(fs::symlink_status(path)); }

    test::ScratchFolder dir;
    ScriptedUi ui;
    Session s;
};

TEST_F(SaveTarget, ALinkIsFollowedAndKept)
{
    const std::string target = dir.path("real/airfield.fwt");
    test::WriteText(target, "old");
    ::chmod(target.c_str(), 0640);
    const std::string link = dir.path("airfield.fwt");
    fs::create_symlink("real/airfield.fwt", link); // relative, as links often are
    Named(link);
    ASSERT_TRUE(MnuFsave(s));
    EXPECT_TRUE(ui.Messages().empty());
    EXPECT_TRUE(IsLink(link));
    EXPECT_EQ(fs::read_symlink(link), "real/airfield.fwt");
    ProjectData back;
    ASSERT_TRUE(ReadProjectFile(target, back, nullptr));
    EXPECT_EQ(back.shapes.size(), 1u);
    EXPECT_EQ(fs::status(target).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.projectPath, link);
    // No temporary file is left beside the link or the target.
    int entries = 0;
    for (const auto& e : fs::directory_iterator(dir.path("real")))
        entries += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(entries, 1);
}

TEST_F(SaveTarget, ChainsAndDanglingLinksReachTheFileTheyName)
{
    const std::string target = dir.path("real/new.fwt"); // not there yet
    fs::create_symlink(target, dir.path("first.fwt"));
    fs::create_symlink(dir.path("first.fwt"), dir.path("second.fwt"));
    Named(dir.path("second.fwt"));
    ASSERT_TRUE(MnuFsave(s));
    EXPECT_TRUE(IsLink(dir.path("first.fwt")));
    EXPECT_TRUE(IsLink(dir.path("second.fwt")));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));

    // A loop of links is no file to write.
    fs::create_symlink(dir.path("loop2.fwt"), dir.path("loop1.fwt"));
    fs::create_symlink(dir.path("loop1.fwt"), dir.path("loop2.fwt"));
    EXPECT_FALSE(WriteProjectFile(dir.path("loop1.fwt"), ProjectData{}, &ui));
    ASSERT_EQ(ui.Messages().size(), 1u);
    EXPECT_EQ(ui.Messages()[0], "Unable to write file to disk!\n'" + dir.path("loop1.fwt") +
                                    "': Too many levels of symbolic links");
}

TEST_F(SaveTarget, AReadOnlyFileIsRefusedWithItsReason)
{
    const std::string path = dir.path("locked.fwt");
    test::WriteText(path, "kept");
    ::chmod(path.c_str(), 0444);
    Named(path);
    EXPECT_FALSE(MnuFsave(s));
    ASSERT_EQ(ui.Messages().size(), 1u);
    EXPECT_EQ(ui.Messages()[0], "Unable to write file to disk!\n'" + path + "': Permission denied");
    EXPECT_EQ(ui.calls.back().style, MessageStyle::Critical);
    EXPECT_EQ(test::ReadText(path), "kept");
    EXPECT_EQ(s.dirty, 1);

    // Through a link too; the link and its read-only target stay as they were.
    fs::create_symlink(path, dir.path("via.fwt"));
    ui.calls.clear();
    EXPECT_FALSE(WriteProjectFile(dir.path("via.fwt"), ProjectData{}, &ui));
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"Unable to write file to disk!\n'" + dir.path("via.fwt") +
                                                      "': Permission denied"});
    EXPECT_TRUE(IsLink(dir.path("via.fwt")));
    EXPECT_EQ(test::ReadText(path), "kept");

    // Save as another name works, and the read-only file is still untouched.
    ui.calls.clear();
    ui.files = {dir.path("free.fwt")};
    EXPECT_TRUE(MnuFsaveas(s));
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(test::ReadText(path), "kept");
}

} // namespace
} // namespace fw
