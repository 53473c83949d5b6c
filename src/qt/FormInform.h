// The design tips form: a text, "Don't show again" and one button.
#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;

namespace fw::qt {

class FormInform : public QDialog {
    Q_OBJECT
public:
    // flag 1 shows the check box, -1 hides it.
    FormInform(const QString& text, int flag, QWidget* parent = nullptr);

    QCheckBox* dontShowAgain() const { return check_; }
    QLabel* label() const { return label_; }
    // The flag the caller keeps: 0 when the box was checked, else the flag it came with.
    int result(int flag) const;

private:
    QLabel* label_ = nullptr;
    QCheckBox* check_ = nullptr;
};

} // namespace fw::qt
