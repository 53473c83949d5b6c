// Windows that fit: whole titles, fields that hold their longest text, a folder picker with its
// prompt inside, and the converter beside the window that opened it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>

#include "core/Config.h"
#include "core/Records.h"
#include "dialogs/SettingsForms.h"
#include "support/ScriptedUi.h"
#include "qt/FormBase.h"
#include "qt/FormBrowse.h"
#include "qt/FormConverter.h"
#include "qt/FormOptions.h"
#include "qt/FormRotate.h"
#include "qt/FormScasmStatus.h"
#include "qt/FormSmallObjects.h"
#include "qt/QtText.h"
#include "qt/QtUi.h"
#include "qt/ModalScript.h"

namespace fw::qt {
namespace {

int BoldTitleWidth(const QString& title)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    font.setBold(true);
    return QFontMetrics(font).horizontalAdvance(title);
}

TEST(Titles, RoomForTheTitleIsTheBoldTextAndTheFrameButtons)
{
    const QString title = "Initial location settings";
    EXPECT_GE(TitleRoom(title), BoldTitleWidth(title) + 150);
    EXPECT_GT(TitleRoom(title), TitleRoom("Browse"));
}

TEST(Titles, SmallDialogsAreWideEnoughForTheirWholeTitle)
{
    ScriptedUi ui;
    ObjectRecord o;
    ResetObject(o, kInit, "/p/");
    int width = 0;
    QString title;
    Script({[&](QWidget* f) {
        title = f->windowTitle();
        width = f->width();
        Press(f, "Cancel");
    }});
    RunFormInit(o, {'.', &ui}, nullptr);
    EXPECT_EQ(title, "Initial location settings");
    EXPECT_GE(width, TitleRoom(title));

    TextForm rotate;
    rotate.name = "FormRotate";
    rotate.title = "Rotate selection";
    rotate.labels = {"Rotation:"};
    rotate.texts = {"0"};
    TextFormDialog dialog(rotate);
    dialog.show();
    EXPECT_GE(dialog.width(), TitleRoom("Rotate selection"));
    // Its layout keeps the size fixed: the room is in the layout, not a width that it undoes.
    dialog.adjustSize();
    EXPECT_GE(dialog.width(), TitleRoom("Rotate selection"));

    FormScasmStatus status("Unable to generate BGL file. One or more errors occured...", "/x", {});
    status.show();
    EXPECT_GE(status.width(), TitleRoom("SCASM status"));
}

TEST(Titles, TheTitleRoomIsAddedOnceAndDoesNotWidenALabelColumn)
{
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
    EXPECT_LT(label->width(), d.width() / 2);
}

TEST(FolderPicker, ThePromptStandsInsideAndTheTitleIsBrowse)
{
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkdir("Scenery"));
    const QString prompt = ToQt(PathPrompts()[1]);
    QString title, shown;
    Script({[&](QWidget* f) {
        title = f->windowTitle();
        auto* label = f->findChild<QLabel*>("Prompt");
        ASSERT_NE(label, nullptr);
        shown = label->text();
        EXPECT_TRUE(label->isVisible());
        EXPECT_TRUE(label->wordWrap());
        auto* picker = f->findChild<QFileDialog*>();
        ASSERT_NE(picker, nullptr);
        EXPECT_FALSE(picker->isWindow()) << "a part of the window, not a window of its own";
        picker->selectFile(dir.filePath("Scenery"));
        static_cast<QDialog*>(picker)->accept(); // the picker's own Choose
    }});
    QString folder;
    EXPECT_TRUE(RunFormBrowse(prompt, dir.path(), folder, nullptr));
    EXPECT_EQ(title, "Browse");
    EXPECT_EQ(shown, prompt);
    EXPECT_EQ(QDir(folder).canonicalPath(), QDir(dir.filePath("Scenery")).canonicalPath());

    Script({[](QWidget* f) { f->findChild<QFileDialog*>()->reject(); }});
    folder = "kept";
    EXPECT_FALSE(RunFormBrowse(prompt, dir.path(), folder, nullptr));
    EXPECT_EQ(folder, "kept");
}

TEST(FolderPicker, PreferencesBrowseGivesThePickerItsPromptAndTakesTheFolder)
{
    QTemporaryDir dir;
    ScriptedUi ui;
    ConfigRecord config;
    ResetConfig(config, "/p/");
    Script({[&](QWidget* f) {
                for (QPushButton* b : f->findChildren<QPushButton*>())
                    if (b->text() == "Browse") {
                        b->click(); // the first: the flight simulator's folder
                        break;
                    }
            },
            [&](QWidget* f) {
                EXPECT_EQ(f->objectName(), "FormBrowse");
                EXPECT_EQ(f->findChild<QLabel*>("Prompt")->text(), ToQt(PathPrompts()[0]));
                auto* picker = f->findChild<QFileDialog*>();
                picker->setDirectory(dir.path());
                picker->selectFile(dir.path());
                static_cast<QDialog*>(picker)->accept(); // the picker's own Choose
            },
            [&](QWidget* f) {
                EXPECT_EQ(f->objectName(), "FormOptions");
                EXPECT_EQ(QDir(FromQt(Text(f, "Text1")->text()).c_str()).canonicalPath(),
                          QDir(dir.path()).canonicalPath());
                Press(f, "OK");
            }});
    EXPECT_TRUE(RunFormOptions(config, false, {'.', &ui}, "/p/", nullptr));
    EXPECT_EQ(QDir(QString::fromStdString(config.FSPath)).canonicalPath(), QDir(dir.path()).canonicalPath());
}

TEST(Converter, TakesTheFirstSideOfItsOwnerWithRoomAndNeverTheScreensEdge)
{
    const QRect screen(0, 0, 1280, 1024);
    const QSize size(430, 200);
    // Room on the right.
    EXPECT_EQ(ConverterPlace(QRect(100, 100, 400, 300), size, screen), QPoint(508, 100));
    // At the right edge: on the left.
    EXPECT_EQ(ConverterPlace(QRect(840, 100, 400, 300), size, screen), QPoint(402, 100));
    // A centred 640 by 540 window leaves no side room: below it.
    EXPECT_EQ(ConverterPlace(QRect(320, 240, 640, 540), size, screen), QPoint(320, 788));
    // Near the top with no room left, right or below: above it, slid off the screen's edge.
    EXPECT_EQ(ConverterPlace(QRect(300, 260, 700, 750), size, screen), QPoint(300, 52));
    // A window that fills the screen: over its top right corner, 16 pixels in from the edges.
    const QPoint corner = ConverterPlace(screen, size, screen);
    EXPECT_EQ(corner, QPoint(1280 - 16 - 430, 48));
    // Beside a window whose top is above the screen's, the converter slides down onto the screen.
    EXPECT_EQ(ConverterPlace(QRect(100, -50, 400, 300), size, screen).y(), 16);
    // A screen with a panel on the left: the margin counts from the screen's own edges.
    EXPECT_EQ(ConverterPlace(QRect(60, 0, 1220, 1024), size, QRect(60, 0, 1220, 1024)), QPoint(1280 - 16 - 430, 48));
}

TEST(Converter, ResultsShowWholeAndItAppearsBesideTheWindowThatAsked)
{
    QWidget* w = LoadConverter('.', nullptr);
    ASSERT_NE(w, nullptr);
    auto* tabs = w->findChild<QTabWidget*>();
    ASSERT_NE(tabs, nullptr);
    QLineEdit* angleResult = w->findChild<QLineEdit*>("Text2");
    QLineEdit* distanceResult = w->findChild<QLineEdit*>("Text4");
    ASSERT_NE(angleResult, nullptr);
    ASSERT_NE(distanceResult, nullptr);
    QWidget* lat = w->findChild<QWidget*>("lat");
    QPushButton* convert = nullptr;
    for (QPushButton* b : lat->findChildren<QPushButton*>())
        convert = b;
    ASSERT_NE(convert, nullptr);
    convert->click();
    EXPECT_EQ(angleResult->text(), "Value of wrong format!");
    EXPECT_EQ(angleResult->cursorPosition(), 0) << "the start of the text shows";

    QWidget owner;
    owner.setWindowTitle("Owner");
    owner.resize(300, 200);
    owner.move(40, 40);
    owner.show();
    ShowConverter('.', &owner);
    EXPECT_TRUE(w->isVisible());
    // Every result text fits its field.
    const int inner = angleResult->contentsRect().width() - 8;
    for (const char* text : {"Value of wrong format!", "Unable to convert value!"}) {
        EXPECT_LE(angleResult->fontMetrics().horizontalAdvance(text), inner) << text;
        EXPECT_LE(distanceResult->fontMetrics().horizontalAdvance(text), distanceResult->contentsRect().width() - 8)
            << text;
    }
    const QRect room = owner.screen()->availableGeometry();
    EXPECT_FALSE(w->frameGeometry().intersects(owner.frameGeometry()));
    EXPECT_TRUE(room.adjusted(16, 16, -16, -16).contains(w->frameGeometry()));

    // Hidden and asked for again by another window: beside that one.
    w->hide();
    QWidget other;
    other.resize(200, 150);
    other.move(room.right() - 220, 30);
    other.show();
    ShowConverter('.', &other);
    EXPECT_FALSE(w->frameGeometry().intersects(other.frameGeometry()));
    EXPECT_TRUE(room.adjusted(16, 16, -16, -16).contains(w->frameGeometry()));
    // While it stands it stays where it is.
    w->move(room.left() + 20, room.top() + 300);
    const QPoint kept = w->pos();
    ShowConverter('.', &owner);
    EXPECT_EQ(w->pos(), kept);
    w->hide();
}

} // namespace
} // namespace fw::qt
