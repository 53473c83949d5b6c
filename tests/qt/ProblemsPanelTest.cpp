// The problems panel in the window: its menu item after the system's own, the list and the count,
// a click going to the item, the refresh after a change, and the question before a compiler run.
#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QListWidget>
#include <QMenu>
#include <QSettings>

#include "QtTestSupport.h"
#include "core/Stores.h"
#include "qt/MainWindow.h"
#include "qt/ProblemsPanel.h"

namespace fw::qt {
namespace {

struct PanelFixture : QtSessionTest {
    PanelFixture()
    {
        session.project.LatitudeDegree = 48.35;
        session.project.LongitudeDegree = 11.78;
    }
    void Shape(const PointList& pts)
    {
        ShapeRecord r;
        ResetShape(r, kPoly);
        r.gIsColored = 1;
        AppendShape(session.stores, r, pts);
    }
};

TEST_F(PanelFixture, ListsCountsAndGoesToTheItem)
{
    Shape({{-100, -100}, {100, -100}, {0, 100}});
    Shape({{900, 700}, {1100, 900}, {1100, 700}, {900, 900}}); // a bow tie
    MainWindow w(session, ui);
    ProblemsPanel* panel = InstallProblemsPanel(w, session);

    // The View menu keeps its items; the panel's item comes last.
    const QList<QAction*> view = w.menu("MnuBackground")->actions();
    EXPECT_EQ(view.back(), panel->toggleViewAction());
    EXPECT_EQ(view.back()->text(), "&Problems");
    EXPECT_EQ(view[view.size() - 3], w.action("MnuBshowgrid"));

    // The compiler's set-up is a matter of the machine; the design's own problem is the crossing.
    auto crossing = [&] {
        for (std::size_t i = 0; i < panel->problems().size(); ++i)
            if (panel->problems()[i].rule == "self-crossing")
                return static_cast<int>(i);
        return -1;
    };
    ASSERT_GE(crossing(), 0);
    EXPECT_EQ(panel->list()->count(), static_cast<int>(panel->problems().size()));
    EXPECT_TRUE(panel->count()->text().endsWith("problems") || panel->count()->text() == "1 problem");

    session.showFlags.ShowPoly = 0;
    panel->goTo(crossing());
    ASSERT_EQ(session.editor.selection.SelShapes(), std::vector<std::uint16_t>{1});
    EXPECT_EQ(session.editor.selection.SelObjectCount(), 0);
    EXPECT_EQ(session.view.offX(), -1000);
    EXPECT_EQ(session.view.offY(), -800);
    EXPECT_EQ(session.showFlags.ShowPoly, 1);

    // Fixing the shape clears its line once the check that follows the change has run.
    session.stores.PointStore[1] = {{900, 700}, {1100, 700}, {1100, 900}, {900, 900}};
    UpdateShapeGeometry(session.stores.ShapeStore[1], session.stores.PointStore[1]);
    panel->scheduleRefresh();
    QDeadlineTimer patience(30000);
    while (crossing() >= 0 && !patience.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_LT(crossing(), 0);
    EXPECT_EQ(panel->list()->count(), static_cast<int>(panel->problems().size()));
}

TEST_F(PanelFixture, ShownAsTheConfigurationSaysAndRemembered)
{
    QSettings().setValue(kProblemsShownKey, false);
    MainWindow w(session, ui);
    ProblemsPanel* panel = InstallProblemsPanel(w, session);
    EXPECT_FALSE(panel->toggleViewAction()->isChecked());
    panel->toggleViewAction()->trigger();
    EXPECT_TRUE(QSettings().value(kProblemsShownKey).toBool());
    panel->toggleViewAction()->trigger();
    EXPECT_FALSE(QSettings().value(kProblemsShownKey).toBool());
}

TEST_F(PanelFixture, CompileAsksFirstWhenTheExportWouldStop)
{
    session.project.UsePointReduction = 1;
    Shape({{-100, -100}, {100, -100}, {0, 100}});
    scripted.answers.push_back(Answer::No);
    EXPECT_FALSE(ConfirmCompile(session));
    ASSERT_EQ(scripted.calls.size(), 1u);
    EXPECT_NE(scripted.calls[0].text.find("The export stopped at shape 1 (Poly"), std::string::npos);
    EXPECT_NE(scripted.calls[0].text.find("Generate scenery files anyway?"), std::string::npos);
}

} // namespace
} // namespace fw::qt
