// Connects the main window's commands to the work of the other modules.
#pragma once

#include <functional>
#include <string>

#include "core/Session.h"
#include "files/ProjectFlows.h"
#include "ports/Process.h"

namespace fw::qt {

class MainWindow;

// What the File menu's flows need from the window: title, tool strip, painting, the image.
FlowHooks WindowFlowHooks(MainWindow& window, Session& session);

// New, Open, the recent files, Save, Save as, the selection files, and Exit with the
// configuration written to configPath; endProgram runs once the window has closed.
void WireFileCommands(MainWindow& window, Session& session, const std::string& configPath,
                      std::function<void()> endProgram);

// "Preferences...", "Project settings..." and the unit converter.
void WireSettingsCommands(MainWindow& window, Session& session);

// "Generate SCASM files..." and "Generate scenery files...".
void WireExportCommands(MainWindow& window, Session& session, Process& process);

// "&Load background image..." and "Remove background image...".
void WireImageCommands(MainWindow& window, Session& session);
// The recovery keeper: what the user did within a second is looked at once, and after the main
// window shows, copies left by an earlier session are offered.
void WireRecovery(MainWindow& window, Session& session);

} // namespace fw::qt
