#include "qt/QtUi.h"

#include <QApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QStringList>
#include <QUrl>

#include "qt/CanvasWidget.h"
#include "qt/FormBrowse.h"
#include "qt/FormInform.h"
#include "qt/FormScasmStatus.h"
#include "qt/FormSettings.h"
#include "qt/QtText.h"
#include "qt/ToolIcons.h"

namespace fw::qt {

namespace {

QString TitleOr(const std::string& title)
{
    return title.empty() ? QStringLiteral("Fieldwright") : ToQt(title);
}

QMessageBox::Icon IconOf(MessageStyle style)
{
    switch (style) {
    case MessageStyle::Critical: return QMessageBox::Critical;
    case MessageStyle::Information: return QMessageBox::Information;
    case MessageStyle::Exclamation: return QMessageBox::Warning;
    case MessageStyle::Question: return QMessageBox::Question;
    }
    return QMessageBox::Information;
}

// "*.*" means every file on the host that named it; here that is "*".
QString HostPattern(QString pattern)
{
    pattern = pattern.trimmed();
    pattern.replace(';', ' ');
    QStringList parts = pattern.split(' ', Qt::SkipEmptyParts);
    for (QString& p : parts)
        if (p == "*.*")
            p = "*";
    return parts.join(' ');
}

// The first "*.ext" of a pattern as a default suffix, or empty.
QString SuffixOf(const QString& pattern)
{
    for (const QString& p : pattern.split(' ', Qt::SkipEmptyParts))
        if (p.startsWith("*.") && p.size() > 2 && p.indexOf(QChar(0x2A), 1) < 0)
            return p.mid(2);
    return {};
}

} // namespace

QString QtFileFilter(const std::string& filter)
{
    const QStringList pieces = ToQt(filter).split('|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        QString description = pieces[i].trimmed();
        const QString pattern = HostPattern(pieces[i + 1]);
        // Qt reads the patterns from the last parentheses of the description.
        const qsizetype open = description.lastIndexOf('(');
        if (open >= 0 && description.endsWith(')'))
            description = description.left(open).trimmed();
        entries << description + " (" + pattern + ")";
    }
    if (pieces.size() % 2 == 1 && !pieces.back().trimmed().isEmpty() && entries.isEmpty())
        entries << pieces.back().trimmed();
    return entries.join(";;");
}

QtUi::~QtUi()
{
    if (waitCursor_)
        QApplication::restoreOverrideCursor();
}

void QtUi::Message(const std::string& text, MessageStyle style, const std::string& title)
{
    QMessageBox box(IconOf(style), TitleOr(title), ToQt(text), QMessageBox::Ok, parent_);
    box.exec();
}

Answer QtUi::AskYesNoCancel(const std::string& text, const std::string& title)
{
    QMessageBox box(QMessageBox::Question, TitleOr(title), ToQt(text),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    default: return Answer::Cancel;
    }
}

Answer QtUi::AskYesNo(const std::string& text, const std::string& title)
{
    QMessageBox box(QMessageBox::Question, TitleOr(title), ToQt(text), QMessageBox::Yes | QMessageBox::No,
                    parent_);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

bool QtUi::ChooseFile(const FileDialogRequest& request, std::string& path)
{
    QFileDialog dialog(parent_, ToQt(request.title), PathToQt(request.startFolder));
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    const QString filters = QtFileFilter(request.filter);
    if (!filters.isEmpty())
        dialog.setNameFilters(filters.split(";;"));
    if (request.save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        const QStringList pieces = ToQt(request.filter).split('|');
        if (pieces.size() >= 2)
            dialog.setDefaultSuffix(SuffixOf(HostPattern(pieces[1])));
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (!request.defaultName.empty())
        dialog.selectFile(ToQt(request.defaultName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    path = PathFromQt(dialog.selectedFiles().front());
    return true;
}

bool QtUi::ChooseFolder(const std::string& title, const std::string& start, std::string& folder)
{
    // The title is the picker's prompt, shown inside it.
    QString chosen;
    if (!RunFormBrowse(ToQt(title), PathToQt(start), chosen, parent_))
        return false;
    folder = PathFromQt(chosen);
    return true;
}

int QtUi::ShowTip(const std::string& text, int flag)
{
    if (flag == 0)
        return 0;
    FormInform form(ToQt(text), flag, parent_);
    form.exec();
    return form.result(flag);
}

void QtUi::SetWaitCursor(bool on)
{
    if (on == waitCursor_)
        return;
    waitCursor_ = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtUi::SetPointer(Pointer pointer)
{
    if (!canvas_)
        return;
    switch (pointer) {
    case Pointer::Arrow: canvas_->setCursor(Qt::ArrowCursor); break;
    case Pointer::Wait: canvas_->setCursor(Qt::WaitCursor); break;
    case Pointer::Cross: canvas_->setCursor(Qt::CrossCursor); break;
    case Pointer::SizeAll: canvas_->setCursor(Qt::SizeAllCursor); break;
    case Pointer::SizeNESW: canvas_->setCursor(Qt::SizeBDiagCursor); break;
    case Pointer::SizeNS: canvas_->setCursor(Qt::SizeVerCursor); break;
    case Pointer::SizeNWSE: canvas_->setCursor(Qt::SizeFDiagCursor); break;
    case Pointer::SizeWE: canvas_->setCursor(Qt::SizeHorCursor); break;
    case Pointer::Custom101: canvas_->setCursor(ToolCursor(101)); break;
    case Pointer::Custom102: canvas_->setCursor(ToolCursor(102)); break;
    case Pointer::Custom103: canvas_->setCursor(ToolCursor(103)); break;
    case Pointer::Custom104: canvas_->setCursor(ToolCursor(104)); break;
    case Pointer::Custom105: canvas_->setCursor(ToolCursor(105)); break;
    case Pointer::Custom106: canvas_->setCursor(ToolCursor(106)); break;
    case Pointer::Custom107: canvas_->setCursor(ToolCursor(107)); break;
    case Pointer::Custom108: canvas_->setCursor(ToolCursor(108)); break;
    }
}

bool QtUi::OpenExternal(const std::string& pathOrUrl)
{
    const bool isUrl = pathOrUrl.find("://") != std::string::npos;
    const QUrl url = isUrl ? QUrl(ToQt(pathOrUrl)) : QUrl::fromLocalFile(PathToQt(pathOrUrl));
    return QDesktopServices::openUrl(url);
}

void QtUi::ShowScasmStatus(const std::string& text, const std::string& logPath)
{
    FormScasmStatus form(ToQt(text), PathToQt(logPath), [this, logPath] { return OpenExternal(logPath); }, parent_);
    form.exec();
}

void QtUi::PopupMenu(const std::string& name)
{
    QMenu* menu = menuLookup_ ? menuLookup_(QString::fromStdString(name)) : nullptr;
    if (menu)
        menu->exec(QCursor::pos());
}

bool QtUi::ProjectSettings(ProjectRecord& project, bool newProject)
{
    if (!session_)
        return false;
    return RunFormSettings(project, newProject, session_->values(), session_->config, session_->programFolder,
                           parent_);
}

void QtUi::Repaint()
{
    // PaintFrame runs at once, inside the event that asked for it: a pan's preview lives only
    // for the length of this call.
    if (auto* canvas = qobject_cast<CanvasWidget*>(canvas_.data()))
        canvas->PaintNow();
    else if (canvas_)
        canvas_->update();
}

} // namespace fw::qt
