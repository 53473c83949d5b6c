#include "platform/qt/FormScasmStatus.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace fw::qt {

FormScasmStatus::FormScasmStatus(const QString& text, std::function<void()> viewErrors, QWidget* parent)
    : QDialog(parent)
{
    setObjectName("FormScasmStatus");
    setWindowTitle("SCASM status");
    setModal(true);

    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size, size));
    auto* label = new QLabel(text, this);
    label->setWordWrap(true);
    label->setMinimumWidth(300);

    view_ = new QPushButton("View errors", this);
    close_ = new QPushButton("&Close", this);
    close_->setDefault(true);
    // Viewing the log keeps the dialog: the log is removed once it closes.
    connect(view_, &QPushButton::clicked, this, [viewErrors = std::move(viewErrors)] {
        if (viewErrors)
            viewErrors();
    });
    connect(close_, &QPushButton::clicked, this, &QDialog::accept);

    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addWidget(label, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(view_);
    buttons->addWidget(close_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
}

} // namespace fw::qt
