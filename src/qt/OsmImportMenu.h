// "Import OpenStreetMap data..." at the end of the File menu.
#pragma once

#include "core/Session.h"

namespace fw::qt {

class MainWindow;

// Adds the item after the menu's own and wires it to the import, with a progress dialog for
// big extracts.
void AddOsmImport(MainWindow& window, Session& session);

} // namespace fw::qt
