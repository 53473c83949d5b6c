// The rotate and rescale forms: a view over the editor's TextForm (its labels, texts, the check
// box and the checks on OK).
#pragma once

#include <vector>

#include <QDialog>

#include "ports/Ui.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace fw::qt {

class FilteredLineEdit;

class TextFormDialog : public QDialog {
    Q_OBJECT
public:
    // form must outlive the dialog; OK writes the typed texts and the check box back into it.
    TextFormDialog(TextForm& form, QWidget* parent = nullptr);

    QLineEdit* text(int index) const;
    QCheckBox* check() const { return check_; }
    QPushButton* okButton() const { return ok_; }
    QPushButton* cancelButton() const { return cancel_; }

private:
    void Ok();
    void UpdateEnabled();

    TextForm& form_;
    std::vector<FilteredLineEdit*> texts_;
    QCheckBox* check_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

// Shows the form modally; true when it ended with OK and the form's checks passed.
bool RunTextFormDialog(TextForm& form, QWidget* parent);

} // namespace fw::qt
