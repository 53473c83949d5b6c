// What every property form shares: controls bound by name to the model's FormValues, key
// filters on the text fields, OK running the model's checks, and a close that may be refused.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSlider>

#include "dialogs/FormValues.h"

class QGridLayout;
class QPushButton;

namespace fw::qt {

// A line edit whose typed characters pass a key filter first (0 drops the key).
class FilteredLineEdit : public QLineEdit {
public:
    explicit FilteredLineEdit(std::function<int(int)> filter, QWidget* parent = nullptr)
        : QLineEdit(parent), filter_(std::move(filter)) {}
    std::function<void()> onFocus;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    std::function<int(int)> filter_;
};

class FormBase : public QDialog {
public:
    FormBase(const QString& name, const QString& title, QWidget* parent);

    // Controls bound to a value name.
    FilteredLineEdit* Text(const std::string& name, std::function<int(int)> filter = {});
    QCheckBox* Check(const std::string& name, const QString& caption);
    QComboBox* Combo(const std::string& name, const std::vector<std::string>& items);
    QSlider* Slider(const std::string& name, int lo, int hi);
    // Option buttons: the value is the position of the checked one.
    QButtonGroup* Options(const std::string& name, const QStringList& captions, std::vector<QWidget*>& buttons);

    void Load(const FormValues& values);
    void Save(FormValues& values) const;

    // The OK and Cancel buttons at the foot of the form.
    QWidget* Buttons(const QString& cancelText = QStringLiteral("Cancel"));
    QPushButton* okButton = nullptr;
    QPushButton* cancelButton = nullptr;

    // OK: true when the model stored the values.
    std::function<bool()> onOk;
    // Closing without OK: false keeps the form open.
    std::function<bool()> canClose;

    void reject() override;
    // The title is fitted (FitTitle) when the form first shows, once its fields are laid out.
    void setVisible(bool visible) override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::map<std::string, QLineEdit*> texts_;
    std::map<std::string, QCheckBox*> checks_;
    std::map<std::string, QComboBox*> combos_;
    std::map<std::string, QSlider*> sliders_;
    std::map<std::string, QButtonGroup*> options_;
};

// The width a window needs for the window manager to show its whole title: the title in the bold
// title font and an eighth more, and about 150 pixels for the frame's icon and buttons.
int TitleRoom(const QString& title);
// Widens a window's layout to TitleRoom of its title. Once per window; a window without a
// layout gets a minimum width instead.
void FitTitle(QWidget* window);

// The frame the window manager puts around a window: what the window has now, but at least a
// title bar and thin borders, as before the first show nobody knows it yet.
QMargins FrameAllowance(const QWidget& window);

// A label and a widget in the next row of a grid.
void AddRow(QGridLayout* grid, const QString& label, QWidget* field, const QString& after = {});
// The highlighted row of a texture list, -1 for none. A list makes its first row current without
// highlighting it when it gets the focus; that row is not the user's choice.
int SelectedRow(const QListWidget* list);

} // namespace fw::qt
