#include "qt/FormSelection.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/FormModels.h"
#include "qt/FormBase.h"
#include "qt/QtText.h"
#include "qt/QtUi.h"

namespace fw::qt {

FormSelection::FormSelection(const std::vector<std::string>& names, QWidget* parent) : QDialog(parent)
{
    setObjectName("FormSelection");
    setWindowTitle(kFormSelectionTitle);
    setModal(true);

    auto* label = new QLabel(kFormSelectionLabel, this);
    list_ = new QListWidget(this);
    list_->setObjectName("List1");
    list_->setMinimumWidth(300);
    for (const std::string& name : names)
        list_->addItem(ToQt(name));
    if (list_->count() > 0)
        list_->setCurrentRow(list_->count() - 1);

    select_ = new QPushButton(kFormSelectionButton, this);
    select_->setObjectName("Command1");
    select_->setDefault(true);
    connect(select_, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(select_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);
    FitTitle(this);
    list_->setFocus();
}

int FormSelection::answer() const
{
    const int row = list_->currentRow();
    if (row >= 0 && row < list_->count())
        return row;
    return list_->count() > 0 ? list_->count() - 1 : 0;
}

void FormSelection::reject() { accept(); }

int RunFormSelection(const std::vector<std::string>& names, QWidget* parent)
{
    if (names.empty())
        return 0;
    FormSelection form(names, parent);
    form.exec();
    return form.answer();
}

int QtUi::FormSelection(const std::vector<std::string>& names) { return RunFormSelection(names, parent_); }

} // namespace fw::qt
