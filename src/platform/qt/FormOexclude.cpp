#include "platform/qt/FormOexclude.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "platform/qt/FormBase.h"

namespace fw::qt {

bool RunFormOexclude(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    FormOexclude model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(FormOexclude::kName, FormOexclude::kTitle, parent);
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
    auto* layout = new QVBoxLayout(&form);
    layout->addLayout(grid);
    layout->addWidget(box);
    layout->addWidget(form.Buttons());
    form.Load(model.values);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
