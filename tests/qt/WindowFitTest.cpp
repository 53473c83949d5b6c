// Windows that fit: whole titles, fields that hold their longest text, a folder picker with its
// prompt inside, and the converter beside the window that opened it.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>

#include "QtTestSupport.h"
#include "dialogs/SettingsForms.h"
#include "qt/FormBase.h"
#include "qt/FormBrowse.h"
#include "qt/FormConverter.h"
#include "qt/FormOptions.h"
#include "qt/FormRotate.h"
#include "qt/QtText.h"

namespace fw::qt {
namespace {

TEST(Titles, DialogsAreWideEnoughForTheirWholeTitleOnceAndNoMore)
{
    QFont bold = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    bold.setBold(true);
    EXPECT_GE(TitleRoom("Rotate selection"), QFontMetrics(bold).horizontalAdvance("Rotate selection") + 150)
        << "the bold title and the frame's buttons";
    TextForm rotate;
    rotate.name = "FormRotate";
    rotate.title = "Rotate selection";
    rotate.labels = {"Rotation:"};
    rotate.texts = {"0"};
    TextFormDialog dialog(rotate);
    dialog.show();
    dialog.adjustSize(); // the room is in the layout, not a width that it undoes
    EXPECT_GE(dialog.width(), TitleRoom("Rotate selection"));

    QDialog d;
    d.setWindowTitle("A title long enough to need more room than the fields");
    auto* grid = new QGridLayout(&d);
    auto* label = new QLabel("Name:");
    grid->addWidget(label, 0, 0);
    grid->addWidget(new QLineEdit, 0, 1);
    grid->addWidget(new QLineEdit, 0, 2);
    FitTitle(&d);
    FitTitle(&d);
    d.show();
    EXPECT_GE(d.width(), TitleRoom(d.windowTitle()));
    EXPECT_LT(d.width(), TitleRoom(d.windowTitle()) + 60) << "once";
    EXPECT_LT(label->width(), d.width() / 2) << "the room doesn't widen the label column";
}

QString Canonical(const QString& path) { return QDir(path).canonicalPath(); }

TEST(FolderPicker, PreferencesBrowseShowsThePromptInsideAndTakesTheFolder)
{
    QTemporaryDir dir;
    ScriptedUi ui;
    ConfigRecord config;
    ResetConfig(config, "/p/");
    Script({[&](QWidget* f) {
                for (QPushButton* b : f->findChildren<QPushButton*>())
                    if (b->text() == "Browse")
                        return b->click(); // the first: the flight simulator's folder
            },
            [&](QWidget* f) {
                EXPECT_EQ(f->windowTitle(), "Browse");
                auto* label = f->findChild<QLabel*>("Prompt");
                ASSERT_NE(label, nullptr);
                EXPECT_EQ(label->text(), ToQt(PathPrompts()[0]));
                EXPECT_TRUE(label->isVisible());
                EXPECT_TRUE(label->wordWrap());
                auto* picker = f->findChild<QFileDialog*>();
                ASSERT_NE(picker, nullptr);
                EXPECT_FALSE(picker->isWindow()) << "a part of the window, not a window of its own";
                picker->setDirectory(dir.path());
                picker->selectFile(dir.path());
                static_cast<QDialog*>(picker)->accept(); // the picker's own Choose
            },
            [&](QWidget* f) {
                EXPECT_EQ(f->objectName(), "FormOptions");
                EXPECT_EQ(Canonical(Text(f, "Text1")->text()), Canonical(dir.path()));
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormOptions(config, false, {'.', &ui}, "/p/", nullptr));
    EXPECT_EQ(Canonical(QString::fromStdString(config.FSPath)), Canonical(dir.path()));

    Script({[](QWidget* f) { f->findChild<QFileDialog*>()->reject(); }});
    QString folder = "kept";
    EXPECT_FALSE(RunFormBrowse(ToQt(PathPrompts()[1]), dir.path(), folder, nullptr));
    EXPECT_EQ(folder, "kept");
}

TEST(Converter, TakesTheFirstSideOfItsOwnerWithRoomAndNeverTheScreensEdge)
{
    const QRect screen(0, 0, 1280, 1024);
    const struct {
        QRect owner, screen;
        QPoint place;
    } cases[] = {
        {{100, 100, 400, 300}, screen, {508, 100}}, // room on the right
        {{840, 100, 400, 300}, screen, {402, 100}}, // at the right edge: on the left
        {{320, 240, 640, 540}, screen, {320, 788}}, // no side room: below
        {{300, 260, 700, 750}, screen, {300, 52}},  // nor below: above, slid off the screen's edge
        {screen, screen, {1280 - 16 - 430, 48}},    // filling the screen: over its top right corner
        {{100, -50, 400, 300}, screen, {508, 16}},  // a top above the screen's: slid down onto it
        // A screen with a panel on the left: the margin counts from the screen's own edges.
        {{60, 0, 1220, 1024}, {60, 0, 1220, 1024}, {1280 - 16 - 430, 48}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ConverterPlace(c.owner, QSize(430, 200), c.screen), c.place) << c.owner.x() << "," << c.owner.y();
}

TEST(Converter, ResultsShowWholeAndItAppearsBesideTheWindowThatAsked)
{
    QWidget* w = LoadConverter('.', nullptr);
    ASSERT_NE(w, nullptr);
    QLineEdit* angleResult = w->findChild<QLineEdit*>("Text2");
    QLineEdit* distanceResult = w->findChild<QLineEdit*>("Text4");
    ASSERT_TRUE(angleResult && distanceResult);
    const QList<QPushButton*> latButtons = w->findChild<QWidget*>("lat")->findChildren<QPushButton*>();
    latButtons.back()->click(); // Convert, with nothing typed
    EXPECT_EQ(angleResult->text(), "Value of wrong format!");
    EXPECT_EQ(angleResult->cursorPosition(), 0) << "the start of the text shows";

    QWidget owner, other;
    owner.resize(300, 200);
    owner.move(40, 40);
    owner.show();
    const QRect room = owner.screen()->availableGeometry();
    other.resize(200, 150);
    other.move(room.right() - 220, 30);
    other.show();
    // Asked for by one window, then hidden and asked for by another: beside each.
    for (QWidget* asking : {&owner, &other}) {
        w->hide();
        ShowConverter('.', asking);
        EXPECT_TRUE(w->isVisible());
        EXPECT_FALSE(w->frameGeometry().intersects(asking->frameGeometry()));
        EXPECT_TRUE(room.adjusted(16, 16, -16, -16).contains(w->frameGeometry()));
    }
    // Every result text fits its field.
    for (QLineEdit* field : {angleResult, distanceResult})
        for (const char* text : {"Value of wrong format!", "Unable to convert value!"})
            EXPECT_LE(field->fontMetrics().horizontalAdvance(text), field->contentsRect().width() - 8) << text;
    // While it stands it stays where it is.
    w->move(room.left() + 20, room.top() + 300);
    const QPoint kept = w->pos();
    ShowConverter('.', &owner);
    EXPECT_EQ(w->pos(), kept);
    w->hide();
}

} // namespace
} // namespace fw::qt
