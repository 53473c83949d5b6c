// FormSelection: which of several shapes and objects under a click to select.
#pragma once

#include <string>
#include <vector>

#include <QDialog>

class QListWidget;
class QPushButton;

namespace fw::qt {

class FormSelection : public QDialog {
    Q_OBJECT
public:
    FormSelection(const std::vector<std::string>& names, QWidget* parent = nullptr);

    QListWidget* list() const { return list_; }
    QPushButton* selectButton() const { return select_; }
    // The list index the form answers: the current entry, else the last.
    int answer() const;

    // There is no cancel: every way out answers the list index, as "&Select" does.
    void reject() override;

private:
    QListWidget* list_ = nullptr;
    QPushButton* select_ = nullptr;
};

// Shows the form modally and answers the chosen index; an empty list shows nothing and answers 0.
int RunFormSelection(const std::vector<std::string>& names, QWidget* parent);

} // namespace fw::qt
