#include <gtest/gtest.h>

#include <fstream>

#include <QAction>
#include <QMenu>
#include <QTemporaryDir>

#include "core/Session.h"
#include "editor/Undo.h"
#include "osm/OsmImport.h"
#include "support/ScriptedUi.h"
#include "qt/MainWindow.h"
#include "qt/OsmImportMenu.h"
#include "qt/QtUi.h"

namespace fw::qt {
namespace {

struct OsmMenu : ::testing::Test {
    OsmMenu()
    {
        ResetAtStart(session);
        ResetConfig(session.config, "/tmp/fw/");
        session.ui = &scripted;
    }
    Session session;
    QtUi ui;
    ScriptedUi scripted;
    QTemporaryDir dir;
};

TEST_F(OsmMenu, ComesAfterTheFileMenusOwnItemsAndImportsInOneUndoStep)
{
    MainWindow w(session, ui);
    QList<QAction*> before = w.menu("MnuFile")->actions();
    AddOsmImport(w, session);
    const QList<QAction*> after = w.menu("MnuFile")->actions();
    ASSERT_EQ(after.size(), before.size() + 2); // a separator and the item
    EXPECT_EQ(after.mid(0, before.size()), before);
    EXPECT_EQ(before.back()->objectName(), "MnuFexit");
    EXPECT_TRUE(after[before.size()]->isSeparator());
    QAction* item = after.back();
    EXPECT_EQ(item->text(), "Import OpenStreetMap data...");

    const std::string path = dir.filePath("apron.osm").toStdString();
    std::ofstream(path) << "<osm version=\"0.6\">\n"
                           "<node id=\"1\" lat=\"50.0\" lon=\"8.0\"/><node id=\"2\" lat=\"50.001\" lon=\"8.0\"/>\n"
                           "<node id=\"3\" lat=\"50.001\" lon=\"8.001\"/>\n"
                           "<way id=\"9\"><nd ref=\"1\"/><nd ref=\"2\"/><nd ref=\"3\"/><nd ref=\"1\"/>\n"
                           "<tag k=\"aeroway\" v=\"apron\"/></way>\n</osm>\n";
    scripted.files = {path};
    scripted.answers = {Answer::Yes}; // take the extract's centre as the reference point
    item->trigger();
    ASSERT_EQ(scripted.fileRequests.size(), 1u);
    EXPECT_EQ(scripted.fileRequests[0].filter, kOsmFilter);
    EXPECT_EQ(session.stores.ShapeCount(), 1);
    EXPECT_EQ(session.editor.selection.SelShapeCount(), 1);
    EXPECT_NEAR(session.project.LatitudeDegree, 50.0005, 1e-9);
    // No aerodrome in the data: the question names the data's centre.
    bool asked = false;
    for (const auto& call : scripted.calls)
        asked = asked || call.text.rfind(kOsmTakeCentre, 0) == 0;
    EXPECT_TRUE(asked);
    ASSERT_EQ(scripted.Messages().size(), 1u);
    EXPECT_EQ(scripted.Messages()[0].rfind("Imported: 0 runways, 0 taxiways, 1 apron, 0 forests.", 0), 0u);
    Undo(session);
    EXPECT_EQ(session.stores.ShapeCount(), 0);
}

} // namespace
} // namespace fw::qt
