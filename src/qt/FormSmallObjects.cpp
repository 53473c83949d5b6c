#include "qt/FormSmallObjects.h"

#include <functional>

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "qt/FormBase.h"

namespace fw::qt {

namespace {

// One pattern for all four: show the record, let the caller lay out the fields above the
// buttons, and on OK run the model's checks, which store only when all pass.
template <class Model>
bool RunObjectForm(ObjectRecord& record, const ValueContext& ctx, QWidget* parent,
                   const std::function<void(FormBase&, QVBoxLayout*)>& build)
{
    Model model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(Model::kName, Model::kTitle, parent);
    auto* layout = new QVBoxLayout(&form);
    build(form, layout);
    layout->addWidget(form.Buttons());
    form.Load(model.values);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

std::function<int(int)> Decimal(char sep)
{
    return [sep](int k) { return DecimalKey(k, sep); };
}

// Frequency, range, and the identifier beside the name: the rows an NDB and a VOR share.
void AddNavRows(FormBase& form, QVBoxLayout* layout, char sep)
{
    auto* grid = new QGridLayout;
    AddRow(grid, "Frequency:", form.Text("Text1", Decimal(sep)));
    AddRow(grid, "Range:", form.Text("Text2", [](int k) { return KeyNumber(k, false); }), "Nm (nautical miles)");
    auto* ids = new QWidget;
    auto* idRow = new QHBoxLayout(ids);
    idRow->setContentsMargins(0, 0, 0, 0);
    idRow->addWidget(form.Text("Text3", NameKey));
    idRow->addWidget(form.Text("Text4", NameKey), 2);
    AddRow(grid, "ID and Name:", ids);
    layout->addLayout(grid);
}

} // namespace

bool RunFormOndb(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    return RunObjectForm<FormOndb>(record, ctx, parent, [&](FormBase& form, QVBoxLayout* layout) {
        AddNavRows(form, layout, ctx.decimalSeparator);
        layout->addWidget(form.Check("Check1", "Show NDB (3-D object)"));
    });
}

bool RunFormOvor(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    return RunObjectForm<FormOvor>(record, ctx, parent, [&](FormBase& form, QVBoxLayout* layout) {
        AddNavRows(form, layout, ctx.decimalSeparator);
        layout->addWidget(form.Check("Check1", "Enable DME (distance measuring equipment)"));
        layout->addWidget(form.Check("Check2", "Show VOR(3-D object)"));
    });
}

bool RunFormOexclude(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    return RunObjectForm<FormOexclude>(record, ctx, parent, [](FormBase& form, QVBoxLayout* layout) {
        // Width and height take digits only.
        const auto digits = [](int k) { return k == 8 || (k >= '0' && k <= '9') ? k : 0; };
        auto* grid = new QGridLayout;
        AddRow(grid, "Width (E-W):", form.Text("Text1", digits), "meters");
        AddRow(grid, "Height (N-S):", form.Text("Text2", digits), "meters");
        auto* box = new QGroupBox("Exclude:");
        auto* boxLayout = new QVBoxLayout(box);
        boxLayout->addWidget(form.Check("Check1", "Polygons, lines, 3-D objects"));
        boxLayout->addWidget(form.Check("Check2", "VORs"));
        boxLayout->addWidget(form.Check("Check3", "NDBs"));
        layout->addLayout(grid);
        layout->addWidget(box);
    });
}

bool RunFormInit(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    return RunObjectForm<FormInit>(record, ctx, parent, [&](FormBase& form, QVBoxLayout* layout) {
        auto* grid = new QGridLayout;
        AddRow(grid, "Name:", form.Text("Text1", NameKey));
        AddRow(grid, "Heading:", form.Text("Text2", Decimal(ctx.decimalSeparator)));
        layout->addLayout(grid);
    });
}

} // namespace fw::qt
