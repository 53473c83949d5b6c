#include "qt/FormInform.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "qt/FormBase.h"

namespace fw::qt {

FormInform::FormInform(const QString& text, int flag, QWidget* parent) : QDialog(parent)
{
    setObjectName("FormInform");
    setWindowTitle("Fieldwright design tips");
    setModal(true);

    label_ = new QLabel(text, this);
    label_->setWordWrap(true);
    label_->setMinimumWidth(320);
    check_ = new QCheckBox("Don't show again", this);
    check_->setVisible(flag != -1);
    auto* ok = new QPushButton("OK", this);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(check_);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    layout->addLayout(buttons);
    FitTitle(this);
}

int FormInform::result(int flag) const
{
    if (flag == 1 && check_->isChecked())
        return 0;
    return flag;
}

} // namespace fw::qt
