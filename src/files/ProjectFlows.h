// The session flows of the File menu: New, Open, the recent files, Save, Save as, Exit, and the
// selection files. Questions go through s.ui and the selection is s.editor.selection; what needs
// the editor's undo or the window (painting, the tool bar, the background picture) goes through
// the hooks.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/Session.h"
#include "files/ProjectFile.h"
#include "files/Recovery.h"

namespace fw {

struct FlowHooks {
    // Loads the background picture into s.bitmap; false when it can't be loaded. Without this
    // hook the picture's path and flag are left as the file has them.
    std::function<bool(Session&, const std::string& path)> loadBackImage;
    // Before and after an undoable change (import). Without markChanged, dirty is set to 1.
    std::function<void(Session&)> undoPrepare;
    std::function<void(Session&)> markChanged;
    // The main window's title changed (Title(s) gives it).
    std::function<void(Session&)> titleChanged;
    // Mouse mode 0, the tool bar on its selection button, menus and tool bar refreshed.
    std::function<void(Session&)> resetTool;
    // Rebuild the OpenGL list when active, and paint the plan again.
    std::function<void(Session&)> redraw;
    // The same after a project was opened, when the OpenGL view also loads its textures; redraw
    // without it.
    std::function<void(Session&)> redrawOpened;
};

// Window states as the window system reports them.
enum : int { kWindowNormal = 0, kWindowMinimised = 1, kWindowMaximised = 2 };

constexpr const char* kProjectFilter = "Fieldwright (*.fwt)|*.fwt";
constexpr const char* kSelectionFilter = "Fieldwright shapes/objects (*.fso)|*.fso";
constexpr const char* kSelectionOpenFilter = "Fieldwright shapes/objects (*.fso)|*.fso|All files (*.*)|*.*";

// Steps 4 to 6 of the start: reset, clear the stores, read the configuration (created when
// missing), take EnableOpenGL into openGLActive. s.programFolder and s.ui must be set.
void StartSession(Session& s, const std::string& configPath);
// A failed OpenGL start: the message, EnableOpenGL 0, the configuration written. The caller ends
// the program.
void OpenGLStartFailed(Session& s, const std::string& configPath);

// 1: go on; 0: the user cancelled (or the save that was asked for failed).
int AskToSave(Session& s, const FlowHooks& hooks = {});

// The session takes over a project read from path: stores, show flags and the project record.
// No picture or macro is loaded, and the recent list and the folders are left alone.
void TakeProjectData(Session& s, ProjectData&& data, const std::string& path);
// The load flow's selection: the first shape, or else the first object.
void SelectFirstItem(Session& s);

// The load flow; false when the file is missing or can't be read (the session is as it was).
// A load that reads another file than the project's own: a recovery copy, restored as the
// project of path (or as the unnamed project), changed, and not added to the recent list when
// unnamed.
struct LoadSource {
    std::string file;
    bool unnamed = false;
};
bool LoadProject(Session& s, const std::string& path, const FlowHooks& hooks = {}, const LoadSource* source = nullptr);

// After the project of path was opened: its recovery copy, when it holds changes the file
// doesn't, is offered by a question; Yes restores it (the project then differs from its file and
// is changed), No drops it.
void OfferRecoveryOnOpen(Session& s, const std::string& path, const FlowHooks& hooks = {});
// A recovery copy loaded as its project (its path, or unnamed), changed.
bool RestoreRecoveryCopy(Session& s, const RecoveryCopy& copy, const FlowHooks& hooks = {});
// After the main window shows: the copy of an unnamed project and copies of projects whose
// files are gone, each offered by a question; the first taken back is loaded, refused ones go.
void OfferRecoveryAtStart(Session& s, const FlowHooks& hooks = {});

// MnuFnew. The caller ignores it while a drawing operation is in progress.
void MnuFnew(Session& s, const FlowHooks& hooks = {});
// MnuFopen: ask to save, the open dialog, the load flow. True when a project was loaded.
bool MnuFopen(Session& s, const FlowHooks& hooks = {});
// MnuFrecent1..4 (entry 0..3).
bool MnuFrecent(Session& s, int entry, const FlowHooks& hooks = {});
// "&1 - name.fwt", or "&1 - Unavailable" for a position without an entry (shown disabled).
std::string RecentMenuLabel(const Session& s, int entry);
bool RecentMenuEnabled(const Session& s, int entry);

// MnuFsave and MnuFsaveas; true when the project was written.
bool MnuFsave(Session& s, const FlowHooks& hooks = {});
bool MnuFsaveas(Session& s, const FlowHooks& hooks = {});
// The writing step: on success mark saved, take the path, add it to the recent list when it is
// a new one, the title, FWTPath. On failure nothing changes.
bool WriteProject(Session& s, const std::string& path, const FlowHooks& hooks = {});

// Exit: ask to save (false: the user cancelled, keep the window), note the window, write the
// configuration. The caller releases the renderer and ends the program.
bool ExitFlow(Session& s, int windowState, int width, int height, const std::string& configPath,
              const FlowHooks& hooks = {});
// Minimised is stored as 0; maximised stores 640 by 480.
void NoteWindowOnExit(ConfigRecord& c, int windowState, int width, int height);

// MnuFsaveselection: the records of s.editor.selection, in its order. True when written.
bool MnuFsaveselection(Session& s);
// The same on given shape and object indices.
bool SaveSelectionRecords(Session& s, const std::vector<int>& shapes, const std::vector<int>& objects);
// MnuFimportshape: the file's records placed at the view's pixel (10,10). True when imported.
bool MnuFimportshape(Session& s, const FlowHooks& hooks = {});
// The import without its file dialog.
bool ImportSelection(Session& s, const std::string& path, const FlowHooks& hooks = {});

} // namespace fw
