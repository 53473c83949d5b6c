// FormConvertShape: the new type of the selected shapes, and its settings.
#pragma once

#include <functional>
#include <vector>

#include <QDialog>

#include "core/Records.h"

class QButtonGroup;
class QPushButton;
class QRadioButton;

namespace fw::qt {

class FormConvertShape : public QDialog {
    Q_OBJECT
public:
    // copies: the five default records in choice order (Poly, wide line, dotted line, tree line,
    // forest). settings edits one of them and answers true for OK; it is kept only then.
    FormConvertShape(std::vector<ShapeRecord>& copies, std::function<bool(ShapeRecord&)> settings,
                     QWidget* parent = nullptr);

    QRadioButton* option(int index) const;
    QPushButton* settingsButton() const { return settings_; }
    QPushButton* okButton() const { return ok_; }
    QPushButton* cancelButton() const { return cancel_; }
    // The type code of the checked choice.
    int choice() const;

private:
    void Settings();

    std::vector<ShapeRecord>& copies_;
    std::function<bool(ShapeRecord&)> editSettings_;
    QButtonGroup* group_ = nullptr;
    std::vector<QRadioButton*> options_;
    QPushButton* settings_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

// Shows the form modally: the chosen type code, or 0 when cancelled.
int RunFormConvertShape(std::vector<ShapeRecord>& copies, std::function<bool(ShapeRecord&)> settings,
                        QWidget* parent);

} // namespace fw::qt
