#include "core/Session.h"

namespace fw {

namespace {
void ResetCommon(Session& s)
{
    s.view.reset();
    ResetEditorState(s.editor);
    ResetShowFlags(s.showFlags);
    ResetProject(s.project);
    s.projectPath = kUnnamedProject;
    s.canUndo = 0;
    s.dirty = 0;
    s.hasName = 0;
}
} // namespace

void ResetAtStart(Session& s)
{
    ResetCommon(s);
    ResetEditorState(s.editor, true);
    s.recent.reset();
    s.canPaste = 0;
}

void ResetForNewProject(Session& s)
{
    ResetCommon(s);
    s.bitmap = CBitmapState{};
}

void ResetForLoadedProject(Session& s, const std::string& path)
{
    ResetForNewProject(s);
    s.projectPath = path;
    s.hasName = 1;
}

void MarkSaved(Session& s)
{
    s.dirty = 0;
    s.hasName = 1;
}

std::string Title(const Session& s)
{
    if (!s.hasName)
        return "Fieldwright - [Unsaved document]";
    return "Fieldwright - [" + GetNameFromPath(s.projectPath, true) + "]";
}

} // namespace fw
