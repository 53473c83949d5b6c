// Text between the code page and Qt, and the Qt Ui's own windows: tips, questions, pop-ups,
// pointers and the compiler's status and log.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFile>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>

#include "QtTestSupport.h"
#include "qt/FormInform.h"
#include "qt/FormScasmStatus.h"
#include "qt/QtText.h"
#include "qt/QtUi.h"
#include "qt/Startup.h"
#include "qt/ToolIcons.h"

namespace fw::qt {
namespace {

TEST(QtText, CodePageBytesRoundTripAndHostFileNamesInUtf8StayReadable)
{
    std::string all;
    for (int c = 1; c < 256; ++c)
        all.push_back(static_cast<char>(c));
    const QString q = ToQt(all);
    ASSERT_EQ(q.size(), 255);
    EXPECT_EQ(q.at(0x80 - 1), QChar(0x20AC));   // euro sign
    EXPECT_EQ(q.at(0x96 - 1), QChar(0x2013));   // en dash
    EXPECT_EQ(q.at(0xE9 - 1), QChar(0x00E9));   // e acute
    EXPECT_EQ(FromQt(q), all);

    EXPECT_EQ(ToQt("Caf\xC3\xA9.fwt"), QString::fromUtf8("Caf\xC3\xA9.fwt"));
    EXPECT_EQ(ToQt("Caf\xE9.fwt"), QString::fromUtf8("Caf\xC3\xA9.fwt"));
    EXPECT_EQ(FromQt(QString::fromUtf8("Caf\xC3\xA9")), "Caf\xE9");
    EXPECT_EQ(FromQt(QString::fromUtf8("\xE6\x97\xA5 x")), "? x"); // unknown: a question mark
    // A lone lead byte at the end is not UTF-8.
    EXPECT_EQ(ToQt("a\xC3"), QString::fromUtf8("a\xC3\x83"));
}

TEST(QtFileFilter, PipeFormBecomesQtFilterListWithHostWildcard)
{
    EXPECT_EQ(QtFileFilter("Fieldwright (*.fwt)|*.fwt"), "Fieldwright (*.fwt)");
    EXPECT_EQ(QtFileFilter("Fieldwright shapes/objects (*.fso)|*.fso|All files (*.*)|*.*"),
              "Fieldwright shapes/objects (*.fso);;All files (*)");
    EXPECT_EQ(QtFileFilter("Pictures|*.bmp;*.jpg"), "Pictures (*.bmp *.jpg)");
    EXPECT_EQ(QtFileFilter(""), "");
}

TEST(DecimalSeparator, PointAndCommaAreTakenOthersEndTheStartWithTheirMessage)
{
    ScriptedUi ui;
    EXPECT_EQ(CheckDecimalSeparator(".", ui), '.');
    EXPECT_EQ(CheckDecimalSeparator(",", ui), ',');
    EXPECT_EQ(CheckDecimalSeparator(QString(",") + QChar(0) + "x", ui), ',');
    EXPECT_TRUE(ui.calls.empty());

    EXPECT_FALSE(CheckDecimalSeparator("", ui).has_value());
    EXPECT_FALSE(CheckDecimalSeparator(QString(QChar(0x066B)), ui).has_value());
    EXPECT_FALSE(CheckDecimalSeparator(".,", ui).has_value());
    ASSERT_EQ(ui.Messages().size(), 3u);
    EXPECT_EQ(ui.Messages()[0], "Unable to determine country settings!");
    EXPECT_EQ(ui.Messages()[1], "Your system uses an unknown type of decimal separator!\n"
                                "Only ' . ' or ' , ' are allowed in Fieldwright...");
    EXPECT_EQ(ui.calls[1].style, MessageStyle::Critical);

    EXPECT_EQ(SystemDecimalSeparator(QLocale(QLocale::German, QLocale::Germany), ui), ',');
    EXPECT_EQ(SystemDecimalSeparator(QLocale(QLocale::English, QLocale::UnitedStates), ui), '.');
}

TEST(QtUi, TipsAndQuestionsAnswerAsThePersonChose)
{
    QtUi ui;
    EXPECT_EQ(ui.ShowTip("never shown", 0), 0);
    // The flag back is 0 once the box is ticked; with -1 there is no box, and -1 comes back.
    const struct {
        int flag;
        bool tick;
        int back;
    } tips[] = {{1, true, 0}, {1, false, 1}, {-1, false, -1}};
    for (const auto& t : tips) {
        OnModal<FormInform>([t](FormInform* f) {
            EXPECT_EQ(f->label()->text(), "A tip");
            EXPECT_EQ(f->dontShowAgain()->isHidden(), t.flag < 0);
            f->dontShowAgain()->setChecked(t.tick);
            f->accept();
        });
        EXPECT_EQ(ui.ShowTip("A tip", t.flag), t.back);
    }

    for (const auto button : {QMessageBox::Cancel, QMessageBox::No}) {
        OnModal<QMessageBox>([button](QMessageBox* b) {
            EXPECT_EQ(b->text(), "Save New project.fwt?");
            b->button(button)->click();
        });
        EXPECT_EQ(ui.AskYesNoCancel("Save New project.fwt?"), button == QMessageBox::No ? Answer::No : Answer::Cancel);
    }

    OnModal<QMessageBox>([](QMessageBox* b) {
        EXPECT_EQ(b->icon(), QMessageBox::Critical);
        EXPECT_EQ(b->text(), QString::fromUtf8("\xE2\x82\xAC 5")) << "the code page's euro sign";
        b->accept();
    });
    ui.Message("\x80 5", MessageStyle::Critical);
}

void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

TEST(FormScasmStatus, ViewErrorsGoesToTheViewerOrElseTheProgramsOwnReadOnlyWindow)
{
    QTemporaryDir dir;
    const QString log = dir.filePath("SCAERROR.LOG");
    WriteFile(log, "Scasm compilation status: errors\r\nLine 12: unknown command \x84Vor(\x93\r\n");
    bool viewerHasIt = true;
    int asked = 0;
    FormScasmStatus form("Unable to generate BGL file. One or more errors occured...", log, [&] {
        ++asked;
        return viewerHasIt;
    });
    EXPECT_EQ(form.windowTitle(), "SCASM status");
    form.show();
    form.viewErrorsButton()->click();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(form.isVisible());

    viewerHasIt = false;
    QString title, shown;
    bool readOnly = false;
    OnModal<FormScasmLog>([&](FormScasmLog* w) {
        title = w->windowTitle();
        shown = w->textView()->toPlainText();
        readOnly = w->textView()->isReadOnly();
        EXPECT_TRUE(form.isVisible()) << "the status dialog stands under it";
        w->closeButton()->click();
    });
    form.viewErrorsButton()->click();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(title, "SCASM errors");
    EXPECT_TRUE(readOnly);
    EXPECT_EQ(shown, QString::fromUtf8("Scasm compilation status: errors\nLine 12: unknown command "
                                       "\u201EVor(\u201C\n"));
    EXPECT_TRUE(form.isVisible()) << "back in the status dialog";
    form.closeButton()->click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Accepted);

    // No viewer given at all: the program's window too.
    FormScasmStatus bare("x", log, {});
    bare.show();
    bool opened = false;
    OnModal<FormScasmLog>([&](FormScasmLog* w) {
        opened = true;
        w->accept();
    });
    bare.viewErrorsButton()->click();
    EXPECT_TRUE(opened);
}

TEST(FormScasmStatus, TheLogWindowReadsOnlyARegularFileAndOnlySoMuch)
{
    QTemporaryDir dir;
    for (const QString& path : {dir.filePath("missing.log"), dir.path(), QString("/dev/zero")}) {
        bool readable = true;
        EXPECT_EQ(ReadLogText(path, &readable), "") << path.toStdString();
        EXPECT_FALSE(readable) << path.toStdString();
    }
    const QString big = dir.filePath("big.log");
    WriteFile(big, QByteArray(kMaxLogBytes + 10, 'e'));
    bool readable = false;
    const QString text = ReadLogText(big, &readable);
    EXPECT_TRUE(readable);
    EXPECT_EQ(text.size(), kMaxLogBytes + 6);
    EXPECT_TRUE(text.endsWith("\n[...]"));

    const QString empty = dir.filePath("empty.log");
    WriteFile(empty, {});
    EXPECT_EQ(FormScasmLog(empty).textView()->placeholderText(), "The compiler wrote nothing into its log.");
    EXPECT_EQ(FormScasmLog(dir.filePath("missing.log")).textView()->placeholderText(),
              "The compiler left no log that could be read.");
}

TEST(QtUi, PopupMenuShowsTheNamedMenuAndWaits)
{
    QtUi ui;
    QMenu click2;
    click2.setObjectName("MnuClick2");
    click2.addAction("Center here");
    ui.setMenuLookup([&](const QString& name) { return name == "MnuClick2" ? &click2 : nullptr; });
    QString shown;
    QTimer::singleShot(0, [&] {
        if (QWidget* popup = QApplication::activePopupWidget()) {
            shown = popup->objectName();
            popup->close();
        }
    });
    ui.PopupMenu("MnuClick2");
    EXPECT_EQ(shown, "MnuClick2");
    ui.PopupMenu("NoSuchMenu");
}

TEST(QtUi, PointersOfTheCanvasIncludingTheDrawnCursors)
{
    QtUi ui;
    QWidget canvas;
    ui.SetPointer(Pointer::Cross); // no canvas yet: nothing to change
    ui.setCanvas(&canvas);
    ui.SetPointer(Pointer::SizeNESW);
    EXPECT_EQ(canvas.cursor().shape(), Qt::SizeBDiagCursor);
    ui.SetPointer(Pointer::Custom103);
    EXPECT_EQ(canvas.cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(canvas.cursor().hotSpot(), QPoint(7, 7));
    ui.SetPointer(Pointer::Arrow);
    EXPECT_EQ(canvas.cursor().shape(), Qt::ArrowCursor);

    // Each drawn cursor differs from the others.
    QList<QImage> images;
    for (int r = 102; r <= 108; ++r)
        images << ToolCursor(r).pixmap().toImage();
    for (int i = 0; i < images.size(); ++i)
        for (int j = i + 1; j < images.size(); ++j)
            EXPECT_NE(images[i], images[j]) << 102 + i << " and " << 102 + j;
}

} // namespace
} // namespace fw::qt
