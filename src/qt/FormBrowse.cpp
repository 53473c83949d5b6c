#include "qt/FormBrowse.h"

#include <QFileDialog>
#include <QLabel>
#include <QVBoxLayout>

#include "qt/FormBase.h"

namespace fw::qt {

FormBrowse::FormBrowse(const QString& prompt, const QString& start, QWidget* parent) : QDialog(parent)
{
    setObjectName("FormBrowse");
    setWindowTitle("Browse");
    setModal(true);

    prompt_ = new QLabel(prompt, this);
    prompt_->setObjectName("Prompt");
    prompt_->setWordWrap(true);

    // The host's folder list, as a part of this window rather than a window of its own.
    picker_ = new QFileDialog(this);
    // A dialog given no window type becomes a window of its own: this makes it a part of ours.
    picker_->setWindowFlags(Qt::Widget);
    picker_->setObjectName("Folders");
    picker_->setOption(QFileDialog::DontUseNativeDialog, true);
    picker_->setOption(QFileDialog::ShowDirsOnly, true);
    picker_->setFileMode(QFileDialog::Directory);
    picker_->setAcceptMode(QFileDialog::AcceptOpen);
    if (!start.isEmpty())
        picker_->setDirectory(start);
    connect(picker_, &QDialog::finished, this, [this](int result) { done(result); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(prompt_);
    layout->addWidget(picker_, 1);
    FitTitle(this);
    resize(640, 440);
}

QString FormBrowse::folder() const
{
    const QStringList chosen = picker_->selectedFiles();
    return chosen.isEmpty() ? QString() : chosen.front();
}

bool RunFormBrowse(const QString& prompt, const QString& start, QString& folder, QWidget* parent)
{
    FormBrowse form(prompt, start, parent);
    if (form.exec() != QDialog::Accepted || form.folder().isEmpty())
        return false;
    folder = form.folder();
    return true;
}

} // namespace fw::qt
