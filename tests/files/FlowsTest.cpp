#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>

#include "FilesTestSupport.h"
#include "files/ConfigFile.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "files/ProjectJson.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

namespace fs = std::filesystem;
using test::Edit;
using V = std::vector<std::string>;

// A Ui whose project settings dialog renames the project.
class SettingsUi : public ScriptedUi {
public:
    bool ProjectSettings(ProjectRecord& p, bool newProject) override
    {
        calls.push_back({"settings", newProject ? "new" : "edit", MessageStyle::Information});
        seenName = p.Name;
        p.Name = "Typed";
        return ok;
    }
    bool ok = true;
    std::string seenName;
};

class Flows : public ::testing::Test {
protected:
    void SetUp() override
    {
        test::StartIn(s, ui, dir);
        s.view.setSWidth(800);
        s.view.setSHeight(600);
        s.view.resize();
    }
    std::string SampleFile(const std::string& name)
    {
        EXPECT_TRUE(WriteProjectFile(dir.path(name), test::SampleProject(dir.folder()), nullptr));
        return dir.path(name);
    }
    std::string Json() const
    {
        return ProjectToJson({0, s.showFlags, s.project, s.stores.PointStore, s.stores.ShapeStore, s.stores.ObjectStore});
    }
    // The session named path and changed, as after an open and an edit.
    void Named(const std::string& path)
    {
        Edit(s);
        s.projectPath = path;
        s.hasName = 1;
    }

    test::ScratchFolder dir;
    SettingsUi ui;
    Session s;
    FlowHooks hooks;
};

TEST_F(Flows, OpenLoadsSelectsAndNamesTheProject)
{
    const std::string path = SampleFile("Kleinfeld.fwt");
    ui.files.push_back(path);
    int titles = 0;
    hooks.titleChanged = [&](Session&) { ++titles; };
    EXPECT_TRUE(MnuFopen(s, hooks));
    ASSERT_EQ(ui.fileRequests.size(), 1u);
    EXPECT_EQ(ui.fileRequests[0].filter, "Fieldwright (*.fwt)|*.fwt");
    EXPECT_EQ(ui.fileRequests[0].startFolder, dir.folder());
    EXPECT_FALSE(ui.fileRequests[0].save);
    EXPECT_EQ(Title(s), "Fieldwright - [Kleinfeld.fwt]");
    EXPECT_EQ(titles, 1);
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.projectPath, path);
    EXPECT_EQ(s.config.FWTPath, dir.folder());
    EXPECT_EQ(s.stores.ShapeCount(), 7);
    EXPECT_EQ(s.stores.ObjectCount(), 7);
    EXPECT_EQ(s.project.Name, "Kleinfeld");
    // The first shape wins over the first object; both their show flags are on.
    EXPECT_EQ(s.editor.selection.SelShapes(), (std::vector<std::uint16_t>{0}));
    EXPECT_TRUE(s.editor.selection.SelObjects().empty());
    EXPECT_EQ(s.editor.selection.state(), 1);
    EXPECT_EQ(s.showFlags.ShowPoly, 1);
    EXPECT_EQ(s.showFlags.ShowRunway, 1);
    EXPECT_FALSE(ui.waitCursor);
    // Opened again: one recent entry.
    ui.files.push_back(path);
    EXPECT_TRUE(MnuFopen(s, hooks));
    EXPECT_EQ(s.recent.nEntries(), 0);
    EXPECT_EQ(s.recent.getEntry(0), path);

    // Without records nothing is selected; without settings the types are hidden but the
    // selected object's, and the first object is selected as a first shape would be.
    ASSERT_TRUE(LoadProject(s, test::Fixture("later_block_wins.fwt")));
    EXPECT_EQ(s.editor.selection.SelShapeCount() + s.editor.selection.SelObjectCount(), 0);
    ASSERT_TRUE(LoadProject(s, test::Fixture("no_head_blocks.fwt")));
    EXPECT_EQ(s.showFlags.ShowPoly, 0);
    EXPECT_EQ(s.showFlags.ShowExclude, 1);
    EXPECT_EQ(s.editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(s.editor.selection.state(), 1);
}

TEST_F(Flows, AFailedOpenLeavesTheProjectIntact)
{
    Edit(s);
    s.project.Name = "Mine";
    const std::string before = Json();
    EXPECT_FALSE(LoadProject(s, test::Fixture("object_unclosed.fwt")));
    EXPECT_FALSE(LoadProject(s, dir.path("gone.fwt")));
    EXPECT_EQ(ui.Messages(), (V{"Unable to open file! Corrupted object structure...",
                                "'" + dir.path("gone.fwt") + "' does not exist!"}));
    EXPECT_EQ(ui.calls.back().style, MessageStyle::Information);
    EXPECT_EQ(Json(), before);
    EXPECT_EQ(s.dirty, 1);
    EXPECT_EQ(s.hasName, 0);
    EXPECT_EQ(s.recent.nEntries(), -1);
}

// Built-in macros are found in this program folder; objects that share a macro each get their own
// outline, a missing macro leaves path and outline, and a changed macro is read again at the next open.
TEST_F(Flows, LoadReRootsMacrosAndRebuildsEachOutline)
{
    fs::create_directories(dir.path("API"));
    test::WriteText(dir.path("API/fwt_building1.api"), ";fwtadjustable square\r\nArea( %6 )\r\n");
    const std::string own = dir.path("own.api");
    test::WriteText(own, ";designshape -5,5,5,5,5,-5\r\n");
    ProjectData d;
    for (const char* size : {"30", "50"}) {
        ObjectRecord api;
        ResetObject(api, kApi, "C:\\Old\\");
        api.Param6() = size;
        d.objects.push_back(api);
    }
    ObjectRecord mine;
    ResetObject(mine, kApi, "");
    mine.Path() = own;
    d.objects.push_back(mine);
    d.objects.push_back(mine);
    mine.Path() = "/nowhere/custom.api";
    d.objects.push_back(mine);
    ASSERT_TRUE(WriteProjectFile(dir.path("m.fwt"), d, nullptr));

    ASSERT_TRUE(LoadProject(s, dir.path("m.fwt")));
    const auto& o = s.stores.ObjectStore;
    EXPECT_EQ(o[0].Path(), dir.folder() + "API/fwt_building1.api");
    EXPECT_EQ(o[0].DesignLast, 3);
    EXPECT_EQ(o[0].DesignPoints[0], (Point{-30, 30}));
    EXPECT_EQ(o[1].DesignPoints[0], (Point{-50, 50}));
    for (int i : {2, 3}) {
        EXPECT_EQ(o[i].DesignLast, 2);
        EXPECT_EQ(o[i].DesignPoints[2], (Point{5, -5}));
    }
    EXPECT_EQ(o[4].Path(), "/nowhere/custom.api");
    EXPECT_EQ(o[4].DesignLast, 12);

    test::WriteText(dir.path("API/fwt_building1.api"), ";designshape 1,1,2,2,3,3\r\n");
    test::WriteText(own, ";designshape -7,7,7,7,7,-7,-7,-7\r\n");
    ASSERT_TRUE(LoadProject(s, dir.path("m.fwt")));
    EXPECT_EQ(o[0].DesignLast, 2);
    EXPECT_EQ(o[1].DesignPoints[2], (Point{3, 3}));
    for (int i : {2, 3}) {
        EXPECT_EQ(o[i].DesignLast, 3);
        EXPECT_EQ(o[i].DesignPoints[3], (Point{-7, -7}));
    }
}

// The background picture: a missing one is dropped untried; one that can't be loaded is dropped
// from the whole new project; a part that throws leaves the session as it was before the open.
TEST_F(Flows, TheBackgroundPictureOfALoad)
{
    ProjectData d;
    ResetShowFlags(d.showFlags);
    d.showFlags.ShowBackPicture = 1;
    d.showFlags.BackImagePath = dir.path("missing.bmp");
    ASSERT_TRUE(WriteProjectFile(dir.path("b.fwt"), d, nullptr));
    int loads = 0;
    hooks.loadBackImage = [&](Session&, const std::string&) { return ++loads, true; };
    ASSERT_TRUE(LoadProject(s, dir.path("b.fwt"), hooks));
    EXPECT_EQ(loads, 0);
    EXPECT_EQ(s.showFlags.BackImagePath, "");
    EXPECT_EQ(s.showFlags.ShowBackPicture, 0);

    // The session before: an older project with its own picture, changed since its save.
    ProjectData old = test::SampleProject(dir.folder());
    old.showFlags.BackImagePath.clear();
    ASSERT_TRUE(WriteProjectFile(dir.path("old.fwt"), old, nullptr));
    ASSERT_TRUE(LoadProject(s, dir.path("old.fwt")));
    s.bitmap.loaded = true;
    s.bitmap.width = 7;
    s.stores.ShapeStore[0].gComment = "edited";
    s.dirty = 1;
    const std::string before = Json();
    const std::string picture = dir.path("chart.bmp");
    test::WriteText(picture, "BM");
    ProjectData next = test::SampleProject(dir.folder());
    next.shapes.resize(1);
    next.points.resize(1);
    next.objects.clear();
    next.showFlags.BackImagePath = picture;
    next.showFlags.ShowBackPicture = 1;
    ASSERT_TRUE(WriteProjectFile(dir.path("next.fwt"), next, nullptr));
    V titles;
    hooks.titleChanged = [&](Session& session) { titles.push_back(Title(session)); };

    hooks.loadBackImage = [](Session& session, const std::string&) -> bool {
        session.bitmap.width = 123; // half done
        throw std::runtime_error("stream failure");
    };
    EXPECT_THROW(LoadProject(s, dir.path("next.fwt"), hooks), std::runtime_error);
    EXPECT_EQ(s.projectPath, dir.path("old.fwt"));
    EXPECT_EQ(Title(s), "Fieldwright - [old.fwt]");
    EXPECT_TRUE(titles.empty());
    EXPECT_EQ(s.dirty, 1);
    EXPECT_EQ(Json(), before);
    EXPECT_TRUE(s.bitmap.loaded);
    EXPECT_EQ(s.bitmap.width, 7);
    EXPECT_EQ(s.recent.getEntry(0), dir.path("old.fwt"));

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
    EXPECT_EQ(titles, V{"Fieldwright - [next.fwt]"});
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.stores.ShapeStore.size(), 1u);
    EXPECT_TRUE(s.showFlags.BackImagePath.empty());
    EXPECT_EQ(s.showFlags.ShowBackPicture, 0);
    EXPECT_FALSE(s.bitmap.loaded);
    EXPECT_EQ(s.bitmap.width, 0);

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
}

TEST_F(Flows, AskToSaveTextsAndAnswers)
{
    EXPECT_EQ(AskToSave(s), 1); // nothing changed: no question
    EXPECT_TRUE(ui.calls.empty());
    Edit(s);
    ui.answers = {Answer::Cancel, Answer::No};
    EXPECT_EQ(AskToSave(s), 0);
    EXPECT_EQ(AskToSave(s), 1);
    EXPECT_EQ(ui.calls[0].text, "Save New project.fwt?");

    // Yes without a name: the save dialog; cancelling it cancels.
    ui.answers = {Answer::Yes, Answer::Yes};
    ui.files = {"", dir.path("first")};
    EXPECT_EQ(AskToSave(s), 0);
    EXPECT_EQ(AskToSave(s), 1);
    EXPECT_EQ(s.projectPath, dir.path("first.fwt"));
    EXPECT_EQ(ui.fileRequests.back().defaultName, "New project");
    EXPECT_TRUE(ui.fileRequests.back().save);
    EXPECT_EQ(s.dirty, 0);

    Edit(s);
    ui.calls.clear();
    ui.answers = {Answer::Yes};
    EXPECT_EQ(AskToSave(s), 1);
    EXPECT_EQ(ui.calls[0].text, "Save changes to first.fwt?");
    EXPECT_EQ(s.dirty, 0);
    ProjectData back;
    ASSERT_TRUE(ReadProjectFile(dir.path("first.fwt"), back, nullptr));
    EXPECT_EQ(back.shapes.size(), 2u);
}

TEST_F(Flows, SaveAndSaveAs)
{
    Edit(s);
    ui.files = {""};
    EXPECT_FALSE(MnuFsave(s)); // unnamed: the dialog, cancelled
    EXPECT_EQ(s.dirty, 1);
    ui.files = {dir.path("a.fwt")};
    EXPECT_TRUE(MnuFsave(s));
    EXPECT_EQ(Title(s), "Fieldwright - [a.fwt]");
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.config.FWTPath, dir.folder());

    // Saved under its own name: no dialog, and the recent list stays as it is.
    s.recent.addPath("/other.fwt");
    Edit(s);
    const std::size_t dialogs = ui.fileRequests.size();
    EXPECT_TRUE(MnuFsave(s));
    EXPECT_EQ(ui.fileRequests.size(), dialogs);
    EXPECT_EQ(s.recent.getEntry(0), "/other.fwt");
    EXPECT_EQ(s.recent.getEntry(1), dir.path("a.fwt"));

    ui.files = {dir.path("b.fwt")};
    EXPECT_TRUE(MnuFsaveas(s));
    EXPECT_EQ(ui.fileRequests.back().defaultName, "a");
    EXPECT_EQ(s.projectPath, dir.path("b.fwt"));
    EXPECT_EQ(s.recent.getEntry(0), dir.path("b.fwt"));
    EXPECT_EQ(test::ReadText(dir.path("a.fwt")), test::ReadText(dir.path("b.fwt")));
}

TEST_F(Flows, AFailedSaveLosesNothing)
{
    ui.files = {dir.path("keep.fwt")};
    Edit(s);
    ASSERT_TRUE(MnuFsave(s));
    const std::string old = test::ReadText(dir.path("keep.fwt"));
    Edit(s);
    fs::create_directory(dir.path("folder.fwt"));
    for (const std::string& target : {dir.path("no folder/x.fwt"), std::string("/proc/fw-test.fwt"), dir.path("folder.fwt")}) {
        SCOPED_TRACE(target);
        ui.calls.clear();
        ui.files = {target};
        EXPECT_FALSE(MnuFsaveas(s));
        // The message stays first; the file and the host's reason follow on a line of their own.
        ASSERT_EQ(ui.Messages().size(), 1u);
        EXPECT_EQ(ui.Messages()[0].rfind("Unable to write file to disk!\n'" + target + "': ", 0), 0u) << ui.Messages()[0];
        EXPECT_EQ(ui.calls.back().style, MessageStyle::Critical);
        EXPECT_EQ(s.dirty, 1);
        EXPECT_EQ(s.projectPath, dir.path("keep.fwt"));
        EXPECT_EQ(Title(s), "Fieldwright - [keep.fwt]");
        EXPECT_EQ(s.recent.getEntry(0), dir.path("keep.fwt"));
    }
    EXPECT_EQ(test::ReadText(dir.path("keep.fwt")), old);
    // Nothing but the project and the configuration was left behind.
    int files = 0;
    for (auto& e : fs::directory_iterator(dir.folder()))
        files += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 2);

    // Exit with a save that fails keeps the window open.
    ui.answers = {Answer::Yes};
    fs::remove(dir.path("keep.fwt"));
    fs::create_directory(dir.path("keep.fwt"));
    EXPECT_FALSE(ExitFlow(s, kWindowNormal, 800, 600, dir.path("Fieldwright.cfg")));
    EXPECT_EQ(s.dirty, 1);
}

// Saving through a symbolic link writes the link's target with its permissions and keeps the link;
// chains and dangling links reach the file they name, a loop is no file.
TEST_F(Flows, SaveFollowsLinksAndKeepsThem)
{
    fs::create_directory(dir.path("real"));
    const std::string target = dir.path("real/airfield.fwt");
    test::WriteText(target, "old");
    ::chmod(target.c_str(), 0640);
    const std::string link = dir.path("airfield.fwt");
    fs::create_symlink("real/airfield.fwt", link); // relative, as links often are
    Named(link);
    ASSERT_TRUE(MnuFsave(s));
    EXPECT_TRUE(ui.Messages().empty());
    EXPECT_EQ(fs::read_symlink(link), "real/airfield.fwt");
    ProjectData back;
    ASSERT_TRUE(ReadProjectFile(target, back, nullptr));
    EXPECT_EQ(back.shapes.size(), 1u);
    EXPECT_EQ(fs::status(target).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.projectPath, link);
    int entries = 0; // no temporary file is left beside the target
    for (const auto& e : fs::directory_iterator(dir.path("real")))
        entries += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(entries, 1);

    const std::string fresh = dir.path("real/new.fwt"); // not there yet
    fs::create_symlink(fresh, dir.path("first.fwt"));
    fs::create_symlink(dir.path("first.fwt"), dir.path("second.fwt"));
    Named(dir.path("second.fwt"));
    ASSERT_TRUE(MnuFsave(s));
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(dir.path("first.fwt"))));
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(dir.path("second.fwt"))));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(fresh)));

    fs::create_symlink(dir.path("loop2.fwt"), dir.path("loop1.fwt"));
    fs::create_symlink(dir.path("loop1.fwt"), dir.path("loop2.fwt"));
    EXPECT_FALSE(WriteProjectFile(dir.path("loop1.fwt"), ProjectData{}, &ui));
    EXPECT_EQ(ui.Messages(), V{"Unable to write file to disk!\n'" + dir.path("loop1.fwt") +
                               "': Too many levels of symbolic links"});
}

TEST_F(Flows, AReadOnlyFileIsRefusedWithItsReason)
{
    const std::string path = dir.path("locked.fwt");
    test::WriteText(path, "kept");
    ::chmod(path.c_str(), 0444);
    Named(path);
    EXPECT_FALSE(MnuFsave(s));
    EXPECT_EQ(ui.Messages(), V{"Unable to write file to disk!\n'" + path + "': Permission denied"});
    EXPECT_EQ(ui.calls.back().style, MessageStyle::Critical);
    EXPECT_EQ(s.dirty, 1);

    // Through a link too; the link and its read-only target stay as they were.
    fs::create_symlink(path, dir.path("via.fwt"));
    ui.calls.clear();
    EXPECT_FALSE(WriteProjectFile(dir.path("via.fwt"), ProjectData{}, &ui));
    EXPECT_EQ(ui.Messages(), V{"Unable to write file to disk!\n'" + dir.path("via.fwt") + "': Permission denied"});
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(dir.path("via.fwt"))));

    ui.files = {dir.path("free.fwt")}; // save as another name works
    EXPECT_TRUE(MnuFsaveas(s));
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(test::ReadText(path), "kept");
}

TEST_F(Flows, NewResetsAndRunsTheProjectSettings)
{
    ASSERT_TRUE(LoadProject(s, SampleFile("k.fwt")));
    s.canPaste = 1;
    s.canUndo = 1;
    s.showFlags.BackImagescale = 3;
    MnuFnew(s);
    EXPECT_EQ(Title(s), "Fieldwright - [Unsaved document]");
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.canUndo, 0);
    EXPECT_EQ(s.canPaste, 1);
    EXPECT_EQ(s.stores.ShapeCount(), 0);
    EXPECT_EQ(s.recent.nEntries(), 0); // kept
    EXPECT_EQ(s.showFlags.BackImagescale, 3);
    EXPECT_EQ(ui.seenName, "New");
    EXPECT_EQ(ui.calls.back().text, "new");
    EXPECT_EQ(s.project.Name, "Typed");

    ui.ok = false; // cancelled: the fresh record stays
    MnuFnew(s);
    EXPECT_EQ(s.project.Name, "New");

    Edit(s);
    ui.answers = {Answer::Cancel};
    MnuFnew(s);
    EXPECT_EQ(s.stores.ShapeCount(), 1);
}

TEST_F(Flows, RecentMenu)
{
    EXPECT_EQ(RecentMenuLabel(s, 3), "&4 - Unavailable");
    s.recent.addPath(SampleFile("a.fwt"));
    s.recent.addPath(SampleFile("b.fwt"));
    EXPECT_EQ(RecentMenuLabel(s, 0), "&1 - b.fwt");
    EXPECT_EQ(RecentMenuLabel(s, 1), "&2 - a.fwt");
    EXPECT_EQ(RecentMenuLabel(s, 2), "&3 - Unavailable");
    EXPECT_TRUE(RecentMenuEnabled(s, 1));
    EXPECT_FALSE(RecentMenuEnabled(s, 2));
    EXPECT_FALSE(MnuFrecent(s, 2));
    EXPECT_TRUE(MnuFrecent(s, 1));
    EXPECT_EQ(s.projectPath, dir.path("a.fwt"));
    EXPECT_EQ(RecentMenuLabel(s, 0), "&1 - a.fwt");
    EXPECT_TRUE(ui.fileRequests.empty());
}

TEST_F(Flows, ExitNotesTheWindowAndWritesTheConfiguration)
{
    Edit(s);
    ui.answers = {Answer::Cancel};
    EXPECT_FALSE(ExitFlow(s, kWindowNormal, 1000, 700, dir.path("Fieldwright.cfg")));
    EXPECT_EQ(s.stores.ShapeCount(), 1);
    EXPECT_EQ(s.config.WinWidth, 640);

    ui.answers = {Answer::No};
    EXPECT_TRUE(ExitFlow(s, kWindowMaximised, 1000, 700, dir.path("Fieldwright.cfg")));
    Session next;
    test::StartIn(next, ui, dir);
    EXPECT_EQ(next.config.WinStatus, 2);
    EXPECT_EQ(next.config.WinWidth, 640); // a maximised window keeps its normal size

    ConfigRecord c;
    NoteWindowOnExit(c, kWindowMinimised, 300, 200);
    EXPECT_EQ(c.WinStatus, 0);
    EXPECT_EQ(c.WinWidth, 300);
    NoteWindowOnExit(c, kWindowNormal, 1024, 768);
    EXPECT_EQ(c.WinHeight, 768);
}

TEST_F(Flows, SelectionSaveAndImport)
{
    ASSERT_TRUE(LoadProject(s, SampleFile("k.fwt")));
    s.editor.selection.reset();
    s.editor.selection.addEntry(2, 0, 0, 0, 0, 0);
    s.editor.selection.addEntry(0, 0, 0, 0, 0, 0);
    s.editor.selection.addEntry(3, 1, 0, 0, 0, 0);
    ui.files = {dir.path("part")};
    ASSERT_TRUE(MnuFsaveselection(s));
    EXPECT_EQ(ui.fileRequests[0].filter, "Fieldwright shapes/objects (*.fso)|*.fso");
    EXPECT_EQ(ui.fileRequests[0].defaultName, "Selection");
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.projectPath, dir.path("k.fwt"));
    // The head holds the version only: no settings, no project record.
    const std::string text = test::ReadText(dir.path("part.fso"));
    EXPECT_EQ(text.find("Settings("), std::string::npos);
    EXPECT_EQ(text.find("Project("), std::string::npos);
    EXPECT_NE(text.find("Version(\r\n 1\r\n)"), std::string::npos);
    ProjectData part;
    ASSERT_TRUE(ReadProjectFile(dir.path("part.fso"), part, nullptr));
    ASSERT_EQ(part.shapes.size(), 2u);
    EXPECT_EQ(part.shapes[0].gType, kWideLine); // the order of the selection
    EXPECT_EQ(part.shapes[1].gType, kPoly);
    ASSERT_EQ(part.objects.size(), 1u);
    EXPECT_EQ(part.objects[0].oType, kNdb);

    MnuFnew(s);
    const Point target = ScreenToWorld(s.view, 10, 10);
    ui.files = {dir.path("part.fso")};
    ASSERT_TRUE(MnuFimportshape(s));
    EXPECT_EQ(ui.fileRequests.back().filter, "Fieldwright shapes/objects (*.fso)|*.fso|All files (*.*)|*.*");
    ASSERT_EQ(s.stores.ShapeCount(), 2);
    ASSERT_EQ(s.stores.ObjectCount(), 1);
    // The common box's upper left corner (-7000, -20) lands on the target.
    EXPECT_EQ(s.stores.PointStore[0][0], (Point{0 + 7000 + target.X, 0 + 20 + target.Y}));
    EXPECT_EQ(s.stores.ObjectStore[0].PosX, target.X);
    EXPECT_EQ(s.stores.ShapeStore[1].gLimits[0], 7000 + target.X);
    EXPECT_EQ(s.editor.selection.state(), 3);
    EXPECT_EQ(s.editor.selection.SelShapeCount(), 2);
    EXPECT_EQ(s.editor.selection.SelObjectCount(), 1);
    EXPECT_EQ(s.dirty, 1);
}

TEST_F(Flows, ImportLeavesOutASecondFlattenPolygon)
{
    ProjectData part; // two flatten polygons and a polygon
    for (int type : {kFlatten, kPoly, kFlatten}) {
        ShapeRecord sh;
        ResetShape(sh, type);
        part.shapes.push_back(sh);
        part.points.push_back({{0, 0}, {10 * type, 0}, {10 * type, 10}});
    }
    ASSERT_TRUE(WriteProjectFile(dir.path("two.fso"), part, nullptr));
    ASSERT_TRUE(ImportSelection(s, dir.path("two.fso")));
    ASSERT_EQ(s.stores.ShapeCount(), 2);
    EXPECT_EQ(s.stores.ShapeStore[0].gType, kFlatten);
    EXPECT_EQ(s.stores.ShapeStore[1].gType, kPoly);
    EXPECT_EQ(s.stores.PointStore[1][1].X - s.stores.PointStore[1][0].X, 10 * kPoly);
    EXPECT_EQ(ui.Messages(), V{"You already drew a flatten polygon...\n\nOnly one flatten "
                               "polygon can be specified for every Fieldwright project."});
    EXPECT_EQ(s.editor.selection.SelShapeCount(), 2);

    // Imported again, both flatten polygons would be a second one: the polygon alone goes in.
    ASSERT_TRUE(ImportSelection(s, dir.path("two.fso")));
    ASSERT_EQ(s.stores.ShapeCount(), 3);
    EXPECT_EQ(s.stores.ShapeStore[2].gType, kPoly);
    EXPECT_EQ(ui.Messages().size(), 2u);
    EXPECT_EQ(s.editor.selection.SelShapes(), (std::vector<std::uint16_t>{2}));

    // A file of a flatten polygon alone adds nothing.
    part.shapes.resize(1);
    part.points.resize(1);
    ASSERT_TRUE(WriteProjectFile(dir.path("alone.fso"), part, nullptr));
    s.dirty = 0;
    EXPECT_FALSE(ImportSelection(s, dir.path("alone.fso")));
    EXPECT_EQ(s.stores.ShapeCount(), 3);
    EXPECT_EQ(ui.Messages().size(), 3u);
    EXPECT_EQ(s.dirty, 0);
}

TEST_F(Flows, ImportRefusals)
{
    EXPECT_FALSE(ImportSelection(s, test::Fixture("later_block_wins.fwt")));
    EXPECT_EQ(ui.Messages().back(), "There are no shapes/objects in the file!");
    EXPECT_FALSE(ImportSelection(s, dir.path("none.fso")));
    EXPECT_EQ(ui.Messages().back(), "'" + dir.path("none.fso") + "' does not exist!");

    // 500 shapes into a project of 400: nothing, silently.
    ProjectData many;
    ShapeRecord sh;
    ResetShape(sh, kPoly);
    many.shapes.assign(500, sh);
    many.points.assign(500, {{1, 2}});
    ASSERT_TRUE(WriteProjectFile(dir.path("many.fso"), many, nullptr));
    for (int i = 0; i < 400; ++i)
        AppendShape(s.stores, sh, {{1, 1}});
    s.dirty = 0;
    ui.calls.clear();
    EXPECT_FALSE(ImportSelection(s, dir.path("many.fso")));
    EXPECT_TRUE(ui.calls.empty());
    EXPECT_EQ(s.stores.ShapeCount(), 400);
    EXPECT_EQ(s.dirty, 0);
}

} // namespace
} // namespace fw
