#include "platform/qt/Wiring.h"

#include "export/Compile.h"
#include "platform/qt/MainWindow.h"

namespace fw::qt {

void WireExportCommands(MainWindow& window, Session& session, Process& process)
{
    window.connectCommand("MnuFexport", [&session] { MnuFexport(session); });
    window.connectCommand("MnuFbgl", [&session, &process] { MnuFbgl(session, process); });
}

} // namespace fw::qt
