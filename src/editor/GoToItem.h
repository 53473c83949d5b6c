// Going to an item named by its store and index, as the problems list does.
#pragma once

#include "core/Session.h"

namespace fw {

// Selects the shape (or object) alone, as a click on it in the canvas would, shows its type and
// centres the view on it. Does nothing while a tool is drawing or for an index outside its store.
// True when the item was selected.
bool GoToItem(Session& s, bool isShape, int index);

} // namespace fw
