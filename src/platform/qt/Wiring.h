// Connects the main window's commands to the work of the other modules.
#pragma once

#include "core/Session.h"
#include "platform/Process.h"

namespace fw::qt {

class MainWindow;

// "Generate SCASM files..." and "Generate scenery files...".
void WireExportCommands(MainWindow& window, Session& session, Process& process);

} // namespace fw::qt
