#include "files/ProjectFlows.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/Helpers.h"
#include "files/ConfigFile.h"
#include "files/Recovery.h"
#include "files/MacroFile.h"
#include "files/ProjectFile.h"
#include "ports/Ui.h"

namespace fw {

namespace {

void Call(const std::function<void(Session&)>& f, Session& s)
{
    if (f)
        f(s);
}

void Tell(Session& s, const std::string& text, MessageStyle style)
{
    if (s.ui)
        s.ui->Message(text, style);
}

class WaitCursor {
public:
    explicit WaitCursor(Ui* ui) : ui_(ui)
    {
        if (ui_)
            ui_->SetWaitCursor(true);
    }
    ~WaitCursor()
    {
        if (ui_)
            ui_->SetWaitCursor(false);
    }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    Ui* ui_;
};

// A name typed without extension gets the dialog's.
std::string WithExtension(const std::string& path, const std::string& extension)
{
    if (GetNameFromPath(path, true).find('.') != std::string::npos)
        return path;
    return path + "." + extension;
}

bool AskProjectName(Session& s, std::string& path)
{
    if (!s.ui)
        return false;
    FileDialogRequest r;
    r.filter = kProjectFilter;
    r.startFolder = s.config.FWTPath;
    r.defaultName = GetNameFromPath(s.projectPath, false);
    r.save = true;
    std::string chosen;
    if (!s.ui->ChooseFile(r, chosen) || chosen.empty())
        return false;
    path = WithExtension(chosen, "fwt");
    return true;
}

bool SaveWithWait(Session& s, const std::string& path, const FlowHooks& hooks)
{
    WaitCursor wait(s.ui);
    return WriteProject(s, path, hooks);
}

} // namespace

void OfferRecoveryOnOpen(Session& s, const std::string& path, const FlowHooks& hooks)
{
    const std::optional<RecoveryCopy> copy = FindRecoveryCopy(s, path);
    if (!copy)
        return;
    const std::string fileText = RecoveryBaseline(s);
    if (!RecoveryDiffers(*copy, fileText)) {
        DropRecoveryCopy(*copy);
        return;
    }
    if (!s.ui || s.ui->AskYesNo(RestoreQuestion(*copy), kRestoreTitle) != Answer::Yes) {
        DropRecoveryCopy(*copy);
        return;
    }
    RestoreRecoveryCopy(s, *copy, hooks);
    NoteRecoveryBaseline(s, fileText);
    s.recovery.written = ProjectTextOf(s);
}

namespace {

// Loads under the wait cursor; whether it worked or not, the view and tool start afresh.
bool OpenWithWait(Session& s, const std::string& path, const FlowHooks& hooks)
{
    bool loaded;
    {
        WaitCursor wait(s.ui);
        loaded = LoadProject(s, path, hooks);
    }
    if (loaded)
        OfferRecoveryOnOpen(s, path, hooks);
    s.view.setMMode(0);
    Call(hooks.resetTool, s);
    return loaded;
}

} // namespace

void StartSession(Session& s, const std::string& configPath)
{
    ResetAtStart(s);
    ClearStores(s.stores);
    ReadConfigFile(s, configPath);
    s.openGLActive = s.config.EnableOpenGL;
}

void OpenGLStartFailed(Session& s, const std::string& configPath)
{
    Tell(s,
         "Fieldwright was unable to generate an OpenGL rendering context.\n\n"
         "The application will shut down and be reset to normal rendering mode. Please\n"
         "check your video card's OpenGL drivers if you want OpenGL rendering...",
         MessageStyle::Critical);
    s.config.EnableOpenGL = 0;
    WriteConfigFile(s, configPath);
}

int AskToSave(Session& s, const FlowHooks& hooks)
{
    // What wasn't marked (and so isn't asked about) is kept before the project goes.
    KeepRecovery(s);
    if (!s.dirty)
        return 1;
    if (!s.ui)
        return 0;
    const std::string name = GetNameFromPath(s.projectPath, true);
    const std::string text = s.hasName ? "Save changes to " + name + "?" : "Save " + name + "?";
    switch (s.ui->AskYesNoCancel(text, "Fieldwright")) {
    case Answer::Yes: {
        std::string path = s.projectPath;
        if (!s.hasName && !AskProjectName(s, path))
            return 0;
        // A save that failed keeps the session open, so that nothing is lost.
        return SaveWithWait(s, path, hooks) ? 1 : 0;
    }
    case Answer::No:
        // The changes are refused: their recovery copy goes with them.
        DropRecovery(s);
        return 1;
    default:
        return 0;
    }
}

namespace {

// The hook loads into s.bitmap; here it loads beside the session's picture, which stays as it is
// whatever the hook does.
bool LoadPictureAside(Session& s, const FlowHooks& hooks, const std::string& path, CBitmapState& picture)
{
    CBitmapState kept = std::exchange(s.bitmap, CBitmapState{});
    bool loaded = false;
    try {
        loaded = hooks.loadBackImage(s, path);
    } catch (...) {
        s.bitmap = std::move(kept);
        throw;
    }
    picture = std::exchange(s.bitmap, std::move(kept));
    return loaded;
}

} // namespace

void TakeProjectData(Session& s, ProjectData&& data, const std::string& path)
{
    ResetForLoadedProject(s, path);
    ClearStores(s.stores);
    s.stores.PointStore = std::move(data.points);
    s.stores.ShapeStore = std::move(data.shapes);
    s.stores.ObjectStore = std::move(data.objects);
    s.showFlags = std::move(data.showFlags);
    s.project = std::move(data.project);
}

// One record selected: the first shape, or else the first object; in either case in the select
// state, so that a click on another item selects it (design.md). Its kind is shown.
void SelectFirstItem(Session& s)
{
    CSelection& sel = s.editor.selection;
    sel.reset();
    if (!s.stores.ObjectStore.empty()) {
        const ObjectRecord& o = s.stores.ObjectStore[0];
        sel.addEntry(0, 1, o.PosX, o.PosX, o.PosY, o.PosY);
        sel.setState(1);
        if (auto* flag = ShowFlagOf(s.showFlags, o.oType))
            *flag = 1;
    }
    if (!s.stores.ShapeStore.empty()) {
        const ShapeRecord& shape = s.stores.ShapeStore[0];
        sel.reset();
        sel.addEntry(0, 0, shape.gLimits[0], shape.gLimits[1], shape.gLimits[2], shape.gLimits[3]);
        sel.setState(1);
        if (auto* flag = ShowFlagOf(s.showFlags, shape.gType))
            *flag = 1;
    }
}

namespace {

// The records of a file that must be there; a missing one is told by the name the user knows.
bool ReadExistingProject(Session& s, const std::string& shown, const std::string& file, ProjectData& data)
{
    if (!FileExists(file)) {
        Tell(s, DoesNotExistMessage(shown), MessageStyle::Information);
        return false;
    }
    return ReadProjectFile(file, data, s.ui, s.programFolder);
}

} // namespace

bool LoadProject(Session& s, const std::string& path, const FlowHooks& hooks, const LoadSource* source)
{
    const bool unnamed = source != nullptr && source->unnamed;
    const std::string& file = source != nullptr ? source->file : path;
    ProjectData data;
    if (!ReadExistingProject(s, path, file, data))
        return false;

    // Every part is made ready before the session changes. A part that can't be loaded is dropped
    // (a macro keeps its path and the default outline, a picture goes with its path and flag);
    // anything that throws on the way leaves the session as it was before.
    MacroOutlines outlines(s.config, s.programFolder, s.decimalSeparator);
    for (ObjectRecord& o : data.objects)
        if (o.oType == kApi)
            outlines.Apply(o);
    CBitmapState picture;
    if (!data.showFlags.BackImagePath.empty() && hooks.loadBackImage) {
        const std::string& image = data.showFlags.BackImagePath;
        if (!FileExists(image) || !LoadPictureAside(s, hooks, image, picture)) {
            picture = CBitmapState{};
            data.showFlags.BackImagePath.clear();
            data.showFlags.ShowBackPicture = 0;
        }
    }

    TakeProjectData(s, std::move(data), path);
    s.bitmap = std::move(picture);
    SelectFirstItem(s);

    if (unnamed) {
        s.projectPath = kUnnamedProject;
        s.hasName = 0;
    } else {
        s.recent.addPath(path, s.ui);
        s.config.FWTPath = GetFolderFromPath(path);
    }
    if (source != nullptr)
        s.dirty = 1;
    else
        NoteRecoveryBaseline(s);
    Call(hooks.titleChanged, s);
    Call(hooks.redrawOpened ? hooks.redrawOpened : hooks.redraw, s);
    return true;
}

bool RestoreRecoveryCopy(Session& s, const RecoveryCopy& copy, const FlowHooks& hooks)
{
    LoadSource source{copy.copyPath, copy.key.empty()};
    return LoadProject(s, copy.key.empty() ? std::string(kUnnamedProject) : copy.key, hooks, &source);
}

void OfferRecoveryAtStart(Session& s, const FlowHooks& hooks)
{
    for (const RecoveryCopy& copy : RecoveryCopies(s)) {
        if (!copy.key.empty() && FileExists(copy.key))
            continue; // offered when that project is opened
        if (!s.ui || s.ui->AskYesNo(RestoreQuestion(copy), kRestoreTitle) != Answer::Yes) {
            DropRecoveryCopy(copy);
            continue;
        }
        if (RestoreRecoveryCopy(s, copy, hooks)) {
            // Its file is gone (or it never had one): every change is kept until it is saved.
            NoteRecoveryBaseline(s, std::string());
            s.recovery.written = ProjectTextOf(s);
            s.view.setMMode(0);
            Call(hooks.resetTool, s);
            return;
        }
    }
}

void MnuFnew(Session& s, const FlowHooks& hooks)
{
    if (!AskToSave(s, hooks))
        return;
    ResetForNewProject(s);
    ClearStores(s.stores);
    s.editor.selection.reset();
    NoteRecoveryBaseline(s);
    Call(hooks.titleChanged, s);
    s.view.setMMode(0);
    Call(hooks.resetTool, s);
    Call(hooks.redraw, s);
    if (s.ui) {
        ProjectRecord copy = s.project;
        if (s.ui->ProjectSettings(copy, true))
            s.project = std::move(copy);
    }
}

bool MnuFopen(Session& s, const FlowHooks& hooks)
{
    if (!AskToSave(s, hooks) || !s.ui)
        return false;
    FileDialogRequest r;
    r.filter = kProjectFilter;
    r.startFolder = s.config.FWTPath;
    std::string path;
    if (!s.ui->ChooseFile(r, path) || path.empty())
        return false;
    return OpenWithWait(s, path, hooks);
}

bool MnuFrecent(Session& s, int entry, const FlowHooks& hooks)
{
    if (entry < 0 || entry > s.recent.nEntries())
        return false;
    const std::string path = s.recent.getEntry(entry);
    if (!AskToSave(s, hooks))
        return false;
    return OpenWithWait(s, path, hooks);
}

std::string RecentMenuLabel(const Session& s, int entry)
{
    const std::string head = "&" + std::to_string(entry + 1) + " - ";
    if (!RecentMenuEnabled(s, entry))
        return head + "Unavailable";
    return head + GetNameFromPath(s.recent.getEntry(entry), true);
}

bool RecentMenuEnabled(const Session& s, int entry)
{
    return entry >= 0 && entry <= s.recent.nEntries();
}

bool WriteProject(Session& s, const std::string& path, const FlowHooks& hooks)
{
    if (!WriteProjectFile(path, ProjectViewOf(s), s.ui))
        return false;
    const std::string before = s.projectPath;
    // The work is in a file now: the copy kept under the old name goes.
    DropRecovery(s);
    MarkSaved(s);
    s.projectPath = path;
    if (path != before)
        s.recent.addPath(path, s.ui);
    Call(hooks.titleChanged, s);
    s.config.FWTPath = GetFolderFromPath(path);
    DropRecovery(s);
    NoteRecoveryBaseline(s);
    return true;
}

bool MnuFsave(Session& s, const FlowHooks& hooks)
{
    std::string path = s.projectPath;
    if (!s.hasName && !AskProjectName(s, path))
        return false;
    return SaveWithWait(s, path, hooks);
}

bool MnuFsaveas(Session& s, const FlowHooks& hooks)
{
    std::string path;
    if (!AskProjectName(s, path))
        return false;
    return SaveWithWait(s, path, hooks);
}

void NoteWindowOnExit(ConfigRecord& c, int windowState, int width, int height)
{
    c.WinStatus = windowState == kWindowMinimised ? 0 : windowState;
    if (windowState == kWindowMaximised) {
        c.WinWidth = 640;
        c.WinHeight = 480;
    } else {
        c.WinWidth = width;
        c.WinHeight = height;
    }
}

bool ExitFlow(Session& s, int windowState, int width, int height, const std::string& configPath,
              const FlowHooks& hooks)
{
    if (!AskToSave(s, hooks))
        return false;
    NoteWindowOnExit(s.config, windowState, width, height);
    WriteConfigFile(s, configPath);
    return true;
}

bool MnuFsaveselection(Session& s)
{
    const CSelection& sel = s.editor.selection;
    std::vector<int> shapes(sel.SelShapes().begin(), sel.SelShapes().end());
    std::vector<int> objects(sel.SelObjects().begin(), sel.SelObjects().end());
    return SaveSelectionRecords(s, shapes, objects);
}

bool SaveSelectionRecords(Session& s, const std::vector<int>& shapes, const std::vector<int>& objects)
{
    if ((shapes.empty() && objects.empty()) || !s.ui)
        return false;
    FileDialogRequest r;
    r.filter = kSelectionFilter;
    r.startFolder = s.config.ImportPath;
    r.defaultName = "Selection";
    r.save = true;
    std::string path;
    if (!s.ui->ChooseFile(r, path) || path.empty())
        return false;
    path = WithExtension(path, "fso");
    WaitCursor wait(s.ui);
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapeRecords;
    std::vector<ObjectRecord> objectRecords;
    for (int i : shapes) {
        if (i < 0 || i >= static_cast<int>(s.stores.ShapeStore.size()))
            continue;
        shapeRecords.push_back(s.stores.ShapeStore[i]);
        points.push_back(s.stores.PointStore[i]);
    }
    for (int i : objects)
        if (i >= 0 && i < static_cast<int>(s.stores.ObjectStore.size()))
            objectRecords.push_back(s.stores.ObjectStore[i]);
    return WriteSelectionFile(path, points, shapeRecords, objectRecords, s.ui);
}

bool ImportSelection(Session& s, const std::string& path, const FlowHooks& hooks)
{
    const Point target = ScreenToWorld(s.view, 10, 10);
    s.editor.selection.reset();
    ProjectData data;
    if (!ReadExistingProject(s, path, path, data))
        return false;
    if (data.shapes.empty() && data.objects.empty()) {
        Tell(s, "There are no shapes/objects in the file!", MessageStyle::Information);
        return false;
    }
    // A project holds at most one flatten polygon: one that would be the second is left out, as
    // if the file didn't hold it.
    const bool leftOut = LeaveOutSecondFlatten(s.stores, data.points, data.shapes);
    // The common box of what was read: shapes by their limits, objects by their position.
    std::int64_t left = std::numeric_limits<std::int64_t>::max();
    std::int64_t upper = std::numeric_limits<std::int64_t>::max();
    for (const auto& sh : data.shapes) {
        left = std::min<std::int64_t>(left, sh.gLimits[0]);
        upper = std::min<std::int64_t>(upper, sh.gLimits[2]);
    }
    for (const auto& o : data.objects) {
        left = std::min<std::int64_t>(left, o.PosX);
        upper = std::min<std::int64_t>(upper, o.PosY);
    }
    if (s.stores.ShapeStore.size() + data.shapes.size() > static_cast<std::size_t>(kMaxShapes) ||
        s.stores.ObjectStore.size() + data.objects.size() > static_cast<std::size_t>(kMaxObjects))
        return false;
    if (leftOut)
        Tell(s, kOneFlattenMessage, MessageStyle::Information);
    if (data.shapes.empty() && data.objects.empty())
        return false;

    const std::int64_t dx = static_cast<std::int64_t>(target.X) - left;
    const std::int64_t dy = static_cast<std::int64_t>(target.Y) - upper;
    auto fits = [](std::int64_t v) { return v >= INT32_MIN && v <= INT32_MAX; };
    bool inRange = true;
    for (const auto& pts : data.points)
        for (const auto& p : pts)
            inRange = inRange && fits(p.X + dx) && fits(p.Y + dy);
    for (const auto& o : data.objects)
        inRange = inRange && fits(o.PosX + dx) && fits(o.PosY + dy);
    if (!inRange) {
        Tell(s, "Unable to import the file! Its coordinates are out of range.", MessageStyle::Critical);
        return false;
    }

    Call(hooks.undoPrepare, s);
    CSelection& sel = s.editor.selection;
    for (std::size_t i = 0; i < data.shapes.size(); ++i) {
        PointList moved = data.points[i];
        for (auto& p : moved)
            p = {static_cast<std::int32_t>(p.X + dx), static_cast<std::int32_t>(p.Y + dy)};
        AppendShape(s.stores, data.shapes[i], moved);
        const auto& l = s.stores.ShapeStore.back().gLimits;
        sel.addEntry(s.stores.ShapeCount() - 1, 0, l[0], l[1], l[2], l[3]);
        if (auto* flag = ShowFlagOf(s.showFlags, data.shapes[i].gType))
            *flag = 1;
    }
    for (auto& o : data.objects) {
        o.PosX = static_cast<std::int32_t>(o.PosX + dx);
        o.PosY = static_cast<std::int32_t>(o.PosY + dy);
        if (o.oType == kApi)
            RebuildOutline(o, s.decimalSeparator);
        sel.addEntry(static_cast<int>(s.stores.ObjectStore.size()), 1, o.PosX, o.PosX, o.PosY, o.PosY);
        if (auto* flag = ShowFlagOf(s.showFlags, o.oType))
            *flag = 1;
        s.stores.ObjectStore.push_back(std::move(o));
    }
    sel.setState(3);
    if (hooks.markChanged)
        hooks.markChanged(s);
    else
        s.dirty = 1;
    Call(hooks.redraw, s);
    return true;
}

bool MnuFimportshape(Session& s, const FlowHooks& hooks)
{
    if (!s.ui)
        return false;
    FileDialogRequest r;
    r.filter = kSelectionOpenFilter;
    r.startFolder = s.config.ImportPath;
    std::string path;
    if (!s.ui->ChooseFile(r, path) || path.empty())
        return false;
    return ImportSelection(s, path, hooks);
}

} // namespace fw
