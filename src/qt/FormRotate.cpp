#include "qt/FormRotate.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/FormModels.h"
#include "qt/FormBase.h"
#include "qt/QtText.h"
#include "qt/QtUi.h"

namespace fw::qt {

TextFormDialog::TextFormDialog(TextForm& form, QWidget* parent) : QDialog(parent), form_(form)
{
    setObjectName(form.name.empty() ? QStringLiteral("TextForm") : ToQt(form.name));
    setWindowTitle(ToQt(form.title));
    setModal(true);

    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < form.texts.size(); ++i) {
        auto* edit = new FilteredLineEdit(form.keyFilter, this);
        edit->setObjectName(QString("Text%1").arg(i + 1));
        edit->setText(ToQt(form.texts[i]));
        // The caret waits at the end of the value, nothing selected, also when the box takes the
        // focus (the line edit would select all of it).
        edit->setCursorPosition(static_cast<int>(edit->text().size()));
        edit->onFocus = [edit] {
            edit->deselect();
            edit->setCursorPosition(static_cast<int>(edit->text().size()));
        };
        edit->setMinimumWidth(120);
        const QString caption = i < form.labels.size() ? ToQt(form.labels[i]) : QString();
        auto* label = new QLabel(caption, this);
        label->setBuddy(edit);
        grid->addWidget(label, static_cast<int>(i), 0);
        grid->addWidget(edit, static_cast<int>(i), 1);
        texts_.push_back(edit);
    }
    if (!form.checkCaption.empty()) {
        check_ = new QCheckBox(ToQt(form.checkCaption), this);
        check_->setObjectName("Check1");
        check_->setChecked(form.checked);
        connect(check_, &QCheckBox::toggled, this, &TextFormDialog::UpdateEnabled);
        grid->addWidget(check_, grid->rowCount(), 1);
    }

    ok_ = new QPushButton("OK", this);
    ok_->setObjectName("OK");
    ok_->setDefault(true);
    cancel_ = new QPushButton(kFormCancel, this);
    cancel_->setObjectName("Cancel");
    connect(ok_, &QPushButton::clicked, this, &TextFormDialog::Ok);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addStretch(1);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    FitTitle(this);

    UpdateEnabled();
    if (!texts_.empty())
        texts_.front()->setFocus();
}

QLineEdit* TextFormDialog::text(int index) const
{
    if (index < 0 || index >= static_cast<int>(texts_.size()))
        return nullptr;
    return texts_[static_cast<std::size_t>(index)];
}

void TextFormDialog::UpdateEnabled()
{
    const int off = form_.disabledWhileChecked;
    for (std::size_t i = 0; i < texts_.size(); ++i)
        texts_[i]->setEnabled(!(check_ && check_->isChecked() && static_cast<int>(i) == off));
}

void TextFormDialog::Ok()
{
    for (std::size_t i = 0; i < texts_.size() && i < form_.texts.size(); ++i)
        form_.texts[i] = FromQt(texts_[i]->text());
    if (check_)
        form_.checked = check_->isChecked();
    // A refused value keeps the form open; the check has told the user why.
    if (form_.onOk && !form_.onOk(form_))
        return;
    accept();
}

bool RunTextFormDialog(TextForm& form, QWidget* parent)
{
    TextFormDialog dialog(form, parent);
    return dialog.exec() == QDialog::Accepted;
}

bool QtUi::RunTextForm(TextForm& form) { return RunTextFormDialog(form, parent_); }

} // namespace fw::qt
