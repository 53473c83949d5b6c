// Arrange mode and the order of shapes in the store.
#pragma once

#include "core/Session.h"

namespace fw {

void BringToFront(Session& s);
void SendToBack(Session& s);

// The tool buttons mLayer and mEdit, after the common first steps of a tool click.
void ToolArrangeMode(Session& s);
void ToolEditMode(Session& s);

} // namespace fw
