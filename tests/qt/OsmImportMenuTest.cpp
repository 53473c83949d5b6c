// The OpenStreetMap import in the File menu: after the menu's own items, one undo step.
#include <gtest/gtest.h>

#include <fstream>

#include <QAction>
#include <QMenu>

#include "QtTestSupport.h"
#include "editor/Undo.h"
#include "osm/OsmImport.h"
#include "qt/MainWindow.h"
#include "qt/OsmImportMenu.h"

namespace fw::qt {
namespace {

using OsmMenu = QtSessionTest;

TEST_F(OsmMenu, ComesAfterTheFileMenusOwnItemsAndImportsInOneUndoStep)
{
    MainWindow w(session, ui);
    const QList<QAction*> before = w.menu("MnuFile")->actions();
    AddOsmImport(w, session);
    const QList<QAction*> after = w.menu("MnuFile")->actions();
    ASSERT_EQ(after.size(), before.size() + 2); // a separator and the item
    EXPECT_EQ(after.mid(0, before.size()), before);
    EXPECT_TRUE(after[before.size()]->isSeparator());
    QAction* item = after.back();
    EXPECT_EQ(item->text(), "Import OpenStreetMap data...");

    std::ofstream(Temp("apron.osm")) << "<osm version=\"0.6\">\n"
                                        "<node id=\"1\" lat=\"50.0\" lon=\"8.0\"/><node id=\"2\" lat=\"50.001\" lon=\"8.0\"/>\n"
                                        "<node id=\"3\" lat=\"50.001\" lon=\"8.001\"/>\n"
                                        "<way id=\"9\"><nd ref=\"1\"/><nd ref=\"2\"/><nd ref=\"3\"/><nd ref=\"1\"/>\n"
                                        "<tag k=\"aeroway\" v=\"apron\"/></way>\n</osm>\n";
    scripted.files = {Temp("apron.osm")};
    scripted.answers = {Answer::Yes}; // no aerodrome in the data: take its centre as the reference point
    item->trigger();
    EXPECT_EQ(scripted.fileRequests.at(0).filter, kOsmFilter);
    EXPECT_EQ(scripted.calls.at(1).text.rfind(kOsmTakeCentre, 0), 0u);
    EXPECT_EQ(session.stores.ShapeCount(), 1);
    EXPECT_EQ(session.editor.selection.SelShapeCount(), 1);
    EXPECT_NEAR(session.project.LatitudeDegree, 50.0005, 1e-9);
    ASSERT_EQ(scripted.Messages().size(), 1u);
    EXPECT_EQ(scripted.Messages()[0].rfind("Imported: 0 runways, 0 taxiways, 1 apron, 0 forests.", 0), 0u);
    Undo(session);
    EXPECT_EQ(session.stores.ShapeCount(), 0);
}

} // namespace
} // namespace fw::qt
