// The editor's state machine: tool buttons and the canvas's mouse and key events.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Session.h"

namespace fw {

enum class MouseButton { Left, Middle, Right };
// Shift state bits, as the canvas reports them.
enum : int { kShiftKey = 1, kCtrlKey = 2, kAltKey = 4 };

// A click while drawing whose world point can't be held in 16 bits: the message, and the shape
// being drawn is abandoned.
inline constexpr const char* kPointTooFarMessage = "This point lies too far from the reference point to be drawn.";

// A tool button by its key; false for an unknown key.
bool ToolClick(Session& s, const std::string& key);

// Pixel positions as the canvas gives them; they are rounded before use.
void CanvasMouseDown(Session& s, MouseButton button, int shift, double x, double y);
void CanvasMouseMove(Session& s, int shift, double x, double y);
void CanvasMouseUp(Session& s, MouseButton button, int shift, double x, double y);
void CanvasDoubleClick(Session& s);
void CanvasKeyDown(Session& s, int keyCode, int shift);

// A new shape of the type's defaults with these X, Y pairs, at the end of the stores.
void AddShape(Session& s, const std::vector<std::int32_t>& coords, int type);

// Committed points at which drawing a shape in this state ends by itself, and the least number a
// double click accepts; 0 for a state that draws nothing.
int PointLimit(int editState);
int PointMinimum(int editState);

} // namespace fw
