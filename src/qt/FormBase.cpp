#include "qt/FormBase.h"

#include <algorithm>

#include <QBoxLayout>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSpacerItem>

#include "qt/QtText.h"

namespace fw::qt {

void FilteredLineEdit::keyPressEvent(QKeyEvent* event)
{
    const QString text = event->text();
    if (filter_ && text.size() == 1 && text[0].unicode() >= 32 && text[0].unicode() < 256) {
        const int key = filter_(text[0].unicode());
        if (key == 0)
            return;
        if (key != text[0].unicode()) {
            insert(QString(QChar(key)));
            return;
        }
    }
    QLineEdit::keyPressEvent(event);
}

void FilteredLineEdit::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (onFocus)
        onFocus();
}

FormBase::FormBase(const QString& name, const QString& title, QWidget* parent) : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    setModal(true);
}

FilteredLineEdit* FormBase::Text(const std::string& name, std::function<int(int)> filter)
{
    auto* e = new FilteredLineEdit(std::move(filter), this);
    e->setObjectName(QString::fromStdString(name));
    texts_[name] = e;
    return e;
}

QCheckBox* FormBase::Check(const std::string& name, const QString& caption)
{
    auto* c = new QCheckBox(caption, this);
    c->setObjectName(QString::fromStdString(name));
    checks_[name] = c;
    return c;
}

QComboBox* FormBase::Combo(const std::string& name, const std::vector<std::string>& items)
{
    auto* c = new QComboBox(this);
    c->setObjectName(QString::fromStdString(name));
    for (const std::string& item : items)
        c->addItem(ToQt(item));
    combos_[name] = c;
    return c;
}

QSlider* FormBase::Slider(const std::string& name, int lo, int hi)
{
    auto* s = new QSlider(Qt::Horizontal, this);
    s->setObjectName(QString::fromStdString(name));
    s->setRange(lo, hi);
    sliders_[name] = s;
    return s;
}

QButtonGroup* FormBase::Options(const std::string& name, const QStringList& captions, std::vector<QWidget*>& buttons)
{
    auto* g = new QButtonGroup(this);
    for (int i = 0; i < captions.size(); ++i) {
        auto* b = new QRadioButton(captions[i], this);
        b->setObjectName(QString::fromStdString(name) + QString::number(i));
        g->addButton(b, i);
        buttons.push_back(b);
    }
    options_[name] = g;
    return g;
}

void FormBase::Load(const FormValues& v)
{
    for (auto& [n, w] : texts_)
        if (v.Has(n))
            w->setText(ToQt(v.Text(n)));
    for (auto& [n, w] : checks_)
        if (v.Has(n))
            w->setChecked(v.Tick(n));
    for (auto& [n, w] : combos_)
        if (v.Has(n))
            w->setCurrentIndex(v.Int(n) < w->count() ? v.Int(n) : -1);
    for (auto& [n, w] : sliders_)
        if (v.Has(n))
            w->setValue(v.Int(n));
    for (auto& [n, g] : options_)
        if (v.Has(n) && g->button(v.Int(n)))
            g->button(v.Int(n))->setChecked(true);
}

void FormBase::Save(FormValues& v) const
{
    for (const auto& [n, w] : texts_)
        v[n] = FromQt(w->text());
    for (const auto& [n, w] : checks_)
        v.SetTick(n, w->isChecked());
    for (const auto& [n, w] : combos_)
        v.SetInt(n, w->currentIndex());
    for (const auto& [n, w] : sliders_)
        v.SetInt(n, w->value());
    for (const auto& [n, g] : options_)
        v.SetInt(n, g->checkedId());
}

QWidget* FormBase::Buttons(const QString& cancelText)
{
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch(1);
    okButton = new QPushButton(QStringLiteral("OK"), box);
    okButton->setObjectName("OK");
    okButton->setDefault(true);
    cancelButton = new QPushButton(cancelText, box);
    cancelButton->setObjectName("Cancel");
    row->addWidget(okButton);
    row->addWidget(cancelButton);
    connect(okButton, &QPushButton::clicked, this, [this] {
        if (!onOk || onOk())
            accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, [this] { reject(); });
    return box;
}

void FormBase::reject()
{
    if (canClose && !canClose())
        return;
    QDialog::reject();
}

void FormBase::setVisible(bool visible)
{
    if (visible)
        FitTitle(this);
    QDialog::setVisible(visible);
}

void FormBase::closeEvent(QCloseEvent* event)
{
    if (canClose && !canClose()) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

int TitleRoom(const QString& title)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    font.setBold(true);
    const int text = QFontMetrics(font).horizontalAdvance(title);
    // The frame's icon and three buttons take about 150 pixels on the common desktops; an eighth
    // more of the text for a title font larger than ours.
    constexpr int kFrameButtons = 150;
    return text + text / 8 + kFrameButtons;
}

void FitTitle(QWidget* window)
{
    if (!window || window->property("fwTitleFitted").toBool())
        return;
    window->setProperty("fwTitleFitted", true);
    const int needed = TitleRoom(window->windowTitle());
    QLayout* layout = window->layout();
    if (!layout) {
        window->setMinimumWidth(std::max(window->minimumWidth(), needed));
        return;
    }
    const QMargins margins = layout->contentsMargins();
    auto* room = new QSpacerItem(std::max(0, needed - margins.left() - margins.right()), 0, QSizePolicy::Minimum,
                                 QSizePolicy::Fixed);
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
        grid->addItem(room, grid->rowCount(), 0, 1, std::max(1, grid->columnCount()));
        return;
    }
    auto* box = qobject_cast<QBoxLayout*>(layout);
    if (box && (box->direction() == QBoxLayout::LeftToRight || box->direction() == QBoxLayout::RightToLeft)) {
        // Across a row the spacer would add to the width: the window's minimum takes it instead.
        delete room;
        window->setMinimumWidth(std::max(window->minimumWidth(), needed));
        return;
    }
    layout->addItem(room);
}

QMargins FrameAllowance(const QWidget& window)
{
    const QRect outer = window.frameGeometry();
    const QRect inner = window.geometry();
    const QMargins now(inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
                       outer.bottom() - inner.bottom());
    return QMargins(std::max(now.left(), 8), std::max(now.top(), 40), std::max(now.right(), 8),
                    std::max(now.bottom(), 8));
}

void AddRow(QGridLayout* grid, const QString& label, QWidget* field, const QString& after)
{
    const int row = grid->rowCount();
    if (!label.isEmpty())
        grid->addWidget(new QLabel(label), row, 0);
    grid->addWidget(field, row, 1);
    if (!after.isEmpty())
        grid->addWidget(new QLabel(after), row, 2);
}

int SelectedRow(const QListWidget* list)
{
    const QList<QListWidgetItem*> items = list->selectedItems();
    return items.isEmpty() ? -1 : list->row(items.front());
}

} // namespace fw::qt
