// The compiler's status dialog: the failure text, "View errors" (the log, while the dialog stands)
// and "&Close"; and the program's own read-only window for the log.
#pragma once

#include <functional>

#include <QDialog>
#include <QString>

class QPlainTextEdit;
class QPushButton;

namespace fw::qt {

class FormScasmStatus : public QDialog {
    Q_OBJECT
public:
    // "View errors" asks openExternally to open the log in the desktop's viewer; when it opens
    // nothing (false, or none given) the log is shown in a read-only window of the program.
    FormScasmStatus(const QString& text, const QString& logPath, std::function<bool()> openExternally,
                    QWidget* parent = nullptr);

    QPushButton* viewErrorsButton() const { return view_; }
    QPushButton* closeButton() const { return close_; }

private:
    void ViewErrors();

    QString logPath_;
    std::function<bool()> openExternally_;
    QPushButton* view_ = nullptr;
    QPushButton* close_ = nullptr;
};

// The log as text for the window: at most kMaxLogBytes of a regular file, Windows-1252, lines
// ended by CR LF or LF. Empty when there is no such file or it can't be read.
constexpr qint64 kMaxLogBytes = 1 << 20;
QString ReadLogText(const QString& path, bool* readable = nullptr);

// The read-only window of a log, `FormScasmLog`, titled "SCASM errors"; modal over parent, it
// holds its own copy of the text, so the log may go once it is up.
class FormScasmLog : public QDialog {
    Q_OBJECT
public:
    FormScasmLog(const QString& logPath, QWidget* parent = nullptr);
    QPlainTextEdit* textView() const { return text_; }
    QPushButton* closeButton() const { return close_; }

private:
    QPlainTextEdit* text_ = nullptr;
    QPushButton* close_ = nullptr;
};

} // namespace fw::qt
