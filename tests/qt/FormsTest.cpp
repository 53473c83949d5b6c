// The property forms driven as a user would: fields typed, OK pressed, the window closed.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>

#include "core/Records.h"
#include "support/ScriptedUi.h"
#include "qt/FormSmallObjects.h"
#include "qt/FormRunway.h"
#include "qt/FormSettings.h"
#include "qt/FormShape.h"
#include "QtTestSupport.h"

namespace fw::qt {
namespace {

TEST(Forms, VorRefusesThenStoresAndNamesGetUnderscores)
{
    ScriptedUi ui;
    ObjectRecord o;
    ResetObject(o, kVor, "/p/");
    Script({[](QWidget* f) {
                Type(f, "Text1", "135.8");
                QLineEdit* name = Text(f, "Text4");
                name->clear();
                Keys(name, "My VOR;");
                Press(f, "OK");
            },
            [](QWidget* f) {
                EXPECT_TRUE(f->isVisible());
                Type(f, "Text1", "135.75");
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormOvor(o, {'.', &ui}, nullptr));
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You entered a wrong value for the frequency!"});
    EXPECT_EQ(o.Frequency(), 135.75);
    EXPECT_EQ(o.NavName(), "My_VOR");
}

TEST(Forms, NewShapeClosesOnlyWithOk)
{
    ScriptedUi ui;
    ShapeRecord s;
    s.gType = kPoly;
    ResetShape(s, kPoly);
    ConfigRecord config;
    ResetConfig(config, "/p/");
    const PointList pts{{0, 0}, {100, 0}, {100, 100}};
    ShapeFormContext c{{'.', &ui}, "/p/", &config, &pts, true};
    Script({[](QWidget* f) {
                EXPECT_FALSE(f->findChild<QPushButton*>("Cancel")->isVisibleTo(f));
                f->close();
                static_cast<QDialog*>(f)->reject();
            },
            [](QWidget* f) {
                EXPECT_TRUE(f->isVisible());
                Type(f, "Range", "32001");
                f->findChild<QCheckBox*>("Dusk")->setChecked(false);
                Press(f, "OK");
            },
            [](QWidget* f) {
                Type(f, "Range", "32000");
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormShape(s, c, nullptr));
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You entered a wrong value for the visibility range!"});
    EXPECT_EQ(s.vRange, 32000);
    EXPECT_EQ(s.vTime, kTimeDay | kTimeNight);
}

TEST(Forms, RunwayCaptionsFollowTheNumberAndCancelKeepsTheRecord)
{
    ScriptedUi ui;
    ObjectRecord o;
    ResetObject(o, kRunway, "/p/");
    o.RwyNumber() = 18;
    Script({[](QWidget* f) {
        EXPECT_TRUE(HasLabel(f, "Runway 36:"));
        Type(f, "Length", "5");
        Press(f, "Cancel");
    }});
    EXPECT_FALSE(RunFormRunway(o, {'.', &ui}, nullptr));
    EXPECT_EQ(o.Length(), 9000);
}

TEST(Forms, NewProjectSettingsRefuseLongitude180AndCannotBeCancelled)
{
    ScriptedUi ui;
    ProjectRecord p;
    ResetProject(p);
    ConfigRecord config;
    ResetConfig(config, "/p/");
    Script({[](QWidget* f) {
                EXPECT_FALSE(f->findChild<QPushButton*>("Cancel")->isEnabled());
                static_cast<QDialog*>(f)->reject();
            },
            [](QWidget* f) {
                EXPECT_TRUE(f->isVisible());
                Type(f, "Text5", "180");
                Press(f, "OK");
            },
            [](QWidget* f) {
                Type(f, "Text5", "-75.5");
                Type(f, "Text1", "Fieldtown");
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormSettings(p, true, {'.', &ui}, config, "/p/", nullptr));
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You entered a wrong value for the longitude (degrees)!"});
    EXPECT_EQ(p.LongitudeDegree, -75.5);
    EXPECT_EQ(p.Name, "Fieldtown");
}

} // namespace
} // namespace fw::qt
