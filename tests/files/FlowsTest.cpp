#include <gtest/gtest.h>

#include <filesystem>

#include "FilesTestSupport.h"
#include "files/ConfigFile.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"
#include "files/ProjectJson.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

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
        s.programFolder = dir.folder();
        s.ui = &ui;
        StartSession(s, dir.path("Fieldwright.cfg"));
        s.view.setSWidth(800);
        s.view.setSHeight(600);
        s.view.resize();
    }

    // A project file of the sample records in the scratch folder.
    std::string SampleFile(const std::string& name)
    {
        const std::string path = dir.path(name);
        EXPECT_TRUE(WriteProjectFile(path, test::SampleProject(dir.folder()), nullptr));
        return path;
    }

    void Edit()
    {
        ShapeRecord sh;
        ResetShape(sh, kPoly);
        AppendShape(s.stores, sh, {{1, 1}, {5, 1}, {5, 5}});
        s.dirty = 1;
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
    EXPECT_EQ(s.hasName, 1);
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.projectPath, path);
    EXPECT_EQ(s.config.FWTPath, dir.folder());
    EXPECT_EQ(s.recent.getEntry(0), path);
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
}

TEST_F(Flows, AFailedOpenLeavesTheProjectIntact)
{
    Edit();
    s.project.Name = "Mine";
    const std::string before = ProjectToJson({0, s.showFlags, s.project, s.stores.PointStore,
                                              s.stores.ShapeStore, s.stores.ObjectStore});
    // The reader's messages for each damage are in ReaderTest.
    EXPECT_FALSE(LoadProject(s, test::Fixture("object_unclosed.fwt")));
    EXPECT_FALSE(LoadProject(s, dir.path("gone.fwt")));
    EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"Unable to open file! Corrupted object structure...",
                                                       "'" + dir.path("gone.fwt") + "' does not exist!"}));
    EXPECT_EQ(ui.calls.back().style, MessageStyle::Information);
    EXPECT_EQ(ProjectToJson({0, s.showFlags, s.project, s.stores.PointStore, s.stores.ShapeStore,
                             s.stores.ObjectStore}),
              before);
    EXPECT_EQ(s.dirty, 1);
    EXPECT_EQ(s.hasName, 0);
    EXPECT_EQ(s.recent.nEntries(), -1);
}

TEST_F(Flows, OpenWithoutRecordsSelectsNothingAndWithoutSettingsHidesTypes)
{
    ASSERT_TRUE(LoadProject(s, test::Fixture("later_block_wins.fwt")));
    EXPECT_EQ(s.editor.selection.SelShapeCount() + s.editor.selection.SelObjectCount(), 0);
    ASSERT_TRUE(LoadProject(s, test::Fixture("no_head_blocks.fwt")));
    EXPECT_EQ(s.showFlags.ShowPoly, 0);
    EXPECT_EQ(s.showFlags.ShowExclude, 1); // the selected exclude area's flag
    EXPECT_EQ(s.editor.selection.SelObjects(), (std::vector<std::uint16_t>{0}));
    // The first object is selected as a first shape would be: in the select state, not drag.
    EXPECT_EQ(s.editor.selection.state(), 1);
}

TEST_F(Flows, LoadReRootsBuiltInMacrosAndRebuildsTheirOutline)
{
    std::filesystem::create_directories(dir.path("API"));
    test::WriteText(dir.path("API/fwt_building1.api"), ";fwtadjustable square\r\nArea( %6 )\r\n");
    ProjectData d;
    ObjectRecord api, other;
    ResetObject(api, kApi, "C:\\Old\\");
    api.Param6() = "30";
    ResetObject(other, kApi, "");
    other.Path() = "/nowhere/custom.api";
    d.objects = {api, other};
    ASSERT_TRUE(WriteProjectFile(dir.path("m.fwt"), d, nullptr));
    ASSERT_TRUE(LoadProject(s, dir.path("m.fwt")));
    const auto& o = s.stores.ObjectStore;
    EXPECT_EQ(o[0].Path(), dir.folder() + "API/fwt_building1.api");
    EXPECT_EQ(o[0].DesignLast, 3);
    EXPECT_EQ(o[0].DesignPoints[0], (Point{-30, 30}));
    EXPECT_EQ(o[1].Path(), "/nowhere/custom.api"); // missing: path and default outline stay
    EXPECT_EQ(o[1].DesignLast, 12);
}

// Objects that share a macro each get their own outline from it, and a macro changed between two
// opens is read afresh at the second.
TEST_F(Flows, SharedMacrosGiveEachObjectItsOutlineAndAreReadAgainAtTheNextOpen)
{
    std::filesystem::create_directories(dir.path("API"));
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
    ASSERT_TRUE(WriteProjectFile(dir.path("m.fwt"), d, nullptr));

    ASSERT_TRUE(LoadProject(s, dir.path("m.fwt")));
    const auto& o = s.stores.ObjectStore;
    EXPECT_EQ(o[0].DesignPoints[0], (Point{-30, 30}));
    EXPECT_EQ(o[1].DesignPoints[0], (Point{-50, 50}));
    for (int i : {2, 3}) {
        EXPECT_EQ(o[i].DesignLast, 2);
        EXPECT_EQ(o[i].DesignPoints[2], (Point{5, -5}));
    }

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

// A picture that can't be loaded, or that loads, is LoadFlowPartsTest's; a missing one isn't tried.
TEST_F(Flows, AMissingBackgroundPictureIsDroppedUntried)
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
}

TEST_F(Flows, AskToSaveTextsAndAnswers)
{
    EXPECT_EQ(AskToSave(s), 1); // nothing changed: no question
    EXPECT_TRUE(ui.calls.empty());
    Edit();
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

    Edit();
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
    Edit();
    ui.files = {""};
    EXPECT_FALSE(MnuFsave(s)); // unnamed: the dialog, cancelled
    EXPECT_EQ(s.dirty, 1);
    ui.files = {dir.path("a.fwt")};
    EXPECT_TRUE(MnuFsave(s));
    EXPECT_EQ(Title(s), "Fieldwright - [a.fwt]");
    EXPECT_EQ(s.hasName, 1);
    EXPECT_EQ(s.dirty, 0);
    EXPECT_EQ(s.config.FWTPath, dir.folder());

    // Saved under its own name: no dialog, and the recent list stays as it is.
    s.recent.addPath("/other.fwt");
    Edit();
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
    Edit();
    ASSERT_TRUE(MnuFsave(s));
    const std::string old = test::ReadText(dir.path("keep.fwt"));
    Edit();
    std::filesystem::create_directory(dir.path("folder.fwt"));
    for (const std::string& target :
         {dir.path("no folder/x.fwt"), std::string("/proc/fw-test.fwt"), dir.path("folder.fwt")}) {
        SCOPED_TRACE(target);
        ui.calls.clear();
        ui.files = {target};
        EXPECT_FALSE(MnuFsaveas(s));
        // The message stays first; the file and the host's reason follow on a line of their own.
        ASSERT_EQ(ui.Messages().size(), 1u);
        EXPECT_EQ(ui.Messages()[0].rfind("Unable to write file to disk!\n'" + target + "': ", 0), 0u)
            << ui.Messages()[0];
        EXPECT_EQ(ui.calls.back().style, MessageStyle::Critical);
        EXPECT_EQ(s.dirty, 1);
        EXPECT_EQ(s.projectPath, dir.path("keep.fwt"));
        EXPECT_EQ(Title(s), "Fieldwright - [keep.fwt]");
        EXPECT_EQ(s.recent.getEntry(0), dir.path("keep.fwt"));
    }
    EXPECT_EQ(test::ReadText(dir.path("keep.fwt")), old);
    // Nothing but the project and the configuration was left behind.
    int files = 0;
    for (auto& e : std::filesystem::directory_iterator(dir.folder()))
        files += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 2);

    // Exit with a save that fails keeps the window open.
    ui.answers = {Answer::Yes};
    std::filesystem::remove(dir.path("keep.fwt"));
    std::filesystem::create_directory(dir.path("keep.fwt"));
    EXPECT_FALSE(ExitFlow(s, kWindowNormal, 800, 600, dir.path("Fieldwright.cfg")));
    EXPECT_EQ(s.dirty, 1);
}

TEST_F(Flows, NewResetsAndRunsTheProjectSettings)
{
    ASSERT_TRUE(LoadProject(s, SampleFile("k.fwt")));
    s.canPaste = 1;
    s.canUndo = 1;
    s.showFlags.BackImagescale = 3;
    MnuFnew(s);
    EXPECT_EQ(Title(s), "Fieldwright - [Unsaved document]");
    EXPECT_EQ(s.hasName, 0);
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

    Edit();
    ui.answers = {Answer::Cancel};
    MnuFnew(s);
    EXPECT_EQ(s.stores.ShapeCount(), 1);
}

TEST_F(Flows, RecentMenu)
{
    EXPECT_EQ(RecentMenuLabel(s, 0), "&1 - Unavailable");
    EXPECT_EQ(RecentMenuLabel(s, 3), "&4 - Unavailable");
    EXPECT_FALSE(RecentMenuEnabled(s, 0));
    const std::string a = SampleFile("a.fwt");
    const std::string b = SampleFile("b.fwt");
    s.recent.addPath(a);
    s.recent.addPath(b);
    EXPECT_EQ(RecentMenuLabel(s, 0), "&1 - b.fwt");
    EXPECT_EQ(RecentMenuLabel(s, 1), "&2 - a.fwt");
    EXPECT_EQ(RecentMenuLabel(s, 2), "&3 - Unavailable");
    EXPECT_TRUE(RecentMenuEnabled(s, 1));
    EXPECT_FALSE(MnuFrecent(s, 2));
    EXPECT_TRUE(MnuFrecent(s, 1));
    EXPECT_EQ(s.projectPath, a);
    EXPECT_EQ(RecentMenuLabel(s, 0), "&1 - a.fwt");
    EXPECT_TRUE(ui.fileRequests.empty());
}

TEST_F(Flows, ExitNotesTheWindowAndWritesTheConfiguration)
{
    Edit();
    ui.answers = {Answer::Cancel};
    EXPECT_FALSE(ExitFlow(s, kWindowNormal, 1000, 700, dir.path("Fieldwright.cfg")));
    EXPECT_EQ(s.stores.ShapeCount(), 1);
    EXPECT_EQ(s.config.WinWidth, 640);

    ui.answers = {Answer::No};
    EXPECT_TRUE(ExitFlow(s, kWindowMaximised, 1000, 700, dir.path("Fieldwright.cfg")));
    Session next;
    next.programFolder = dir.folder();
    StartSession(next, dir.path("Fieldwright.cfg"));
    EXPECT_EQ(next.config.WinStatus, 2);
    EXPECT_EQ(next.config.WinWidth, 640);
    EXPECT_EQ(next.config.WinHeight, 480);

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
    EXPECT_EQ(part.project.Name, "");
    ASSERT_EQ(part.shapes.size(), 2u);
    EXPECT_EQ(part.shapes[0].gType, kWideLine); // the order of the selection
    EXPECT_EQ(part.shapes[1].gType, kPoly);
    ASSERT_EQ(part.objects.size(), 1u);
    EXPECT_EQ(part.objects[0].oType, kNdb);

    MnuFnew(s);
    const Point target = ScreenToWorld(s.view, 10, 10);
    ui.files = {dir.path("part.fso")};
    ASSERT_TRUE(MnuFimportshape(s));
    EXPECT_EQ(ui.fileRequests.back().filter,
              "Fieldwright shapes/objects (*.fso)|*.fso|All files (*.*)|*.*");
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
    // A selection file of two flatten polygons and a polygon.
    ProjectData part;
    for (int type : {kFlatten, kPoly, kFlatten}) {
        ShapeRecord sh;
        ResetShape(sh, type);
        sh.gType = static_cast<std::uint8_t>(type);
        part.shapes.push_back(sh);
        part.points.push_back({{0, 0}, {10 * type, 0}, {10 * type, 10}});
    }
    ASSERT_TRUE(WriteProjectFile(dir.path("two.fso"), part, nullptr));
    ASSERT_TRUE(ImportSelection(s, dir.path("two.fso")));
    // The first flatten polygon goes in, the second of the file is left out with the tool's message.
    ASSERT_EQ(s.stores.ShapeCount(), 2);
    EXPECT_EQ(s.stores.ShapeStore[0].gType, kFlatten);
    EXPECT_EQ(s.stores.ShapeStore[1].gType, kPoly);
    EXPECT_EQ(s.stores.PointStore[1][1].X - s.stores.PointStore[1][0].X, 10 * kPoly);
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You already drew a flatten polygon...\n\nOnly one flatten "
                                                      "polygon can be specified for every Fieldwright project."});
    EXPECT_EQ(s.editor.selection.SelShapeCount(), 2);

    // Imported again, both flatten polygons would be a second one: the polygon alone goes in.
    ASSERT_TRUE(ImportSelection(s, dir.path("two.fso")));
    ASSERT_EQ(s.stores.ShapeCount(), 3);
    EXPECT_EQ(s.stores.ShapeStore[2].gType, kPoly);
    EXPECT_EQ(ui.Messages().size(), 2u);
    EXPECT_EQ(s.editor.selection.SelShapes(), (std::vector<std::uint16_t>{2}));

    // A file of a flatten polygon alone adds nothing.
    ProjectData alone;
    alone.shapes.push_back(part.shapes[0]);
    alone.points.push_back(part.points[0]);
    ASSERT_TRUE(WriteProjectFile(dir.path("alone.fso"), alone, nullptr));
    s.dirty = 0;
    EXPECT_FALSE(ImportSelection(s, dir.path("alone.fso")));
    EXPECT_EQ(s.stores.ShapeCount(), 3);
    EXPECT_EQ(ui.Messages().size(), 3u);
    EXPECT_EQ(s.dirty, 0);
}

TEST_F(Flows, ImportRefusals)
{
    // No records in the file.
    EXPECT_FALSE(ImportSelection(s, test::Fixture("later_block_wins.fwt")));
    EXPECT_EQ(ui.Messages().back(), "There are no shapes/objects in the file!");
    EXPECT_FALSE(ImportSelection(s, dir.path("none.fso")));
    EXPECT_EQ(ui.Messages().back(), "'" + dir.path("none.fso") + "' does not exist!");

    // 500 shapes into a project of 400: nothing, silently.
    ProjectData many;
    ShapeRecord sh;
    ResetShape(sh, kPoly);
    for (int i = 0; i < 500; ++i) {
        many.shapes.push_back(sh);
        many.points.push_back({{i, i}});
    }
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
