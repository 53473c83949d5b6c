#include "qt/FormSign.h"

#include <algorithm>
#include <functional>

#include <QDialog>
#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "qt/FormBase.h"
#include "qt/FormShape.h"
#include "qt/QtText.h"

namespace fw::qt {

namespace {

// A cell at its size on the sign: 32 by 32, or 64 by 32 for a runway number.
QSize CellSize(const std::string& cellType)
{
    return {cellType == "RwyInstruction" ? 64 : 32, 32};
}

QImage CellPicture(const QImage& sheet, const std::string& cellType, int i)
{
    const SheetRect r = SignCellOnSheet(cellType, i);
    return sheet.copy(r.x, r.y, r.w, r.h).scaled(CellSize(cellType));
}

// The cells of one type in rows, with a mark that follows the pressed mouse; the cell under the
// mark when the button comes up is the choice.
class SignCellGrid : public QWidget {
public:
    SignCellGrid(const QImage& sheet, const std::string& cellType, int current, QWidget* parent)
        : QWidget(parent), cell_(CellSize(cellType)), columns_(cellType == "RwyInstruction" ? 4 : 8), mark_(current)
    {
        const int n = static_cast<int>(SignCells(cellType).size());
        for (int i = 0; i < n; ++i)
            pictures_.push_back(CellPicture(sheet, cellType, i));
        const int rows = (n + columns_ - 1) / columns_;
        setFixedSize(std::min(n, columns_) * cell_.width() + 1, rows * cell_.height() + 1);
    }
    std::function<void(int)> onChoose;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        for (int i = 0; i < static_cast<int>(pictures_.size()); ++i)
            p.drawImage(Cell(i).topLeft(), pictures_[static_cast<std::size_t>(i)]);
        if (mark_ >= 0) {
            const QRect r = Cell(mark_);
            p.setPen(QPen(Qt::black, 1));
            p.drawRect(r.adjusted(0, 0, -1, -1));
            p.setPen(QPen(Qt::white, 1));
            p.drawRect(r.adjusted(1, 1, -2, -2));
        }
    }
    void mousePressEvent(QMouseEvent* e) override { Track(e->pos()); }
    void mouseMoveEvent(QMouseEvent* e) override { Track(e->pos()); }
    void mouseReleaseEvent(QMouseEvent* e) override
    {
        Track(e->pos());
        if (mark_ >= 0 && onChoose)
            onChoose(mark_);
    }

private:
    QRect Cell(int i) const
    {
        return {(i % columns_) * cell_.width(), (i / columns_) * cell_.height(), cell_.width(), cell_.height()};
    }
    void Track(const QPoint& pos)
    {
        mark_ = -1;
        for (int i = 0; i < static_cast<int>(pictures_.size()); ++i)
            if (Cell(i).contains(pos))
                mark_ = i;
        update();
    }

    QSize cell_;
    int columns_;
    int mark_;
    std::vector<QImage> pictures_;
};

int CellIndex(const std::string& cellType, const std::string& item)
{
    const std::vector<std::string> cells = SignCells(cellType);
    const auto it = std::find(cells.begin(), cells.end(), item);
    return it == cells.end() ? -1 : static_cast<int>(it - cells.begin());
}

} // namespace

bool RunFormSignSelect(const QImage& sheet, const std::string& cellType, const std::string& current, std::string& item,
                       QWidget* parent)
{
    QDialog d(parent);
    d.setObjectName("FormSignSelect");
    d.setWindowTitle("Select sign element");
    const std::vector<std::string> cells = SignCells(cellType);
    auto* grid = new SignCellGrid(sheet, cellType, CellIndex(cellType, current), &d);
    grid->setObjectName("Cells");
    std::string chosen;
    grid->onChoose = [&](int i) {
        chosen = cells[static_cast<std::size_t>(i)];
        d.accept();
    };
    auto* remove = new QPushButton("&Remove", &d);
    remove->setObjectName("Command1");
    QObject::connect(remove, &QPushButton::clicked, &d, [&] {
        chosen.clear();
        d.accept();
    });
    auto* layout = new QVBoxLayout(&d);
    layout->addWidget(grid);
    layout->addWidget(remove, 0, Qt::AlignRight);
    FitTitle(&d);
    if (d.exec() != QDialog::Accepted)
        return false;
    item = chosen;
    return true;
}

bool RunFormSign(ObjectRecord& record, const ValueContext& ctx, const std::string& sheetPath,
                 const std::string& programFolder, QWidget* parent)
{
    std::string label;
    const QImage sheet = TexturePicture(sheetPath, programFolder, 256, 256, label);
    FormSign model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(FormSign::kName, FormSign::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    auto* top = new QGridLayout;
    AddRow(top, "Heading:", form.Text("Heading", [sep](int k) { return DecimalKey(k, sep); }));
    AddRow(top, "Style:", form.Combo("Style", SignStyleList()));

    auto* tabs = new QTabWidget(&form);
    std::array<std::array<QPushButton*, 3>, 5> pictures{};
    // Each item picture shows its cell of the sheet, "..." while the slot is empty.
    const auto showPanel = [&](int p) {
        for (int i = 0; i < 3; ++i) {
            QPushButton* b = pictures[p][i];
            const std::string type = SignCellType(model.buffer[p], i);
            const int cell = CellIndex(type, model.buffer[p].items[i]);
            b->setIcon(cell < 0 ? QIcon() : QIcon(QPixmap::fromImage(CellPicture(sheet, type, cell))));
            b->setIconSize(CellSize(type));
            b->setText(cell < 0 ? QStringLiteral("...") : QString());
            b->setToolTip(ToQt(model.buffer[p].items[i]));
            b->setEnabled(!model.buffer[p].type.empty());
        }
    };
    static const char* const kKeys[5] = {"one", "two", "three", "four", "five"};
    for (int p = 0; p < 5; ++p) {
        auto* page = new QWidget;
        page->setObjectName(kKeys[p]);
        auto* pl = new QVBoxLayout(page);
        std::vector<QWidget*> options;
        QButtonGroup* group = form.Options("Type" + std::to_string(p + 1),
                                           {"Direction", "Runway instruction", "Location", "None"}, options);
        auto* optionRow = new QHBoxLayout;
        for (QWidget* o : options)
            optionRow->addWidget(o);
        pl->addLayout(optionRow);
        auto* itemRow = new QHBoxLayout;
        for (int i = 0; i < 3; ++i) {
            pictures[p][i] = new QPushButton(page);
            pictures[p][i]->setMinimumSize(64, 48);
            itemRow->addWidget(pictures[p][i]);
            QObject::connect(pictures[p][i], &QPushButton::clicked, &form, [&, p, i] {
                std::string item;
                if (RunFormSignSelect(sheet, SignCellType(model.buffer[p], i), model.buffer[p].items[i], item, &form)) {
                    model.buffer[p].items[i] = item;
                    showPanel(p);
                }
            });
        }
        pl->addLayout(itemRow);
        pl->addStretch(1);
        QObject::connect(group, &QButtonGroup::idClicked, &form, [&, p](int id) {
            model.SetPanelType(p, id);
            showPanel(p);
        });
        tabs->addTab(page, QString("Panel %1").arg(p + 1));
    }
    auto* layout = new QVBoxLayout(&form);
    layout->addLayout(top);
    layout->addWidget(tabs);
    layout->addWidget(form.Buttons());
    form.Load(model.values);
    for (int p = 0; p < 5; ++p)
        showPanel(p);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
