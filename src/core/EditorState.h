// The editor's session-wide state: selection, drawing scratch, working copy, undo and clipboard.
// The operations on it live in the editor module.
#pragma once

#include <cstdint>
#include <vector>

#include "core/Records.h"
#include "core/Stores.h"

namespace fw {

struct EditorState {
    // Filled in by the editor module.
};

void ResetEditorState(EditorState& e);

} // namespace fw
