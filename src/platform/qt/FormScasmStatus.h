// The compiler's status dialog: the failure text, "View errors" (the log, while the dialog stands)
// and "&Close".
#pragma once

#include <functional>

#include <QDialog>

class QPushButton;

namespace fw::qt {

class FormScasmStatus : public QDialog {
    Q_OBJECT
public:
    FormScasmStatus(const QString& text, std::function<void()> viewErrors, QWidget* parent = nullptr);

    QPushButton* viewErrorsButton() const { return view_; }
    QPushButton* closeButton() const { return close_; }

private:
    QPushButton* view_ = nullptr;
    QPushButton* close_ = nullptr;
};

} // namespace fw::qt
