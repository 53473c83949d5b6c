#include "platform/qt/FormSign.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "platform/qt/FormBase.h"
#include "platform/qt/QtText.h"

namespace fw::qt {

bool RunFormSignSelect(const std::string& cellType, const std::string& current, std::string& item, QWidget* parent)
{
    QDialog d(parent);
    d.setObjectName("FormSignSelect");
    d.setWindowTitle("Select sign element");
    auto* grid = new QGridLayout;
    const std::vector<std::string> cells = SignCells(cellType);
    const int columns = cellType == "RwyInstruction" ? 4 : 8;
    std::string chosen;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        auto* b = new QPushButton(ToQt(cells[i]), &d);
        b->setCheckable(true);
        b->setChecked(cells[i] == current);
        b->setMinimumWidth(cellType == "RwyInstruction" ? 64 : 32);
        QObject::connect(b, &QPushButton::clicked, &d, [&, i] {
            chosen = cells[i];
            d.accept();
        });
        grid->addWidget(b, static_cast<int>(i) / columns, static_cast<int>(i) % columns);
    }
    auto* remove = new QPushButton("&Remove", &d);
    remove->setObjectName("Command1");
    QObject::connect(remove, &QPushButton::clicked, &d, [&] {
        chosen.clear();
        d.accept();
    });
    auto* layout = new QVBoxLayout(&d);
    layout->addLayout(grid);
    layout->addWidget(remove, 0, Qt::AlignRight);
    if (d.exec() != QDialog::Accepted)
        return false;
    item = chosen;
    return true;
}

bool RunFormSign(ObjectRecord& record, const ValueContext& ctx, const std::string&, QWidget* parent)
{
    FormSign model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(FormSign::kName, FormSign::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    auto* top = new QGridLayout;
    AddRow(top, "Heading:", form.Text("Heading", [sep](int k) { return DecimalKey(k, sep); }));
    AddRow(top, "Style:", form.Combo("Style", SignStyleList()));

    auto* tabs = new QTabWidget(&form);
    std::array<std::array<QPushButton*, 3>, 5> pictures{};
    const auto showPanel = [&](int p) {
        for (int i = 0; i < 3; ++i) {
            const std::string& it = model.buffer[p].items[i];
            pictures[p][i]->setText(it.empty() ? QStringLiteral("...") : ToQt(it));
            pictures[p][i]->setEnabled(!model.buffer[p].type.empty());
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
                if (RunFormSignSelect(SignCellType(model.buffer[p], i), model.buffer[p].items[i], item, &form)) {
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
