#include "platform/qt/FormInit.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "platform/qt/FormBase.h"

namespace fw::qt {

bool RunFormInit(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    FormInit model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(FormInit::kName, FormInit::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    auto* grid = new QGridLayout;
    AddRow(grid, "Name:", form.Text("Text1", NameKey));
    AddRow(grid, "Heading:", form.Text("Text2", [sep](int k) { return DecimalKey(k, sep); }));
    auto* layout = new QVBoxLayout(&form);
    layout->addLayout(grid);
    layout->addWidget(form.Buttons());
    form.Load(model.values);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
