#include "qt/FormScasmStatus.h"

#include <algorithm>
#include <string>

#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "qt/FormBase.h"
#include "qt/QtText.h"

namespace fw::qt {

FormScasmStatus::FormScasmStatus(const QString& text, const QString& logPath, std::function<bool()> openExternally,
                                 QWidget* parent)
    : QDialog(parent), logPath_(logPath), openExternally_(std::move(openExternally))
{
    setObjectName("FormScasmStatus");
    setWindowTitle("SCASM status");
    setModal(true);

    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size, size));
    auto* label = new QLabel(text, this);
    label->setWordWrap(true);
    // The one sentence on one line where the screen has room for it.
    label->setMinimumWidth(std::clamp(label->fontMetrics().horizontalAdvance(text) + 4, 300, 480));

    view_ = new QPushButton("View errors", this);
    close_ = new QPushButton("&Close", this);
    close_->setDefault(true);
    // Viewing the log keeps the dialog: the log is removed once it closes.
    connect(view_, &QPushButton::clicked, this, &FormScasmStatus::ViewErrors);
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
    FitTitle(this);
}

void FormScasmStatus::ViewErrors()
{
    // The desktop's viewer when there is one; a machine without a launcher gets the program's own.
    if (openExternally_ && openExternally_())
        return;
    FormScasmLog log(logPath_, this);
    log.exec();
}

QString ReadLogText(const QString& path, bool* readable)
{
    if (readable)
        *readable = false;
    // Only a regular file: a device or a pipe in its place would read without end or block.
    const QFileInfo info(path);
    if (!info.isFile())
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(kMaxLogBytes);
    if (bytes.isNull() && file.error() != QFileDevice::NoError)
        return {};
    if (readable)
        *readable = true;
    QString text = ToQt(std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    text.replace("\r\n", "\n");
    if (!file.atEnd())
        text += "\n[...]";
    return text;
}

FormScasmLog::FormScasmLog(const QString& logPath, QWidget* parent) : QDialog(parent)
{
    setObjectName("FormScasmLog");
    setWindowTitle("SCASM errors");
    setModal(true);

    auto* where = new QLabel(QFileInfo(logPath).absoluteFilePath(), this);
    where->setObjectName("LogPath");
    where->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bool readable = false;
    const QString text = ReadLogText(logPath, &readable);
    text_ = new QPlainTextEdit(this);
    text_->setObjectName("LogText");
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setPlainText(text);
    text_->setPlaceholderText(readable ? QStringLiteral("The compiler wrote nothing into its log.")
                                       : QStringLiteral("The compiler left no log that could be read."));
    const QFontMetrics metrics(text_->font());
    text_->setMinimumSize(metrics.horizontalAdvance(QLatin1Char('x')) * 80, metrics.lineSpacing() * 20);

    close_ = new QPushButton("&Close", this);
    close_->setObjectName("Close");
    close_->setDefault(true);
    connect(close_, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(where);
    layout->addWidget(text_, 1);
    layout->addLayout(buttons);
    FitTitle(this);
}

} // namespace fw::qt
