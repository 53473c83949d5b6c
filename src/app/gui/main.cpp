// The desktop program: start, splash, main window, exit.
#include <clocale>
#include <memory>

#include <QApplication>
#include <QLocale>

#include "core/Session.h"
#include "files/ConfigFile.h"
#include "files/ProjectFlows.h"
#include "files/Recovery.h"
#include "ports/Host.h"
#include "posix/PosixProcess.h"
#include "qt/FormConverter.h"
#include "qt/MainWindow.h"
#include "qt/ProblemsPanel.h"
#include "qt/OsmImportMenu.h"
#include "qt/QtText.h"
#include "qt/QtUi.h"
#include "qt/Startup.h"
#include "qt/Wiring.h"

int main(int argc, char** argv)
{
    // Arguments are not read: a project is opened from within the program only.
    QApplication app(argc, argv);
    // Number text written by the C library stays the same in every locale.
    std::setlocale(LC_NUMERIC, "C");
    app.setApplicationName("Fieldwright");
    app.setOrganizationName("Fieldwright");
    app.setQuitOnLastWindowClosed(false);

    fw::Session session;
    fw::qt::QtUi ui;
    fw::PosixProcess process;
    session.ui = &ui;
    ui.setSession(&session);

    const std::optional<char> separator = fw::qt::SystemDecimalSeparator(QLocale::system(), ui);
    if (!separator)
        return 1;
    session.decimalSeparator = *separator;
    session.programFolder =
        fw::ProgramFolderFromEnvironment(fw::qt::PathFromQt(QCoreApplication::applicationDirPath()));
    session.homePage = fw::qt::HomePage();

    const std::string configPath = fw::ConfigFilePath(session.programFolder);
    fw::StartSession(session, configPath);
    fw::StartRecovery(session, fw::RecoveryFolderFromEnvironment());

    // Loaded hidden now, so that it keeps what was typed for the whole session.
    fw::qt::LoadConverter(session.decimalSeparator, nullptr);

    std::unique_ptr<fw::qt::MainWindow> window;
    fw::qt::SplashWindow splash([&] {
        window = std::make_unique<fw::qt::MainWindow>(session, ui);
        fw::qt::WireFileCommands(*window, session, configPath, [] { QCoreApplication::quit(); });
        fw::qt::WireSettingsCommands(*window, session);
        fw::qt::WireExportCommands(*window, session, process);
        fw::qt::WireImageCommands(*window, session);
        fw::qt::InstallProblemsPanel(*window, session);
        fw::qt::AddOsmImport(*window, session);
        if (window->Load())
            fw::qt::WireRecovery(*window, session);
    });
    splash.show();

    const int result = app.exec();
    window.reset();
    return result;
}
