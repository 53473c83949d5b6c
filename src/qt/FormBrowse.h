// The folder picker `FormBrowse`, titled "Browse": the prompt stands inside it, above the host's
// folder list, where a title bar would cut it.
#pragma once

#include <QDialog>
#include <QString>

class QFileDialog;
class QLabel;

namespace fw::qt {

class FormBrowse : public QDialog {
    Q_OBJECT
public:
    FormBrowse(const QString& prompt, const QString& start, QWidget* parent = nullptr);

    // The folder chosen, once the dialog was accepted.
    QString folder() const;
    QLabel* promptLabel() const { return prompt_; }
    QFileDialog* picker() const { return picker_; }

private:
    QLabel* prompt_ = nullptr;
    QFileDialog* picker_ = nullptr;
};

// Asks for a folder: false when the user cancelled (folder keeps what it had).
bool RunFormBrowse(const QString& prompt, const QString& start, QString& folder, QWidget* parent);

} // namespace fw::qt
