// The forms driven as a user would: fields typed, OK pressed, the window closed; the property
// forms on their records, the editor's small forms on an editor session.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>

#include "QtTestSupport.h"
#include "core/Records.h"
#include "editor/EditorTestSupport.h"
#include "editor/Selection.h"
#include "editor/Transforms.h"
#include "qt/FormSmallObjects.h"
#include "qt/FormRunway.h"
#include "qt/FormSettings.h"
#include "qt/FormShape.h"

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
                Type(f, "Range", "32000");
                f->findChild<QCheckBox*>("Dusk")->setChecked(false);
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormShape(s, c, nullptr));
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

TEST(Forms, NewProjectSettingsCannotBeCancelled)
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
                Type(f, "Text5", "-75.5");
                Type(f, "Text1", "Fieldtown");
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormSettings(p, true, {'.', &ui}, config, "/p/", nullptr));
    EXPECT_EQ(p.LongitudeDegree, -75.5);
    EXPECT_EQ(p.Name, "Fieldtown");
}

// An editor session whose questions are answered by the Qt forms.
struct QtSession : test::EditorFixture {
    QtSession()
    {
        ui.setSession(&s());
        s().ui = &ui;
    }
    QtUi ui;
};

TEST(SmallForms, SelectionListsTheHitsInOrderAndStartsOnTheLast)
{
    QtSession t;
    t.AddShape(kPoly, {{100, 100}, {200, 100}, {200, 200}}, "Apron");
    t.AddShape(kWideLine, {{100, 100}, {300, 300}}, "Taxiway A");
    t.AddObject(kVor, 100, 100);
    Script({[](QWidget* f) {
        EXPECT_EQ(f->objectName(), "FormSelection");
        auto* list = f->findChild<QListWidget*>();
        ASSERT_NE(list, nullptr);
        ASSERT_EQ(list->count(), 3);
        EXPECT_TRUE(list->item(0)->text().startsWith("Apron - "));
        EXPECT_TRUE(list->item(1)->text().startsWith("Taxiway A - "));
        EXPECT_EQ(list->currentRow(), 2);
        const auto buttons = f->findChildren<QPushButton*>();
        ASSERT_EQ(buttons.size(), 1) << "one button, and it is no cancel";
        list->setCurrentRow(1);
        buttons[0]->click();
    }});
    EXPECT_EQ(SelectAt(t.s(), 100, 100, 100, 100, 1), 0);
    EXPECT_EQ(t.s().editor.selection.firstShape(), 1);
    EXPECT_EQ(t.s().editor.selection.firstObject(), 65535);

    // Escape can't cancel: the form answers the entry it stands on, the object here.
    Script({[](QWidget* f) {
        QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(f, &esc);
    }});
    EXPECT_EQ(SelectAt(t.s(), 100, 100, 100, 100, 1), 0);
    EXPECT_EQ(t.s().editor.selection.firstObject(), 0);
    EXPECT_EQ(t.s().editor.selection.firstShape(), 65535);
}

TEST(SmallForms, RotateTypesTheSystemDecimalSignAndKeepsARefusedValueOpen)
{
    QtSession t;
    t.s().decimalSeparator = ',';
    t.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 50}});
    t.SelectShape(0);
    t.s().editor.LastRotation = 12.5;
    Script({[](QWidget* f) {
                QLineEdit* e = Text(f, "Text1");
                EXPECT_EQ(e->text().trimmed(), "12,5");
                EXPECT_EQ(e->cursorPosition(), e->text().size());
                EXPECT_FALSE(e->hasSelectedText());
                e->clear();
                Keys(e, "400.5");
                EXPECT_EQ(e->text(), "400,5");
                Press(f, "OK");
            },
            [](QWidget* box) {
                // The range check speaks; the form stays behind it.
                auto* b = qobject_cast<QMessageBox*>(box);
                ASSERT_NE(b, nullptr);
                EXPECT_TRUE(b->text().contains("rotation"));
                b->buttons().front()->click();
            },
            [](QWidget* f) {
                EXPECT_EQ(f->objectName(), "FormRotate");
                QLineEdit* e = Text(f, "Text1");
                e->clear();
                Keys(e, "90,0004");
                Press(f, "OK");
            }});
    MnuEdrot(t.s()); // the turn itself is the editor's tests'
    EXPECT_EQ(t.s().editor.LastRotation, 90.0);
    EXPECT_TRUE(t.s().dirty);
}

TEST(SmallForms, RescaleRatioBoxLocksTheVertical)
{
    QtSession t;
    t.AddShape(kPoly, {{0, 0}, {100, 0}, {100, 50}});
    t.SelectShape(0);
    t.s().config.scaleX = 1.0;
    t.s().config.scaleY = 1.0;
    t.s().config.keepAspect = 0;

    Script({[](QWidget* f) {
        QLineEdit* h = Text(f, "Text1");
        QLineEdit* v = Text(f, "Text2");
        EXPECT_EQ(h->text().trimmed(), "100");
        EXPECT_EQ(v->text().trimmed(), "100");
        auto* ratio = f->findChild<QCheckBox*>("Check1");
        ASSERT_NE(ratio, nullptr);
        EXPECT_FALSE(ratio->isChecked());
        EXPECT_TRUE(v->isEnabled());
        ratio->click();
        EXPECT_FALSE(v->isEnabled());
        EXPECT_TRUE(h->isEnabled());
        h->setText("200");
        Press(f, "OK");
    }});
    MnuEdscale(t.s());
    EXPECT_EQ(t.s().config.keepAspect, 1);
    EXPECT_EQ(t.Points(0)[2], (Point{150, 75})); // twice the size on both axes
    EXPECT_TRUE(t.s().dirty);
}

TEST(SmallForms, ConvertKeepsSettingsOnlyFromAnOkAndReturnsTheChosenType)
{
    QtSession t;
    std::vector<ShapeRecord> copies;
    for (int type : {kPoly, kWideLine, kDotLine, kTreeLine, kForest}) {
        ShapeRecord r;
        ResetShape(r, type);
        copies.push_back(r);
    }
    const std::vector<ShapeRecord> before = copies;
    Script({[](QWidget* f) {
                EXPECT_EQ(f->objectName(), "FormConvertShape");
                EXPECT_TRUE(f->findChild<QRadioButton*>("Option1")->isChecked());
                f->findChild<QRadioButton*>("Option2")->click();
                Press(f, "Settings");
            },
            [](QWidget* shape) {
                // The shape dialog on the wide line's copy, over the convert form.
                EXPECT_NE(shape->objectName(), "FormConvertShape");
                EXPECT_EQ(shape->parentWidget()->objectName(), "FormConvertShape");
                Type(shape, "Range", "1234");
                Press(shape, "OK");
            },
            [](QWidget* f) {
                EXPECT_EQ(f->objectName(), "FormConvertShape");
                Press(f, "Settings");
            },
            [](QWidget* shape) {
                Type(shape, "Range", "999");
                Press(shape, "Cancel");
            },
            [](QWidget* f) { Press(f, "OK"); }});
    EXPECT_EQ(t.ui.FormConvertShape(copies), kWideLine);
    EXPECT_EQ(copies[1].vRange, 1234);
    for (int i : {0, 2, 3, 4})
        EXPECT_EQ(copies[i].vRange, before[i].vRange);

    Script({[](QWidget* f) {
        f->findChild<QRadioButton*>("Option5")->click();
        Press(f, "Cancel");
    }});
    EXPECT_EQ(t.ui.FormConvertShape(copies), 0);
}

} // namespace
} // namespace fw::qt
