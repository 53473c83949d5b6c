#include "qt/FormConvertShape.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "editor/FormModels.h"
#include "qt/FormBase.h"
#include "qt/QtUi.h"

namespace fw::qt {

FormConvertShape::FormConvertShape(std::vector<ShapeRecord>& copies, std::function<bool(ShapeRecord&)> settings,
                                   QWidget* parent)
    : QDialog(parent), copies_(copies), editSettings_(std::move(settings))
{
    setObjectName("FormConvertShape");
    setWindowTitle(kFormConvertTitle);
    setModal(true);

    auto* label = new QLabel(kFormConvertLabel, this);
    group_ = new QButtonGroup(this);
    auto* choices = new QVBoxLayout;
    for (int i = 0; i < 5; ++i) {
        auto* b = new QRadioButton(kConvertChoices[i].caption, this);
        b->setObjectName(QString("Option%1").arg(i + 1));
        group_->addButton(b, kConvertChoices[i].code);
        choices->addWidget(b);
        options_.push_back(b);
    }
    options_.front()->setChecked(true);

    settings_ = new QPushButton(kFormConvertSettings, this);
    settings_->setObjectName("Settings");
    ok_ = new QPushButton("OK", this);
    ok_->setObjectName("OK");
    ok_->setDefault(true);
    cancel_ = new QPushButton(kFormCancel, this);
    cancel_->setObjectName("Cancel");
    connect(settings_, &QPushButton::clicked, this, &FormConvertShape::Settings);
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    buttons->addStretch(1);
    buttons->addWidget(settings_);
    auto* body = new QHBoxLayout;
    body->addLayout(choices, 1);
    body->addSpacing(24);
    body->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addLayout(body);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    FitTitle(this);
}

QRadioButton* FormConvertShape::option(int index) const
{
    if (index < 0 || index >= static_cast<int>(options_.size()))
        return nullptr;
    return options_[static_cast<std::size_t>(index)];
}

int FormConvertShape::choice() const
{
    const int code = group_->checkedId();
    return code > 0 ? code : kConvertChoices[0].code;
}

void FormConvertShape::Settings()
{
    for (std::size_t i = 0; i < options_.size(); ++i) {
        if (!options_[i]->isChecked())
            continue;
        if (i >= copies_.size() || !editSettings_)
            return;
        // The dialog works on its own copy; only OK keeps what it changed.
        ShapeRecord edited = copies_[i];
        if (editSettings_(edited))
            copies_[i] = edited;
        return;
    }
}

int RunFormConvertShape(std::vector<ShapeRecord>& copies, std::function<bool(ShapeRecord&)> settings,
                        QWidget* parent)
{
    fw::qt::FormConvertShape form(copies, std::move(settings), parent);
    if (form.exec() != QDialog::Accepted)
        return 0;
    return form.choice();
}

int QtUi::FormConvertShape(std::vector<ShapeRecord>& copies)
{
    return RunFormConvertShape(
        copies,
        [this](ShapeRecord& shape) {
            // The shape dialog stands over the convert form, not behind it.
            QPointer<QWidget> owner = parent_;
            parent_ = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : owner.data();
            const bool ok = ShapeProperties(shape, nullptr);
            parent_ = owner;
            return ok;
        },
        parent_);
}

} // namespace fw::qt
