// Small pieces every editor operation shares: the Ui of a session, painting, pointers.
#pragma once

#include <cstdint>

#include "core/Numbers.h"
#include "core/Session.h"
#include "ports/Ui.h"

namespace fw {

// The session's Ui, or one that answers every question as a closed dialog would.
Ui& UiOf(Session& s);

// PaintFrame through the port.
void PaintFrame(Session& s);
// Rebuilds the OpenGL display list when that view is on.
void RebuildGL(Session& s, bool full = false);

// Canvas pointer by its number in the platform's set (0, 2, 6, 7, 8, 9, 15, 99 with a cursor).
void SetCanvasPointer(Session& s, int code, int cursor = 0);
// The number of a pointer, and its cursor resource for 99 (else 0).
int PointerCode(Pointer p);
int PointerCursor(Pointer p);

// Integer sum that can't overflow: clamped to 32 bits.
std::int32_t Add32(std::int64_t a, std::int64_t b);

} // namespace fw
