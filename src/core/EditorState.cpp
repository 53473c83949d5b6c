#include "core/EditorState.h"

namespace fw {

void ResetEditorState(EditorState& e)
{
    e = EditorState{};
}

} // namespace fw
