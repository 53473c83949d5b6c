#include "qt/OsmImportMenu.h"

#include <memory>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QProgressDialog>

#include "osm/OsmImport.h"
#include "qt/MainWindow.h"

namespace fw::qt {

namespace {

// A progress dialog that shows itself only when reading takes a while.
ReadProgress Progress(MainWindow& window, std::shared_ptr<QProgressDialog>& dialog)
{
    return [&window, &dialog](std::uint64_t done, std::uint64_t total) {
        if (!dialog) {
            dialog = std::make_shared<QProgressDialog>("Reading the OpenStreetMap data...", "Cancel", 0, 1000, &window);
            dialog->setWindowTitle("Fieldwright");
            dialog->setWindowModality(Qt::WindowModal);
            dialog->setMinimumDuration(700);
        }
        dialog->setValue(total > 0 ? static_cast<int>(1000.0 * static_cast<double>(done) / static_cast<double>(total)) : 0);
        QApplication::processEvents();
        return !dialog->wasCanceled();
    };
}

} // namespace

void AddOsmImport(MainWindow& window, Session& session)
{
    QMenu* file = window.menu("MnuFile");
    if (!file)
        return;
    file->addSeparator();
    QAction* item = file->addAction("Import OpenStreetMap data...");
    item->setObjectName("MnuFimportosm");
    QObject::connect(item, &QAction::triggered, &window, [&window, &session, item] {
        if (!window.Reachable(item))
            return;
        window.RunGuarded([&window, &session] {
            std::shared_ptr<QProgressDialog> dialog;
            OsmImportOptions options;
            options.progress = Progress(window, dialog);
            MnuFimportosm(session, options);
            if (dialog)
                dialog->reset();
            window.Tick();
        });
    });
}

} // namespace fw::qt
