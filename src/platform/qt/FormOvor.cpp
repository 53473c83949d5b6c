#include "platform/qt/FormOvor.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "platform/qt/FormBase.h"

namespace fw::qt {

bool RunFormOvor(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    FormOvor model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(FormOvor::kName, FormOvor::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    auto* grid = new QGridLayout;
    AddRow(grid, "Frequency:", form.Text("Text1", [sep](int k) { return DecimalKey(k, sep); }));
    AddRow(grid, "Range:", form.Text("Text2", [](int k) { return KeyNumber(k, false); }), "Nm (nautical miles)");
    auto* ids = new QWidget;
    auto* idRow = new QHBoxLayout(ids);
    idRow->setContentsMargins(0, 0, 0, 0);
    idRow->addWidget(form.Text("Text3", NameKey));
    idRow->addWidget(form.Text("Text4", NameKey), 2);
    AddRow(grid, "ID and Name:", ids);
    auto* layout = new QVBoxLayout(&form);
    layout->addLayout(grid);
    layout->addWidget(form.Check("Check1", "Enable DME (distance measuring equipment)"));
    layout->addWidget(form.Check("Check2", "Show VOR(3-D object)"));
    layout->addWidget(form.Buttons());
    form.Load(model.values);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
