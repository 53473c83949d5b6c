// Undo by swap, the changed flag, and the internal copy buffer.
#pragma once

#include <vector>

#include "core/Session.h"

namespace fw {

// The live scene and selection into UndoNext, before an operation whose outcome isn't known.
void UndoPrepare(Session& s);
// UndoNext into UndoLast, when the operation did change something.
void UndoCommit(Session& s);
// withUndo: commit the undo step and allow undo. Always: the project has unsaved changes.
void MarkChanged(Session& s, bool withUndo);
// Live scene and UndoLast change places; undoing twice brings the change back.
void Undo(Session& s);

void CopyScene(const Stores& from, Stores& to);

void ClipClear(Clipboard& c);
void ClipStore(Clipboard& c, const std::vector<PointList>& points, const std::vector<ShapeRecord>& shapes,
               const std::vector<ObjectRecord>& objects, int shapeLast, int objectLast, const Limits& limits);
// Copies out of the clipboard with every point and position moved by base.
void ClipFetch(const Clipboard& c, const Point& base, std::vector<PointList>& points,
               std::vector<ShapeRecord>& shapes, std::vector<ObjectRecord>& objects);

void MnuEcopy(Session& s);
void MnuEpaste(Session& s);

} // namespace fw
